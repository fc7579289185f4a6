// Sends a filled job, and tells the user before and after.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_FILLED_SENDING_H
#define DRIVER_CLI_FILLED_SENDING_H

#include "driver/cli/filled_job.h"
#include "driver/documents/document.h"
#include "driver/outbox/submission.h"

#include <ctime>
#include <optional>
#include <string>

namespace quelm {

/// The job as it stands, for that place and the time that the fax dialog says: the next from `begun` on, when
/// the user gave the command. When it has passed meanwhile, the job goes out at once.
[[nodiscard]] Submission submissionOf(FilledJob& job, const JobTarget& target, std::time_t begun);

/// What `sendFilled` is told beside the job.
struct SendingWords {
    std::string document;     ///< how messages name the document
    bool asJson = false;      ///< standard output gets the object that `sentJson` makes
    std::string coverPicture; ///< as of `SentJob`
};

/// Sums the job up on standard error, but for a plain file or standard output; writes it, and hands it over
/// or lets it wait; says on standard error what became of it. Throws Error when that fails.
void sendFilled(FilledJob& job, const Document& document, const Submission& submission,
                const SendingWords& words);

/// What would happen, once it is sure that it would: on standard output, for people or as JSON. Nothing is
/// sent or kept. Throws Error for what `sendFilled` would refuse. `plannedTarget`: nothing where the user has
/// named none yet.
void sumUp(FilledJob& job, const Document& document, const std::optional<JobTarget>& plannedTarget,
           const Submission& submission, bool asJson);

/// The answer in JSON of a job of which only the cover page was drawn.
void answerPreview(FilledJob& job, const std::string& coverPicture);

} // namespace quelm

#endif
