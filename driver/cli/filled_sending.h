// Sends a filled job, and tells the user before and after.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_FILLED_SENDING_H
#define DRIVER_CLI_FILLED_SENDING_H

#include "driver/cli/filled_job.h"
#include "driver/documents/document.h"
#include "driver/outbox/submission.h"

#include <ctime>
#include <string>

namespace quelm {

/// The job as it stands, for that place and the time that the fax dialog says: the next from `begun` on, when
/// the user gave the command. When it has passed meanwhile, the job goes out at once.
[[nodiscard]] Submission submissionOf(FilledJob& job, const JobTarget& target, std::time_t begun);

/// Sums the job up on standard error, but for a plain file or standard output; writes it, and hands it over
/// or lets it wait; says on standard error what became of it. `name` names the document there. Throws Error
/// when that fails.
void sendFilled(FilledJob& job, const Document& document, const std::string& name,
                const Submission& submission);

} // namespace quelm

#endif
