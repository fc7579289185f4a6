// Reads the jobs of a file as the device would take them, and counts their pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOB_READING_H
#define DEVICE_JOB_READING_H

#include "device/stream/received_job.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quelm::device {

/// One job of a file. Its lines and offsets are those of the file.
struct JobReading {
    ReceivedJob job;
    std::uint64_t begin = 0;  ///< the offset of its first byte
    std::optional<int> pages; ///< once they were drawn
};

/// All jobs of a file or, for "-", of standard input; one at least, which may be empty and refused. With
/// `render` the pages of those that the device takes are drawn as it would draw them, and a document of which
/// that is not possible is a refusal. Throws quelm::Error when the file cannot be read.
[[nodiscard]] std::vector<JobReading> readJobs(const std::string& file, bool render);

} // namespace quelm::device

#endif
