// The confirmation sheet of a job: who received what, and when.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_REPORT_CONFIRMATION_SHEET_H
#define DEVICE_REPORT_CONFIRMATION_SHEET_H

#include "device/jobs/job_records.h"

#include <string>
#include <vector>

namespace quelm::device {

/// The sheet as text (UTF-8, lines of at most 79 columns): for each recipient the number, time, duration,
/// pages and result.
[[nodiscard]] std::string confirmationText(const JobRecord& job, const std::vector<CallRecord>& calls);

/// Writes the same as PDF of as many pages as it takes, for the owner's eyes; the file appears whole or not
/// at all. `pages` is the TIFF file of the job's pages, of which the first is shown; without it, or when it
/// cannot be read, the sheet shows none. May be called by several threads. Throws quelm::Error.
void writeConfirmationPdf(const std::string& path, const JobRecord& job, const std::vector<CallRecord>& calls,
                          const std::string& pages = {});

} // namespace quelm::device

#endif
