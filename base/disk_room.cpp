// Looks at what is left on the disks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/disk_room.h"

#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <limits>
#include <system_error>

namespace quelm {
namespace {

constexpr std::uintmax_t leastRoom = std::uintmax_t{1} << 20U;

/// Without limit where nobody can say.
std::uintmax_t roomIn(const std::filesystem::path& folder)
{
    std::error_code error;
    const auto space = std::filesystem::space(folder, error);
    return error ? std::numeric_limits<std::uintmax_t>::max() : space.available;
}

std::string lineFor(const std::string& path, int error)
{
    return localized("%s: cannot be written: %s", path, systemReason(error));
}

} // namespace

bool isNoRoom(int error) { return error == ENOSPC || error == EDQUOT || error == EFBIG; }

void failWriting(const std::string& path, int error)
{
    if (isNoRoom(error))
        throw NoRoom(lineFor(path, error));
    throw Error(lineFor(path, error));
}

void requireRoom(const std::filesystem::path& folder)
{
    for (const std::filesystem::path& place : {folder, std::filesystem::path(temporaryFolder())})
        if (roomIn(place) < leastRoom)
            throw NoRoom(lineFor(place, ENOSPC));
}

void requireRoomBehind(int file, const std::string& path)
{
    constexpr std::array<char, std::size_t{64} * 1024> bytes{};
    struct stat status = {};
    if (::fstat(file, &status) != 0)
        return;
    const WriteSignalsIgnored ignored;
    std::size_t written = 0;
    while (written < bytes.size()) {
        const auto at = status.st_size + static_cast<off_t>(written);
        const ssize_t count = ::pwrite(file, bytes.data(), bytes.size() - written, at);
        if (count < 0 && isNoRoom(errno))
            throw NoRoom(lineFor(path, errno));
        if (count < 0 && errno != EINTR)
            return;
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
}

RoomWatch::RoomWatch(const std::filesystem::path& folder)
    : least_{{folder, roomIn(folder)}, {temporaryFolder(), roomIn(temporaryFolder())}}, thread_([this] {
          constexpr std::chrono::milliseconds pause{20};
          std::unique_lock lock(mutex_);
          while (!ended_.wait_for(lock, pause, [this] { return isEnding_; }))
              look();
      })
{
}

RoomWatch::~RoomWatch()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    ended_.notify_all();
    thread_.join();
}

void RoomWatch::look()
{
    for (auto& [folder, least] : least_)
        least = std::min(least, roomIn(folder));
}

void RoomWatch::require()
{
    const std::lock_guard lock(mutex_);
    look();
    for (const auto& [folder, least] : least_)
        if (least < leastRoom)
            throw NoRoom(lineFor(folder, ENOSPC));
}

} // namespace quelm
