// Hands a job of the outbox over at the user's command.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_HANDING_OVER_H
#define DRIVER_CLI_HANDING_OVER_H

#include "driver/cli/job/job_json.h"
#include "driver/outbox/outbox.h"

#include <ctime>
#include <string>

namespace quelm {

/// Hands the job over now, with progress on a terminal, and says on standard error what became of it. Throws
/// quelm::Error when it was not handed over. Ctrl-C ends that in order, and the program behind it.
void handOverNow(Outbox& outbox, int number, std::time_t now);

/// The line about the end of a job that a worker handed over, or tried to.
[[nodiscard]] std::string endOf(const OutboxJob& job, const HandoverEnd& end, std::time_t now,
                                const OutboxSettings& settings);

/// What a job's handing over would be, as a line for the user.
[[nodiscard]] std::string plannedHandover(const OutboxJob& job);

/// The job as it is now, with what went wrong with it.
[[nodiscard]] JobResult resultOf(Outbox& outbox, int number, const std::string& error);

/// Settles what killed programs left, and asks the queues about what they hold, in a few seconds.
void settleShortly(Outbox& outbox, std::time_t now);

} // namespace quelm

#endif
