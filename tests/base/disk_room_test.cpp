// Tests of telling a full disk.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/disk_room.h"

#include "base/file_handle.h"
#include "base/file_io.h"
#include "tests/support/failure_line.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <cerrno>
#include <filesystem>

namespace quelm::test {
namespace {

using testing::HasSubstr;

// The system's own tree of processes never has room.
constexpr const char* full = "/proc";

TEST(DiskRoomTest, AFolderWithRoomIsFine)
{
    const TemporaryFolder folder;
    EXPECT_NO_THROW(requireRoom(folder.path()));
    EXPECT_NO_THROW(requireRoom(folder / "absent")) << "nobody can say";
}

TEST(DiskRoomTest, AFullOneIsNamed)
{
    EXPECT_THAT(failureLine<NoRoom>([] { requireRoom(full); }),
                HasSubstr("/proc: cannot be written: the disk is full"));
}

TEST(DiskRoomTest, TheFolderForTemporaryFilesNeedsRoomToo)
{
    const TemporaryFolder folder;
    const KeptVariable kept("TMPDIR");
    ::setenv("TMPDIR", full, 1);
    EXPECT_THAT(failureLine<NoRoom>([&] { requireRoom(folder.path()); }),
                HasSubstr("/proc: cannot be written: the disk is full"));
}

TEST(DiskRoomTest, WhatIsUsedUpIsNoRoomAndNothingElseIs)
{
    for (const int error : {ENOSPC, EDQUOT, EFBIG})
        EXPECT_TRUE(isNoRoom(error)) << error;
    for (const int error : {EACCES, ENOENT, EIO, 0})
        EXPECT_FALSE(isNoRoom(error)) << error;
    EXPECT_EQ(failureLine<NoRoom>([] { failWriting("some/file", ENOSPC); }),
              "some/file: cannot be written: the disk is full; make room and try again");
    EXPECT_THROW(failWriting("some/file", EACCES), Error);
    try {
        failWriting("some/file", EACCES);
    } catch (const Error& error) {
        EXPECT_EQ(dynamic_cast<const NoRoom*>(&error), nullptr);
    }
}

TEST(DiskRoomTest, AFileThatMayNotGrowHasNoRoomBehindIt)
{
    const TemporaryFolder folder;
    const FileHandle file(::open((folder / "file").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    EXPECT_NO_THROW(requireRoomBehind(file.get(), "file"));
    EXPECT_EQ(std::filesystem::file_size(folder / "file"), 64U * 1024);
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit low{100000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &low);
    const std::string line = failureLine<NoRoom>([&] { requireRoomBehind(file.get(), "file"); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_THAT(line, HasSubstr("file: cannot be written: the file would exceed the size limit"));
}

TEST(DiskRoomTest, AWatchSeesAFullDiskAndOneThatWasFull)
{
    const TemporaryFolder folder;
    EXPECT_NO_THROW(RoomWatch(folder.path()).require());
    RoomWatch watch(full);
    EXPECT_THAT(failureLine<NoRoom>([&] { watch.require(); }), HasSubstr("/proc: cannot be written: "));
    // A link to it, which leads to a disk with room from then on.
    const std::filesystem::path place = std::filesystem::path(folder.path()) / "place";
    std::filesystem::create_symlink(full, place);
    RoomWatch former(place);
    std::filesystem::remove(place);
    std::filesystem::create_directory(place);
    EXPECT_NO_THROW(requireRoom(place));
    EXPECT_THAT(failureLine<NoRoom>([&] { former.require(); }), HasSubstr("the disk is full"));
}

} // namespace
} // namespace quelm::test
