// Reads a print job as it comes, in pieces of any size.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_JOB_READER_H
#define DEVICE_STREAM_JOB_READER_H

#include "device/stream/received_job.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace quelm::device {

/// Reads one job. It needs little memory however long the job is, and makes the same of it however it is cut
/// into pieces.
class JobReader {
public:
    /// Lines are counted from `firstLine` on: in a file that holds several jobs, those of the file.
    explicit JobReader(std::uint64_t firstLine = 1);
    ~JobReader();
    JobReader(const JobReader&) = delete;
    JobReader& operator=(const JobReader&) = delete;

    /// Takes the next bytes and returns how many of them belong to the job: fewer than there are when it has
    /// ended among them. What follows is another job's.
    std::size_t take(std::string_view bytes);

    /// True once the job has ended: with the last UEL of one in PJL form, or a UEL behind one in another
    /// form. Without UEL, a job ends with its sender's connection or file.
    [[nodiscard]] bool isComplete() const;

    /// True while nothing has come but what may stand ahead of a job (white space, UEL): there is no job
    /// then.
    [[nodiscard]] bool isEmpty() const;
    /// True once anything else has come; neither is while a UEL may be under way.
    [[nodiscard]] bool hasContent() const;

    /// What the job says, once all of it was taken. A job that ends too early is refused. Called once, last.
    [[nodiscard]] ReceivedJob finish();

    /// The number of the line behind the job, once it is finished.
    [[nodiscard]] std::uint64_t nextLine() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
