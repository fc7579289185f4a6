// Polls pipes; a read or write never blocks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/pipe_wait.h"

#include "base/cancellation.h"
#include "base/duration_text.h"
#include "base/translation.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <system_error>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

milliseconds remaining(Clock::time_point deadline)
{
    return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(deadline - Clock::now()));
}

/// Waits for `events` until `deadline`; what happened, 0 when nothing did. Wakes up several times a second: a
/// fifo does not report that a writer has opened it.
short waitFor(int file, short events, Clock::time_point deadline)
{
    pollfd waiting{file, events, 0};
    ::poll(&waiting, 1, static_cast<int>(std::min(remaining(deadline), cancellationInterval).count()));
    return waiting.revents;
}

bool isFifo(int file)
{
    struct stat status {};
    return ::fstat(file, &status) == 0 && S_ISFIFO(status.st_mode);
}

bool isFifo(int folder, const std::string& name, int flags)
{
    struct stat status {};
    const int follow = (flags & O_NOFOLLOW) != 0 ? AT_SYMLINK_NOFOLLOW : 0;
    return ::fstatat(folder, name.c_str(), &status, follow) == 0 && S_ISFIFO(status.st_mode);
}

PipeTimeout silent(milliseconds limit)
{
    return PipeTimeout(localized("nothing came for %s from the program that writes it; see what keeps that "
                                 "program, and try again",
                                 durationText(limit)));
}

} // namespace

FileHandle openToRead(const std::string& path)
{
    return FileHandle(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
}

std::size_t readBounded(const FileHandle& file, char* bytes, std::size_t size, const PipeLimits& limits,
                        bool& heard)
{
    auto since = Clock::now();
    bool partner = heard || !isFifo(file.get());
    for (;;) {
        const auto limit = partner ? limits.idle : limits.partner;
        // First: a writer may come, write and go in between, and leave an end behind its bytes.
        const short events = waitFor(file.get(), POLLIN, since + limit);
        const auto count = ::read(file.get(), bytes, size);
        if (count > 0 || (count == 0 && (partner || (events & POLLHUP) != 0))) {
            heard = true;
            return static_cast<std::size_t>(count);
        }
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            throw std::system_error(errno, std::generic_category());
        if (count < 0 && errno == EAGAIN && !partner) {
            partner = true; // it is there, and has nothing to say yet
            since = Clock::now();
        }
        if (remaining(since + limit).count() > 0 || ::isatty(file.get()) == 1)
            continue;
        if (partner)
            throw silent(limit);
        throw PipeTimeout(
            localized("no program writes to this fifo; start the one that does, and try again"));
    }
}

FileHandle openToWrite(int folder, const std::string& name, int flags, const PipeLimits& limits)
{
    const auto deadline = Clock::now() + limits.partner;
    for (;;) {
        FileHandle file(::openat(folder, name.c_str(), O_WRONLY | O_NONBLOCK | flags));
        if (file.isOpen())
            return file;
        const int error = errno;
        if (error != EINTR && (error != ENXIO || !isFifo(folder, name, flags))) {
            errno = error;
            return {};
        }
        if (remaining(deadline).count() == 0)
            throw PipeTimeout(
                localized("no program reads this fifo; start the one that does, and try again"));
        ::poll(nullptr, 0, static_cast<int>(std::min(remaining(deadline), cancellationInterval).count()));
    }
}

std::size_t writeBounded(const FileHandle& file, const char* bytes, std::size_t size,
                         const PipeLimits& limits)
{
    const auto deadline = Clock::now() + limits.idle;
    for (;;) {
        const auto count = ::write(file.get(), bytes, size);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno == EINTR)
            continue;
        if (errno != EAGAIN)
            throw std::system_error(errno, std::generic_category());
        if (remaining(deadline).count() == 0)
            throw PipeTimeout(localized("the program that reads it took nothing for %s; see what keeps that "
                                        "program, and try again",
                                        durationText(limits.idle)));
        if (waitFor(file.get(), POLLOUT, deadline) == 0)
            continue;
        // Some devices always say that they have room.
        constexpr int moment = 5;
        ::poll(nullptr, 0, moment);
    }
}

} // namespace quelm
