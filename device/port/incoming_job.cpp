// Reads a job as it comes, and writes it to a file of the device's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/incoming_job.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace quelm::device {
namespace {

/// The system is asked to write a large job through as it comes, so that little is left to be waited for at
/// its end.
constexpr std::uint64_t writtenAtOnce = std::uint64_t{4} << 20U;

Error cannotBeWritten(int error)
{
    return Error(localized("it cannot be written to the device's folder: %s", systemReason(error)));
}

} // namespace

IncomingJob::IncomingJob(std::filesystem::path folder, std::uint64_t largest)
    : folder_(std::move(folder)), largest_(largest)
{
}

IncomingJob::~IncomingJob()
{
    if (!path_.empty())
        ::unlink(path_.c_str());
}

void IncomingJob::open()
{
    std::string name = folder_ / "job-XXXXXX";
    file_ = FileHandle(::mkostemp(name.data(), O_CLOEXEC));
    if (!file_.isOpen())
        throw cannotBeWritten(errno);
    path_ = std::move(name);
}

std::size_t IncomingJob::take(std::string_view bytes)
{
    const auto taken = reader_.take(bytes);
    bytes = bytes.substr(0, taken);
    size_ += bytes.size();
    if (size_ > largest_)
        throw Error(
            localized("it is larger than %d bytes, which is the most that this device takes", largest_));
    if (!file_.isOpen())
        open();
    while (!bytes.empty()) {
        const auto written = ::write(file_.get(), bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            throw cannotBeWritten(errno);
    }
    if (size_ - begunToWrite_ >= writtenAtOnce) {
        // Only a beginning: whether it succeeds is asked at the end.
        ::sync_file_range(file_.get(), static_cast<off_t>(begunToWrite_),
                          static_cast<off_t>(size_ - begunToWrite_), SYNC_FILE_RANGE_WRITE);
        begunToWrite_ = size_;
    }
    return taken;
}

void IncomingJob::writeThrough()
{
    if (file_.isOpen() && ::fsync(file_.get()) != 0)
        throw cannotBeWritten(errno);
}

} // namespace quelm::device
