// Tests of the device's files: made, closed to others, moved.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/state_files.h"

#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using testing::AllOf;
using testing::HasSubstr;

class StateFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(StateFilesTest, AFileIsMovedIntoAFolderThatIsMadeForIt)
{
    writeFile(folder / "from", "new");
    moveDurably(folder / "from", folder / "to/file");
    EXPECT_EQ(contentOf(folder / "to/file"), "new");
    EXPECT_FALSE(fs::exists(folder / "from"));
    EXPECT_EQ(fs::status(folder / "to").permissions(), fs::perms::owner_all);

    EXPECT_THAT(failureLine([&] { moveDurably(folder / "from", folder / "to/file"); }), HasSubstr("to/file"));
}

TEST_F(StateFilesTest, NothingIsMovedOverAnother)
{
    fs::create_directories(folder / "to/folder");
    writeFile(folder / "to/file", "old");
    writeFile(folder / "from", "new");
    for (const char* name : {"to/file", "to/folder"})
        EXPECT_THAT(failureLine([&] { moveDurably(folder / "from", folder / name); }),
                    AllOf(HasSubstr(name), HasSubstr("already")));
    EXPECT_EQ(contentOf(folder / "from"), "new");
    EXPECT_EQ(contentOf(folder / "to/file"), "old");
}

TEST_F(StateFilesTest, WhatIsSetAsideFindsAFreeName)
{
    for (const char* content : {"first", "second", "third"}) {
        fs::create_directories(folder / "2");
        writeFile(folder / "2/job", content);
        const fs::path aside = setAside(folder / "2", folder / "unknown");
        EXPECT_EQ(contentOf(aside / "job"), content);
    }
    for (const char* name : {"2", "2-2", "2-3"})
        EXPECT_TRUE(fs::exists(fs::path(folder / "unknown") / name)) << name;
    EXPECT_EQ(fs::status(folder / "unknown").permissions(), fs::perms::owner_all);
}

TEST_F(StateFilesTest, OnlyAPlainFileIsOne)
{
    writeFile(folder / "file", "");
    fs::create_symlink(folder / "file", folder / "link");
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    EXPECT_TRUE(isFile(folder / "file"));
    for (const char* name : {"link", "fifo", ".", "absent"}) {
        EXPECT_FALSE(isFile(folder / name)) << name;
        EXPECT_THAT(failureLine([&] { synchroniseFile(folder / name); }), HasSubstr(name));
        EXPECT_THAT(failureLine([&] { requireStateFile(folder / name); }), HasSubstr(name));
    }
}

TEST_F(StateFilesTest, AFileIsClosedToOthersAsItIsMadeDurable)
{
    fs::permissions(writeFile(folder / "file", "x"), fs::perms::all);
    synchroniseFile(folder / "file");
    EXPECT_EQ(fs::status(folder / "file").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(contentOf(folder / "file"), "x");
}

TEST_F(StateFilesTest, RemovingFollowsNoLink)
{
    fs::create_directories(folder / "kept");
    writeFile(folder / "kept/file", "x");
    fs::create_directories(folder / "gone/below");
    fs::create_directory_symlink(folder / "kept", folder / "gone/below/link");
    removeQuietly(folder / "gone");
    EXPECT_FALSE(fs::exists(folder / "gone"));
    EXPECT_EQ(contentOf(folder / "kept/file"), "x");
    removeQuietly(folder / "absent");
}

} // namespace
} // namespace quelm::device::tests
