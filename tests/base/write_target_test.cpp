// Where a path leads that is to be written to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/write_target.h"

#include "base/atomic_file.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/two_users.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

namespace quelm {
namespace {

/// Whether a file can be written whole at that path.
bool canWrite(const std::string& path)
{
    try {
        AtomicFile file(path);
        file.write("new");
        file.commit();
        return true;
    } catch (const Error&) {
        return false;
    }
}

class FindWriteTarget : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(FindWriteTarget, FollowsLinksToTheirFolderAndName)
{
    std::filesystem::create_directories(folder / "a/b");
    std::filesystem::create_symlink("a", folder / "folder");
    std::filesystem::create_symlink("../file", folder / "a/b/link");
    std::filesystem::create_symlink(folder / "folder/./b/link", folder / "start");
    writeFile(folder / "a/file", "x");
    const auto target = findWriteTarget(folder / "start");
    ASSERT_TRUE(target.folder.isOpen());
    EXPECT_EQ(target.name, "file");
    ASSERT_TRUE(target.present.has_value());
    EXPECT_EQ(target.present->st_size, 1);
    struct stat expected {};
    struct stat found {};
    ASSERT_EQ(stat((folder / "a").c_str(), &expected), 0);
    ASSERT_EQ(fstat(target.folder.get(), &found), 0);
    EXPECT_EQ(found.st_ino, expected.st_ino);
}

TEST_F(FindWriteTarget, SaysWhyAFolderCannotBeReached)
{
    writeFile(folder / "file", "");
    EXPECT_EQ(findWriteTarget(folder / "none/x").error, ENOENT);
    EXPECT_EQ(findWriteTarget(folder / "none/x").folderPath, folder / "none");
    EXPECT_EQ(findWriteTarget(folder / "file/x").error, ENOTDIR);
    std::filesystem::create_symlink("circle", folder / "circle");
    EXPECT_EQ(findWriteTarget(folder / "circle/x").error, ELOOP);
}

TEST_F(FindWriteTarget, FindsFoldersAsFolders)
{
    for (const std::string path : {"/", ".", "..", "/.", "/tmp/..", "//"}) {
        const auto target = findWriteTarget(path);
        EXPECT_EQ(target.error, 0) << path;
        ASSERT_TRUE(target.present.has_value()) << path;
        EXPECT_TRUE(S_ISDIR(target.present->st_mode)) << path;
    }
}

TEST_F(FindWriteTarget, LeadsToAPipeThatIsOpen)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle out(ends[0]);
    const FileHandle in(ends[1]);
    EXPECT_TRUE(canWrite("/dev/fd/" + std::to_string(in.get())));
    std::array<char, 8> got{};
    EXPECT_EQ(read(out.get(), got.data(), got.size()), 3);
    EXPECT_STREQ(got.data(), "new");
}

TEST_F(FindWriteTarget, AnOpenFileWithoutANameIsRefused)
{
    writeFile(folder / "file", "old");
    const FileHandle open(::open((folder / "file").c_str(), O_RDWR | O_CLOEXEC));
    const std::string path = "/dev/fd/" + std::to_string(open.get());
    EXPECT_EQ(findWriteTarget(path).name, "file");
    std::filesystem::remove(folder / "file");
    EXPECT_FALSE(canWrite(path));
    EXPECT_EQ(folder.names().size(), 0U);
}

TEST_F(FindWriteTarget, AnOwnLinkInAFolderForEverybodyIsFollowed)
{
    std::filesystem::create_directory(folder / "shared");
    ASSERT_EQ(chmod((folder / "shared").c_str(), 01777), 0);
    std::filesystem::create_symlink("../mine", folder / "shared/link");
    EXPECT_TRUE(canWrite(folder / "shared/link"));
    EXPECT_EQ(contentOf(folder / "mine"), "new");
}

TEST_F(FindWriteTarget, AHardLinkIsReplacedAndNotWrittenThrough)
{
    std::filesystem::create_directory(folder / "shared");
    ASSERT_EQ(chmod((folder / "shared").c_str(), 01777), 0);
    writeFile(folder / "precious", "old");
    std::filesystem::create_hard_link(folder / "precious", folder / "shared/laid");
    EXPECT_TRUE(canWrite(folder / "shared/laid"));
    EXPECT_EQ(contentOf(folder / "shared/laid"), "new");
    EXPECT_EQ(contentOf(folder / "precious"), "old");
}

class FilesOfOthers : public TwoUsers {
protected:
    /// Makes a folder for everybody, as /tmp is one; its owner may be somebody else.
    void share(uid_t owner, mode_t mode = 01777) const
    {
        std::filesystem::create_directory(folder / "shared");
        ASSERT_EQ(chmod((folder / "shared").c_str(), mode), 0);
        giveTo(folder / "shared", owner);
    }
    void makeVictimsFolder() const
    {
        std::filesystem::create_directory(folder / "own");
        giveTo(folder / "own", victim);
    }
    void link(const std::string& to, const std::string& name, uid_t owner) const
    {
        std::filesystem::create_symlink(to, folder / name);
        giveTo(folder / name, owner);
    }
    bool canVictimWrite(const std::string& path) const
    {
        return asUser(victim, [&] { return canWrite(folder / path) ? 0 : 1; }) == 0;
    }
};

TEST_F(FilesOfOthers, AStrangersLinkInAFolderForEverybodyIsNotFollowed)
{
    share(0);
    makeVictimsFolder();
    link("../own/precious", "shared/laid", attacker);
    EXPECT_FALSE(canVictimWrite("shared/laid"));
    EXPECT_FALSE(std::filesystem::exists(folder / "own/precious"));
    EXPECT_FALSE(canWrite(folder / "shared/laid")) << "not even for root";
    EXPECT_EQ(
        test::failureLine([&] { const AtomicFile file(folder / "shared/laid"); }),
        "\"" + (folder / "shared/laid") +
            "\" cannot be written: \"laid\" is a link that another user laid in a folder for everybody; "
            "name the file itself");
}

TEST_F(FilesOfOthers, AStrangersLinkIsNotFollowedAnywhereOnTheWay)
{
    share(0);
    makeVictimsFolder();
    link("../own", "shared/folder", attacker);
    link("laid", "shared/mine", victim);
    link("../own/file", "shared/laid", attacker);
    link("shared/laid", "outside", victim);
    for (const auto* path : {"shared/folder/file", "shared/mine", "outside"})
        EXPECT_FALSE(canVictimWrite(path)) << path;
    EXPECT_FALSE(std::filesystem::exists(folder / "own/file"));
}

TEST_F(FilesOfOthers, AFolderForAGroupCountsAlike)
{
    share(0, 01770);
    ASSERT_EQ(chown((folder / "shared").c_str(), 0, victim), 0);
    link("../own", "shared/laid", attacker);
    EXPECT_FALSE(canVictimWrite("shared/laid"));
}

TEST_F(FilesOfOthers, LinksOfTheUserAndOfTheFoldersOwnerAreFollowed)
{
    share(attacker);
    makeVictimsFolder();
    link("../own/one", "shared/mine", victim);
    link("../own/two", "shared/owners", attacker);
    EXPECT_TRUE(canVictimWrite("shared/mine"));
    EXPECT_TRUE(canVictimWrite("shared/owners"));
    EXPECT_EQ(contentOf(folder / "own/one"), "new");
    EXPECT_EQ(contentOf(folder / "own/two"), "new");
}

TEST_F(FilesOfOthers, ElsewhereALinkOfAnotherUserIsFollowed)
{
    share(0, 0777); // without the sticky bit others may replace files anyway
    link("target", "shared/link", attacker);
    EXPECT_TRUE(canVictimWrite("shared/link"));
    EXPECT_EQ(contentOf(folder / "shared/target"), "new");
}

TEST_F(FilesOfOthers, AStrangersFifoInAFolderForEverybodyIsNotWritten)
{
    share(0);
    const std::string fifo = folder / "shared/fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0666), 0);
    ASSERT_EQ(chmod(fifo.c_str(), 0666), 0);
    giveTo(fifo, attacker);
    const FileHandle reader(open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    ASSERT_TRUE(reader.isOpen());
    EXPECT_FALSE(canVictimWrite("shared/fifo"));
    EXPECT_EQ(
        test::failureLine([&] { const AtomicFile file(fifo); }),
        "\"" + fifo +
            "\" cannot be written: another user made it in a folder for everybody; choose another name");
    char byte = 0;
    EXPECT_EQ(read(reader.get(), &byte, 1), 0) << "nothing went through";
}

TEST_F(FilesOfOthers, AStrangersFileInAFolderForEverybodyIsNotReplaced)
{
    share(0);
    writeFile(folder / "shared/file", "theirs");
    giveTo(folder / "shared/file", attacker);
    ASSERT_EQ(chmod((folder / "shared/file").c_str(), 0666), 0);
    EXPECT_FALSE(canVictimWrite("shared/file"));
    EXPECT_FALSE(canWrite(folder / "shared/file")) << "root would hand the content to its owner";
    EXPECT_EQ(contentOf(folder / "shared/file"), "theirs");
}

} // namespace
} // namespace quelm
