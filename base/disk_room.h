// Tells a full disk from whatever else can fail.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_DISK_ROOM_H
#define BASE_DISK_ROOM_H

#include "base/error.h"

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace quelm {

/// There is no room on a disk. What failed for it is to be done again once there is.
class NoRoom : public Error {
public:
    using Error::Error;
};

/// True for what `errno` says when a disk, a share of it or the size that is allowed is used up.
[[nodiscard]] bool isNoRoom(int error);

/// Throws that `path` cannot be written, as NoRoom where that is the reason (an errno value).
[[noreturn]] void failWriting(const std::string& path, int error);

/// Throws NoRoom, which names the folder, when less than 1 MiB is left below `folder` or in the folder for
/// temporary files.
void requireRoom(const std::filesystem::path& folder);

/// Throws NoRoom, which names the file as `path`, when an open file that is to be removed cannot be made
/// longer by 64 KiB; it is longer by them otherwise.
void requireRoomBehind(int file, const std::string& path);

/// Looks at a folder and at the one for temporary files while something is done there: what failed for a full
/// disk may have removed its files, and made room, before it can be asked.
class RoomWatch {
public:
    explicit RoomWatch(const std::filesystem::path& folder);
    ~RoomWatch();
    RoomWatch(const RoomWatch&) = delete;
    RoomWatch& operator=(const RoomWatch&) = delete;

    /// Throws as `requireRoom` does, also when there was so little room meanwhile.
    void require();

private:
    void look();

    std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnding_ = false;
    std::map<std::filesystem::path, std::uintmax_t> least_; ///< bytes, of each folder
    std::thread thread_;
};

} // namespace quelm

#endif
