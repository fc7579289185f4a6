// Hands a file to the reader of jobs, and their documents to Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/job_reading.h"

#include "base/cancellation.h"
#include "base/error.h"
#include "base/file_io.h"
#include "base/ghostscript/private_folder.h"
#include "base/interruption.h"
#include "base/pipe_wait.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "device/calls/job_rendering.h"
#include "device/pages/page_file.h"
#include "device/port/job_port.h"
#include "device/stream/job_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string_view>
#include <system_error>
#include <thread>

namespace quelm::device {
namespace {

/// Where the bytes come from, and a file that holds them, which Ghostscript can read again.
class Source {
public:
    /// `keep` says whether that file is needed.
    Source(const std::string& name, bool keep);

    /// The next bytes; none at the end.
    std::string_view read();
    /// The file; what is not on a disk is by then what has been read.
    [[nodiscard]] const std::string& file() const { return file_; }

private:
    [[noreturn]] void fail(const std::string& reason) const
    {
        throw Error(localized("%s: cannot be read: %s", displayName(name_), reason));
    }
    std::size_t readSome();

    std::string name_;
    std::string file_;
    FileHandle input_;
    FileHandle copy_;
    bool isHeard_ = false;
    std::array<char, 65536> block_{};
};

Source::Source(const std::string& name, bool keep) : name_(name), file_(name)
{
    const bool isStandardInput = name == "-";
    input_ = isStandardInput ? FileHandle(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)) : openToRead(name);
    struct stat status = {};
    if (!input_.isOpen() || ::fstat(input_.get(), &status) != 0)
        fail(systemReason(errno));
    if (!keep || (!isStandardInput && S_ISREG(status.st_mode)))
        return;
    // It is gone when the program ends, however it ends.
    copy_ = makeUnnamedFile();
    file_ = "/proc/self/fd/" + std::to_string(copy_.get());
}

std::size_t Source::readSome()
{
    if (name_ != "-")
        return readBounded(input_, block_.data(), block_.size(), {}, isHeard_);
    return readFully(input_.get(), block_.data(), block_.size(), -1, displayName(name_));
}

std::string_view Source::read()
{
    std::string_view bytes;
    try {
        bytes = {block_.data(), readSome()};
    } catch (const std::system_error& error) {
        fail(systemReason(error.code().value()));
    } catch (const PipeTimeout& timeout) {
        fail(timeout.what());
    }
    if (copy_.isOpen())
        writeAll(copy_.get(), bytes, file_);
    return bytes;
}

/// Puts a job that came whole in its place of the file, and refuses what is too large for the device.
JobReading takenFrom(JobReader& reader, std::uint64_t begin)
{
    JobReading reading{reader.finish(), begin, {}};
    auto& job = reading.job;
    job.postScriptBegin += begin;
    job.postScriptEnd += begin;
    const auto largest = JobPortSettings().largestJob;
    if (job.size > largest)
        job.refusals.push_back({0, localized("the job is larger than %d bytes", largest)});
    return reading;
}

/// The jobs without their pages.
std::vector<JobReading> takeApart(Source& source)
{
    std::vector<JobReading> jobs;
    auto reader = std::make_unique<JobReader>();
    std::uint64_t begin = 0;
    const auto finish = [&] {
        jobs.push_back(takenFrom(*reader, begin));
        begin += jobs.back().job.size;
        reader = std::make_unique<JobReader>(reader->nextLine());
    };
    for (auto bytes = source.read(); !bytes.empty(); bytes = source.read())
        while (!bytes.empty()) {
            bytes.remove_prefix(reader->take(bytes));
            if (reader->isComplete())
                finish();
        }
    if (!reader->isEmpty() || jobs.empty())
        finish();
    return jobs;
}

void countPages(JobReading& reading, const std::string& file, const std::string& tiff,
                const PageBounds& bounds)
{
    auto& job = reading.job;
    try {
        reading.pages = job.isFax ? renderPages(file, job.postScriptBegin, job.postScriptEnd,
                                                densityOf(job.resolution), tiff, bounds)
                                  : printPages(file, job.postScriptBegin, job.postScriptEnd, tiff, bounds);
    } catch (const Error& error) {
        if (Interruption::requested())
            throw;
        job.refusals.push_back({0, localized("its document fails: %s", error.what())});
    }
}

/// Draws the pages of all jobs that the device takes. A Ctrl-C ends that in order: what was made is removed,
/// and then the signal ends the program.
void countPages(std::vector<JobReading>& jobs, const std::string& file)
{
    const Interruption interruption; // is the last to go
    std::stop_source stop;
    const std::jthread watch([&stop](const std::stop_token& ended) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any wake;
        while (!ended.stop_requested() && !Interruption::requested())
            wake.wait_for(lock, ended, cancellationInterval, [] { return false; });
        if (Interruption::requested())
            stop.request_stop();
    });
    PageBounds bounds;
    bounds.ghostscript.stop = stop.get_token();
    const PrivateFolder folder;
    for (auto& reading : jobs)
        if (!reading.job.isRefused())
            countPages(reading, file, folder.path() + "/pages.tif", bounds);
}

} // namespace

std::vector<JobReading> readJobs(const std::string& file, bool render)
{
    Source source(file, render);
    auto jobs = takeApart(source);
    if (render)
        countPages(jobs, source.file());
    return jobs;
}

} // namespace quelm::device
