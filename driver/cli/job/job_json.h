// Jobs as data for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_JOB_JSON_H
#define DRIVER_CLI_JOB_JOB_JSON_H

#include "driver/handover/summary.h"
#include "driver/outbox/outbox_job.h"
#include "driver/outbox/submission.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

// Each is JSON in UTF-8, with a line end behind it. Texts that are no UTF-8 have U+FFFD in place of their bad
// bytes. docs/command-line.md and docs/outbox.md list the keys.

/// A job that would go out, as one object.
[[nodiscard]] std::string summaryJson(const JobSummary& summary, const std::vector<std::string>& warnings);

/// A job that went out, is held or waits, or of which only the cover page was drawn, as one object: the keys
/// of `summaryJson`, and what became of it.
struct SentJob {
    std::optional<SubmissionEnd> end; ///< nothing when nothing was sent
    std::string coverPicture;         ///< the file with the picture of the cover page; empty for none
    std::string sender;               ///< a sentence: what sends a job that waits; empty for another one
};
[[nodiscard]] std::string sentJson(const JobSummary& summary, const std::vector<std::string>& warnings,
                                   const SentJob& sent);

/// Attribute lines, without their line ends.
struct AttributeAnswer {
    std::vector<std::string> lines;
    std::string file; ///< the file that they were written to; empty for none
    std::vector<JobRecipient> recipients;
    std::vector<std::string> warnings;
};
[[nodiscard]] std::string attributesJson(const AttributeAnswer& answer);

/// What became of a job that a command was to do something with.
struct JobResult {
    int number = 0;
    std::optional<OutboxJob> job; ///< as it is now; nothing when the outbox has none of that number
    std::string error;            ///< why nothing was done; empty when it was
};

/// An array with an object for each: the keys of `jobJson` as far as there is a job, and "error".
[[nodiscard]] std::string resultsJson(const std::vector<JobResult>& results, std::time_t now);

/// One such object, in one line.
[[nodiscard]] std::string resultLine(const JobResult& result, std::time_t now);

/// A destination, as one object.
[[nodiscard]] std::string targetJson(const JobTarget& target);

/// A job of the outbox, as one object.
[[nodiscard]] std::string jobJson(const OutboxJob& job, std::time_t now);

/// Jobs of the outbox, as an array of such objects.
[[nodiscard]] std::string jobsJson(const std::vector<OutboxJob>& jobs, std::time_t now);

} // namespace quelm

#endif
