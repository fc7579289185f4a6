// Where a finished fax job goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/output.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "base/write_target.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

std::string spoolName() { return localized("the temporary copy of the job"); }

/// Hands the content of an open file to `take`, from its start on, piece by piece.
template <typename Take>
void forEachBlock(int file, Take take)
{
    std::string block(std::size_t{256} * 1024, '\0');
    long long offset = 0;
    while (const auto count = readFully(file, block.data(), block.size(), offset, spoolName())) {
        take(std::string_view(block).substr(0, count));
        offset += static_cast<long long>(count);
    }
}

class StandardOutput final : public SpooledDestination {
private:
    Receipt send(int spool, std::uint64_t, const Transfer&) override
    {
        const WriteSignalsIgnored failuresOnly;
        const std::string name = localized("standard output");
        std::uint64_t sent = 0;
        sendCounting(sent, [&] {
            forEachBlock(spool, [&](std::string_view block) {
                while (!block.empty()) {
                    const auto count = ::write(STDOUT_FILENO, block.data(), block.size());
                    if (count < 0 && errno != EINTR)
                        throw Error(localized("%s: cannot be written: %s", name, systemReason(errno)));
                    block.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
                    sent += static_cast<std::uint64_t>(std::max<ssize_t>(count, 0));
                }
            });
        });
        return {name, {}, 0};
    }
};

/// A device or fifo in the file system. Whoever takes the job there may let it wait for ever: every wait
/// here is one that a cancellation ends.
class SpecialFile final : public SpooledDestination {
public:
    SpecialFile(std::string path, milliseconds readerLimit)
        : path_(std::move(path)), readerLimit_(readerLimit)
    {
    }

private:
    Receipt send(int spool, std::uint64_t size, const Transfer& transfer) override
    {
        const WriteSignalsIgnored failuresOnly;
        const FileHandle file = open(transfer);
        std::uint64_t sent = 0;
        sendCounting(sent, [&] {
            forEachBlock(spool, [&](std::string_view block) {
                while (!block.empty()) {
                    if (transfer.isCancelled())
                        failCancelled(sent, size);
                    const std::size_t count = writeSome(file.get(), block);
                    block.remove_prefix(count);
                    sent += count;
                    transfer.report(sent, size);
                }
            });
            // Most devices and no fifo can be synchronised, nor need they be.
            if (::fsync(file.get()) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS)
                fail(errno);
        });
        return {path_, {}, 0};
    }

    /// Waits a moment for a reader that is being started.
    FileHandle open(const Transfer& transfer) const
    {
        const WriteTarget target = findWriteTarget(path_);
        if (!target.problem.empty())
            throw Error(localized("%s: cannot be written: %s", path_, target.problem));
        if (target.error != 0 || !target.present)
            fail(target.error != 0 ? target.error : ENOENT);
        const auto deadline = Clock::now() + readerLimit_;
        for (;;) {
            if (transfer.isCancelled())
                failCancelled(0, 0);
            FileHandle file(::openat(target.folder.get(), target.name.c_str(),
                                     O_WRONLY | O_NONBLOCK | openFlags(target)));
            if (file.isOpen() && isFoundFile(file, target))
                return file;
            if (file.isOpen())
                throw Error(localized("%s: cannot be written: %s", path_,
                                      localized("it was replaced at this moment; try again")));
            if (errno == EINTR)
                continue;
            if (errno != ENXIO || !S_ISFIFO(target.present->st_mode))
                fail(errno);
            if (Clock::now() >= deadline)
                throw Error(localized(
                    "%s: no program reads this fifo; start the one that takes the job, and send it again",
                    path_));
            ::poll(nullptr, 0, static_cast<int>(std::min(readerLimit_, cancellationInterval).count()));
        }
    }

    /// What the other side has room for; nothing when it had none until a cancellation was to be looked for.
    std::size_t writeSome(int file, std::string_view bytes) const
    {
        const auto pause = static_cast<int>(cancellationInterval.count());
        pollfd room{file, POLLOUT, 0};
        if (::poll(&room, 1, pause) <= 0)
            return 0;
        const auto count = ::write(file, bytes.data(), bytes.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno == EAGAIN)
            ::poll(nullptr, 0, pause); // a device that always says it has room
        else if (errno != EINTR)
            fail(errno);
        return 0;
    }

    [[noreturn]] void fail(int error) const
    {
        throw Error(localized("%s: cannot be written: %s", path_, systemReason(error)));
    }

    [[noreturn]] void failCancelled(std::uint64_t sent, std::uint64_t size) const
    {
        if (sent == 0)
            throw Error(localized("%s: the job was cancelled before anything of it went out", path_));
        throw Error(localized("%s: the job was cancelled after %d of %d bytes", path_, sent, size));
    }

    std::string path_;
    milliseconds readerLimit_;
};

class OrdinaryFile final : public JobDestination {
public:
    explicit OrdinaryFile(const std::string& path) : path_(path), sink_(path) {}

    JobSink& sink() override { return sink_; }
    void restrictToOwner() override { sink_.file.restrictToOwner(); }
    Receipt deliver(const Transfer&) override
    {
        sink_.file.commit();
        return {path_, {}, 0};
    }

private:
    class Sink final : public JobSink {
    public:
        explicit Sink(const std::string& path) : file(path) {}
        void write(std::string_view bytes) override { file.write(bytes); }

        AtomicFile file;
    };

    std::string path_;
    Sink sink_;
};

} // namespace

SpooledDestination::SpooledDestination() = default;

SpooledDestination::Spool::Spool() : file(makeUnnamedFile()) {}

void SpooledDestination::Spool::write(std::string_view bytes)
{
    const WriteSignalsIgnored failuresOnly;
    writeAll(file.get(), bytes, spoolName());
    size += bytes.size();
}

Receipt SpooledDestination::deliver(const Transfer& transfer)
{
    return send(spool_.file.get(), spool_.size, transfer);
}

std::size_t readSpool(int spool, std::string& block, std::uint64_t offset)
{
    const auto count =
        readFully(spool, block.data(), block.size(), static_cast<long long>(offset), spoolName());
    if (count == 0)
        throw Error(
            localized("the temporary copy of the job became shorter while it was sent; send it again"));
    return count;
}

std::unique_ptr<JobDestination> openOutput(const std::string& output, const Document& document,
                                           milliseconds readerLimit)
{
    if (output != "-" && document.isSameFile(output))
        throw Error(localized("%s: is the document itself; name another file for the fax job", output));
    return openOutput(output, readerLimit);
}

std::unique_ptr<JobDestination> openOutput(const std::string& output, milliseconds readerLimit)
{
    if (output == "-")
        return std::make_unique<StandardOutput>();
    struct stat status = {};
    const bool exists = ::stat(output.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        throw Error(localized("%s: is a folder; name a file in it for the fax job", output));
    if (exists && !S_ISREG(status.st_mode))
        return std::make_unique<SpecialFile>(output, readerLimit);
    return std::make_unique<OrdinaryFile>(output);
}

} // namespace quelm
