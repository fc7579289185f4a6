// The TIFF files at the two ends of a call.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_PAGE_FILES_H
#define DEVICE_LINE_PAGE_FILES_H

#include "base/disk_room.h"
#include "base/file_handle.h"

#include <cstdint>
#include <string>

namespace quelm::device {

/// The pages that are sent.
class SentPages {
public:
    /// Throws quelm::Error when the file cannot be read or has no page.
    explicit SentPages(const std::string& file);

    /// The file by a short name, valid as long as this object.
    [[nodiscard]] std::string shortName() const;
    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }

private:
    FileHandle file_;
    int count_ = 0;
    std::uint64_t bytes_ = 0;
};

/// The pages that a machine receives: a file beside the place where it is to be kept. It is gone with this
/// object unless it was kept.
class ReceivedPages {
public:
    /// Throws quelm::Error when nothing can be written there, which is NoRoom when a disk is full.
    explicit ReceivedPages(std::string keepAs);
    ~ReceivedPages();
    ReceivedPages(const ReceivedPages&) = delete;
    ReceivedPages& operator=(const ReceivedPages&) = delete;

    /// As that of `SentPages`.
    [[nodiscard]] std::string shortName() const;
    /// Once nobody writes to it: makes the file to be kept of its first `most` pages, if it has any, and
    /// returns how many these are. Throws quelm::Error when there are fewer than `most`, or they cannot be
    /// kept: nobody but this machine is to blame for that. It is NoRoom when a disk is or was full.
    int keep(int most);

    /// Throws NoRoom when a disk is or was full while pages were received; they may be longer by something
    /// that is no page otherwise.
    void requireRoom();

private:
    [[noreturn]] void failKeeping();

    std::string keepAs_;
    FileHandle folder_;
    std::string name_; ///< of the file in the folder
    FileHandle lock_;  ///< keeps others from sweeping the file up
    RoomWatch watch_;
};

} // namespace quelm::device

#endif
