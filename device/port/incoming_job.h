// A job on its way in: read as it comes, and written to a file of the device's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PORT_INCOMING_JOB_H
#define DEVICE_PORT_INCOMING_JOB_H

#include "base/file_handle.h"
#include "device/stream/job_reader.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace quelm::device {

/// The job's bytes are in a file for this user alone, which goes with this object unless somebody moved it
/// away. What is thrown is a quelm::Error whose line is the end of a sentence: why the job cannot be kept.
class IncomingJob {
public:
    /// The file is made in `folder` once the job has a byte. A job has at most `largest` bytes.
    IncomingJob(std::filesystem::path folder, std::uint64_t largest);
    ~IncomingJob();
    IncomingJob(const IncomingJob&) = delete;
    IncomingJob& operator=(const IncomingJob&) = delete;

    /// Takes the next bytes and returns how many of them belong to the job. Throws when there are too many,
    /// and when they cannot be written.
    std::size_t take(std::string_view bytes);

    [[nodiscard]] bool isComplete() const { return reader_.isComplete(); }
    /// True while there is no job: nothing came but what may stand ahead of one.
    [[nodiscard]] bool isEmpty() const { return reader_.isEmpty(); }
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Waits until the file is written through. Throws.
    void writeThrough();
    /// What the job says. Called once, last.
    [[nodiscard]] ReceivedJob finish() { return reader_.finish(); }
    [[nodiscard]] const std::string& file() const { return path_; }

private:
    void open();

    std::filesystem::path folder_;
    std::uint64_t largest_;
    std::uint64_t size_ = 0;
    std::uint64_t begunToWrite_ = 0; ///< how many bytes the system was asked to write through
    JobReader reader_;
    std::string path_;
    FileHandle file_;
};

} // namespace quelm::device

#endif
