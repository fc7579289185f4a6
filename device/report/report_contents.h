// What stands on a confirmation sheet, in whatever form it is written.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_REPORT_REPORT_CONTENTS_H
#define DEVICE_REPORT_REPORT_CONTENTS_H

#include "device/jobs/job_records.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace quelm::device {

/// A line of the summary.
struct ReportFact {
    std::string label;
    std::string value;
};

/// The columns of the table.
inline constexpr std::size_t reportColumns = 6;
using ReportCells =
    std::array<std::string, reportColumns>; ///< position, number, time, duration, pages, calls

/// A recipient.
struct ReportRow {
    ReportCells cells;
    bool sent = false;
    std::string result;               ///< how the last call ended
    std::vector<std::string> details; ///< mailbox, speed, what the line did, the other machine's identity
};

/// All texts are one line each, in the user's language.
struct ReportContents {
    std::string heading;
    std::string title;
    std::string outcome;   ///< how many received the fax
    bool complete = false; ///< everybody did
    std::vector<ReportFact> facts;
    ReportCells heads;
    std::vector<ReportRow> rows;
    std::vector<std::string> notes; ///< sentences
};

/// The sheet of a job, with the calls that were made for it. The job's credit card is no part of it.
[[nodiscard]] ReportContents reportContents(const JobRecord& job, const std::vector<CallRecord>& calls);

} // namespace quelm::device

#endif
