// Tests of the private folders of runs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/private_folder.h"

#include "tests/driver/jobs/job_support.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

namespace quelm::tests {
namespace {

using PrivateFolderTest = JobTest;
using Names = std::vector<std::string>;

TEST_F(PrivateFolderTest, NobodyElseMayEnterAndNothingIsLeft)
{
    {
        const PrivateFolder folder;
        struct stat status = {};
        ASSERT_EQ(::stat(folder.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0700U);
        EXPECT_TRUE(folder.path().starts_with(path("quelm-gs-")));
        std::filesystem::create_directories(folder.path() + "/a/b");
        file(folder.path().substr(path("").size()) + "/a/c", "content");
    }
    EXPECT_EQ(namesInFolder(), Names{});
}

TEST_F(PrivateFolderTest, WhatAKilledRunLeftIsSweptByTheNext)
{
    std::filesystem::create_directory(path("quelm-gs-123456"));
    file("quelm-gs-123456/gs_abc", "left");
    const PrivateFolder folder;
    EXPECT_FALSE(std::filesystem::exists(path("quelm-gs-123456")));
    EXPECT_TRUE(std::filesystem::exists(folder.path()));
}

TEST_F(PrivateFolderTest, FoldersInUseAndFilesOfOtherNamesStay)
{
    const PrivateFolder one;
    const std::optional<PrivateFolder> two(std::in_place);
    // Held by a supervisor alone, whose driver was killed.
    std::filesystem::create_directory(path("quelm-gs-123456"));
    const FileHandle held(::open(path("quelm-gs-123456").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(held.get(), LOCK_SH), 0);
    std::filesystem::create_directory(path("quelm-gs-longer-name"));
    file("quelm-gs-abcdef", "a file");
    const PrivateFolder three;
    EXPECT_EQ(namesInFolder().size(), 6U);
}

TEST_F(PrivateFolderTest, LinksAreNotFollowed)
{
    std::filesystem::create_directory(path("valued"));
    file("valued/letter", "content");
    std::filesystem::create_directory_symlink(path("valued"), path("quelm-gs-123456"));
    std::filesystem::create_directory(path("quelm-gs-654321"));
    std::filesystem::create_directory_symlink(path("valued"), path("quelm-gs-654321/link"));
    const PrivateFolder folder;
    EXPECT_EQ(contentOf(path("valued/letter")), "content");
    EXPECT_FALSE(std::filesystem::exists(path("quelm-gs-654321")));
}

TEST_F(PrivateFolderTest, AnotherUsersFolderStays)
{
    if (::geteuid() == 0) {
        std::filesystem::create_directory(path("quelm-gs-123456"));
        ASSERT_EQ(::chown(path("quelm-gs-123456").c_str(), 65534, 65534), 0);
    }
    const PrivateFolder folder;
    // Who is not root has none of another user to try it with; the folder of the running test is its own.
    EXPECT_EQ(std::filesystem::exists(path("quelm-gs-123456")), ::geteuid() == 0);
}

TEST_F(PrivateFolderTest, AFolderThatCannotBeMadeIsNamed)
{
    ::setenv("TMPDIR", path("missing").c_str(), 1);
    EXPECT_EQ(errorLine([] { const PrivateFolder folder; }),
              path("missing") +
                  ": no temporary folder can be made there: No such file or directory; set TMPDIR "
                  "to a folder with room");
    ::setenv("TMPDIR", folder().c_str(), 1);
}

} // namespace
} // namespace quelm::tests
