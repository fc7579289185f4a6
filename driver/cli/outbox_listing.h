// The outbox as people read it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_OUTBOX_LISTING_H
#define DRIVER_CLI_OUTBOX_LISTING_H

#include "driver/outbox/outbox_job.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// A table with a line for each job, the time of each in local time; a sentence when there is none.
[[nodiscard]] std::string listedJobs(const std::vector<OutboxJob>& jobs, std::time_t now);

/// All that is known of a job, a line for each subject. Of a credit card nothing is known.
[[nodiscard]] std::string shownJob(const OutboxJob& job, std::time_t now);

/// What a job asks of the user, and how to answer: one that is overdue, or of which nobody knows whether the
/// device has it. Nothing for any other.
[[nodiscard]] std::optional<std::string> questionOf(const OutboxJob& job, std::time_t now);

} // namespace quelm

#endif
