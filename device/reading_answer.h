// What `read` says about jobs, for people and for programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_READING_ANSWER_H
#define DEVICE_READING_ANSWER_H

#include "device/job_reading.h"

#include <string>
#include <vector>

namespace quelm::device {

/// Lines for people.
[[nodiscard]] std::string readingText(const std::vector<JobReading>& jobs);

/// The same as JSON, whose keys docs/print-stream.md describes. What is no UTF-8 stands as U+FFFD.
[[nodiscard]] std::string readingJson(const std::vector<JobReading>& jobs);

/// One line that says what was refused; empty when the device takes all jobs.
[[nodiscard]] std::string refusalLine(const std::vector<JobReading>& jobs);

} // namespace quelm::device

#endif
