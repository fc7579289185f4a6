// Jobs to read, made of lines that a test can change.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_STREAM_SAMPLE_JOBS_H
#define TESTS_DEVICE_STREAM_SAMPLE_JOBS_H

#include "device/stream/job_reader.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm::device {

inline constexpr std::string_view uel = "\x1B%-12345X";

/// A job line by line, each with its end.
using Lines = std::vector<std::string>;

/// Two recipients, the second with a mailbox, and a credit card.
Lines dscJob();
Lines pjlJob();

/// All lines one behind the other.
std::string joined(const Lines& lines);

/// `lines` with what stands in the place of the one line that holds `part`; an empty text for nothing.
Lines replaced(Lines lines, std::string_view part, const std::string& line);

/// `lines` with another ahead of the one line that holds `part`.
Lines inserted(Lines lines, std::string_view part, const std::string& line);

/// Reads one job, in pieces of `size` bytes; what follows it is left.
ReceivedJob readJob(std::string_view bytes, std::size_t size = std::string_view::npos);

/// What is wrong with a job: "7: the line ...", one a line; "0: ..." for the job as a whole.
std::string refusalsOf(const ReceivedJob& job);
std::string objectionsOf(const ReceivedJob& job);

/// All that was read, for comparing.
std::string described(const ReceivedJob& job);

} // namespace quelm::device

#endif
