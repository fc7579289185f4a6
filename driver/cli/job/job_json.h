// Jobs as data for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_JOB_JSON_H
#define DRIVER_CLI_JOB_JOB_JSON_H

#include "driver/handover/summary.h"
#include "driver/outbox/outbox_job.h"

#include <ctime>
#include <string>
#include <vector>

namespace quelm {

// Each is JSON in UTF-8, with a line end behind it. Texts that are no UTF-8 have U+FFFD in place of their bad
// bytes. docs/command-line.md and docs/outbox.md list the keys.

/// A job that would go out, as one object.
[[nodiscard]] std::string summaryJson(const JobSummary& summary, const std::vector<std::string>& warnings);

/// A job of the outbox, as one object.
[[nodiscard]] std::string jobJson(const OutboxJob& job, std::time_t now);

/// Jobs of the outbox, as an array of such objects.
[[nodiscard]] std::string jobsJson(const std::vector<OutboxJob>& jobs, std::time_t now);

} // namespace quelm

#endif
