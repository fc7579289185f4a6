// Files that appear whole or not at all.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"

#include "base/error.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

class AtomicFileTest : public testing::Test {
protected:
    /// The error's line, or an empty text.
    template <typename Action>
    static std::string problem(Action action)
    {
        try {
            action();
        } catch (const quelm::Error& error) {
            return error.what();
        }
        return "";
    }
    static std::string problemAt(const std::string& path)
    {
        return problem([&] { quelm::AtomicFile file(path); });
    }
    static void writeWhole(const std::string& path, const std::string& content)
    {
        quelm::AtomicFile file(path);
        file.write(content);
        file.commit();
    }
    static mode_t modeOf(const std::string& path)
    {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    TemporaryFolder folder;
};

bool mentions(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// Starts a file, says so, and waits for the signal that ends it.
[[noreturn]] void writeUntilEnded(const std::string& path, int ready)
{
    quelm::AtomicFile file(path);
    file.write(std::string(100000, 'x'));
    [[maybe_unused]] const ssize_t said = write(ready, "!", 1);
    for (;;)
        pause();
}

TEST_F(AtomicFileTest, APreparedFileIsCompleteBesideItsTargetAndTakesItsPlaceByItsInode)
{
    writeFile(folder / "job", "before");
    quelm::AtomicFile file(folder / "job");
    file.write("after");
    const auto inode = file.prepare(".beside");
    ASSERT_TRUE(inode);
    EXPECT_EQ(contentOf(folder / "job"), "before");
    EXPECT_EQ(contentOf(folder / ".beside"), "after");
    EXPECT_EQ(folder.names(), (Names{".beside", "job"}));
    { // nobody sweeps it up
        const quelm::AtomicFile another(folder / "other");
    }
    quelm::removeUnfinishedFiles();
    file.commit();
    struct stat status {};
    ASSERT_EQ(stat((folder / "job").c_str(), &status), 0);
    EXPECT_EQ(status.st_ino, *inode);
    EXPECT_EQ(contentOf(folder / "job"), "after");
    EXPECT_EQ(folder.names(), Names{"job"});
}

TEST_F(AtomicFileTest, APreparedFileThatIsGivenUpLeavesNothing)
{
    {
        quelm::AtomicFile file(folder / "job");
        file.write("after");
        EXPECT_TRUE(file.prepare(".beside"));
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(AtomicFileTest, WhatIsWrittenDirectlyIsNotPrepared)
{
    quelm::AtomicFile file("/dev/null");
    file.write("gone");
    EXPECT_FALSE(file.prepare(".beside"));
}

TEST_F(AtomicFileTest, ARestrictedFileIsItsOwnersAlone)
{
    const mode_t before = umask(0);
    quelm::AtomicFile file(folder / "new");
    file.write("secret");
    file.restrictToOwner();
    file.write(" and more");
    file.commit();
    umask(before);
    EXPECT_EQ(modeOf(folder / "new"), 0600U);
    EXPECT_EQ(contentOf(folder / "new"), "secret and more");
}

TEST_F(AtomicFileTest, ARestrictedFileDoesNotKeepThePermissionsOfTheOneThatItReplaces)
{
    writeFile(folder / "old", "before");
    ASSERT_EQ(chmod((folder / "old").c_str(), 0664), 0);
    const mode_t umaskBefore = umask(0277);
    quelm::AtomicFile file(folder / "old");
    file.restrictToOwner();
    umask(umaskBefore);
    file.write("secret");
    file.commit();
    EXPECT_EQ(modeOf(folder / "old"), 0600U);
    EXPECT_EQ(contentOf(folder / "old"), "secret");
}

TEST_F(AtomicFileTest, RestrictingAFileKeepsItsDescriptorAndWhatWasWritten)
{
    quelm::AtomicFile file(folder / "new");
    const int writer = file.descriptor();
    ASSERT_EQ(write(writer, "before ", 7), 7);
    file.restrictToOwner();
    EXPECT_EQ(file.descriptor(), writer);
    ASSERT_EQ(write(writer, "secret", 6), 6);
    ASSERT_EQ(folder.names().size(), 1U);
    EXPECT_EQ(modeOf(folder / folder.names()[0]), 0600U);
    file.commit();
    EXPECT_EQ(contentOf(folder / "new"), "before secret");
    EXPECT_EQ(folder.names(), Names{"new"});
}

TEST_F(AtomicFileTest, ARestrictedFileThatIsGivenUpLeavesNothing)
{
    {
        quelm::AtomicFile file(folder / "new");
        file.restrictToOwner();
        file.write("secret");
    }
    EXPECT_EQ(folder.names(), Names());
}

TEST_F(AtomicFileTest, RestrictingAFileThatIsWrittenDirectlyChangesNothing)
{
    quelm::AtomicFile file("/dev/null");
    const auto mode = modeOf("/dev/null");
    file.restrictToOwner();
    file.write("secret");
    file.commit();
    EXPECT_EQ(modeOf("/dev/null"), mode);
}

} // namespace

TEST_F(AtomicFileTest, AppearsWithItsCommit)
{
    quelm::AtomicFile file(folder / "fax.ps");
    file.write("%!PS\n");
    file.write("showpage\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.ps"));
    file.commit();
    EXPECT_EQ(contentOf(folder / "fax.ps"), "%!PS\nshowpage\n");
    EXPECT_EQ(folder.names(), Names{"fax.ps"});
    EXPECT_EQ(file.path(), folder / "fax.ps");
}

TEST_F(AtomicFileTest, LeavesNothingWithoutACommit)
{
    writeFile(folder / "old.ps", "old");
    {
        quelm::AtomicFile created(folder / "new.ps");
        quelm::AtomicFile replaced(folder / "old.ps");
        created.write(std::string(200000, 'x'));
        replaced.write(std::string(200000, 'x'));
    }
    EXPECT_EQ(contentOf(folder / "old.ps"), "old");
    EXPECT_EQ(folder.names(), Names{"old.ps"});
}

TEST_F(AtomicFileTest, KeepsEveryByteWhateverTheSizesWritten)
{
    std::string all;
    quelm::AtomicFile file(folder / "all");
    for (const unsigned size : {0U, 1U, 65535U, 65536U, 65537U, 3U, 300000U}) {
        const std::string part(size, static_cast<char>(size % 251));
        file.write(part);
        all += part;
    }
    file.commit();
    EXPECT_EQ(contentOf(folder / "all"), all);
}

TEST_F(AtomicFileTest, GivesADescriptorBehindWhatWasWritten)
{
    quelm::AtomicFile file(folder / "both");
    file.write("first ");
    EXPECT_EQ(write(file.descriptor(), "second ", 7), 7);
    file.write("third");
    file.commit();
    EXPECT_EQ(contentOf(folder / "both"), "first second third");
}

TEST_F(AtomicFileTest, ReplacedFileKeepsItsPermissions)
{
    writeFile(folder / "mine", "old");
    chmod((folder / "mine").c_str(), 0604);
    writeWhole(folder / "mine", "new");
    EXPECT_EQ(contentOf(folder / "mine"), "new");
    EXPECT_EQ(modeOf(folder / "mine"), 0604U);
}

TEST_F(AtomicFileTest, NewFileFollowsTheUmask)
{
    const mode_t before = umask(027);
    writeWhole(folder / "new", "x");
    umask(before);
    EXPECT_EQ(modeOf(folder / "new"), 0640U);
}

TEST_F(AtomicFileTest, NobodyElseCanReadItMeanwhile)
{
    writeFile(folder / "open", "old");
    chmod((folder / "open").c_str(), 0666);
    for (const std::string name : {"open", "new"}) {
        quelm::AtomicFile file(folder / name);
        struct stat status {};
        ASSERT_EQ(fstat(file.descriptor(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0600U);
        file.commit();
    }
    EXPECT_EQ(modeOf(folder / "open"), 0666U);
}

TEST_F(AtomicFileTest, CanBeForAllToReadAndItsOwnerToWrite)
{
    const auto before = umask(0);
    const auto write = [&](const std::string& path) {
        quelm::AtomicFile file(path);
        file.denyWritingToOthers();
        file.commit();
        return modeOf(path);
    };
    EXPECT_EQ(write(folder / "new"), 0644U);
    chmod((folder / "new").c_str(), 0664);
    EXPECT_EQ(write(folder / "new"), 0664U) << "as it was given";
    umask(before);
}

TEST_F(AtomicFileTest, SymbolicLinkStaysOne)
{
    std::filesystem::create_directory(folder / "real");
    writeFile(folder / "real/target", "old");
    std::filesystem::create_symlink("real/target", folder / "link");
    std::filesystem::create_symlink("real/later", folder / "dangling");
    writeWhole(folder / "link", "new");
    writeWhole(folder / "dangling", "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(contentOf(folder / "real/target"), "new");
    EXPECT_EQ(contentOf(folder / "real/later"), "made");
}

TEST_F(AtomicFileTest, LinksInACircleAreRefused)
{
    std::filesystem::create_symlink("b", folder / "a");
    std::filesystem::create_symlink("a", folder / "b");
    EXPECT_TRUE(mentions(problemAt(folder / "a"), "symbolic links lead nowhere"));
}

TEST_F(AtomicFileTest, NameMayBeAsLongAsNamesCanBe)
{
    const std::string longest(255, 'n');
    writeWhole(folder / longest, "x");
    EXPECT_EQ(folder.names(), Names{longest});
    EXPECT_TRUE(
        mentions(problem([&] { writeWhole(folder / (longest + "n"), "x"); }), "the name is too long"));
}

TEST_F(AtomicFileTest, ErrorNamesTheFileAndTheReason)
{
    const std::string missing = problemAt(folder / "no/fax.ps");
    EXPECT_TRUE(mentions(missing, "\"" + (folder / "no/fax.ps") + "\" cannot be written: the folder \"" +
                                      (folder / "no") + "\" does not exist"))
        << missing;
    EXPECT_TRUE(mentions(problemAt(folder.path()), "that is a folder"));
    EXPECT_TRUE(mentions(problemAt(folder / ""), "that is a folder"));
    EXPECT_TRUE(mentions(problemAt(""), "the file name is empty"));
    writeFile(folder / "file", "");
    EXPECT_TRUE(mentions(problemAt(folder / "file/fax.ps"), "is no folder"));
}

TEST_F(AtomicFileTest, PermissionIsNeededForFolderAndFile)
{
    writeFile(folder / "theirs", "old");
    chmod((folder / "theirs").c_str(), 0444);
    std::filesystem::create_directory(folder / "closed");
    chmod((folder / "closed").c_str(), 0555);
    const int status = inProcess([&] {
        becomeOrdinaryUser();
        return (mentions(problemAt(folder / "theirs"), "permission denied") ? 0 : 1) +
               (mentions(problemAt(folder / "closed/new"), "permission denied") ? 0 : 2);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(folder / "theirs"), "old");
}

TEST_F(AtomicFileTest, SizeLimitIsReportedAndLeavesTheTargetAsItWas)
{
    writeFile(folder / "old", "old");
    const int status = inProcess([&] {
        const rlimit limit{65536, 65536};
        setrlimit(RLIMIT_FSIZE, &limit);
        const std::string line = problem([&] { writeWhole(folder / "old", std::string(200000, 'x')); });
        return mentions(line, "exceed the size limit") ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(folder / "old"), "old");
    EXPECT_EQ(folder.names(), Names{"old"});
}

TEST_F(AtomicFileTest, FullDeviceIsReported)
{
    EXPECT_TRUE(mentions(problem([] { writeWhole("/dev/full", "x"); }), "the disk is full"));
}

TEST_F(AtomicFileTest, DeviceIsWrittenDirectlyAndStaysOne)
{
    writeWhole("/dev/null", std::string(200000, 'x'));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(AtomicFileTest, FifoIsWrittenDirectly)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
    writeWhole(fifo, "through");
    std::array<char, 16> got{};
    EXPECT_EQ(read(reader, got.data(), got.size()), 7);
    EXPECT_STREQ(got.data(), "through");
    close(reader);
    EXPECT_EQ(folder.names(), Names{"fifo"});
}

TEST_F(AtomicFileTest, FifoWithoutAReaderIsWaitedForAndNamed)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    using std::chrono::milliseconds;
    EXPECT_EQ(problem([&] {
                  quelm::AtomicFile file(fifo, {milliseconds(50), milliseconds(50)});
              }),
              "\"" + fifo +
                  "\" cannot be written: no program reads this fifo; start the one that does, and try again");
    const pid_t reader = fork();
    if (reader == 0) {
        const int file = open(fifo.c_str(), O_RDONLY);
        char byte = 0;
        _exit(read(file, &byte, 1) == 1 && byte == 'x' ? 7 : 8);
    }
    writeWhole(fifo, "x"); // waits for it
    int status = 0;
    waitpid(reader, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(AtomicFileTest, FifoWhoseReaderTakesNothingIsGivenUp)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
    using std::chrono::milliseconds;
    quelm::AtomicFile file(fifo, {milliseconds(50), milliseconds(50)});
    EXPECT_TRUE(mentions(problem([&] {
                             for (int i = 0; i < 100; ++i)
                                 file.write(std::string(100000, 'x'));
                             file.commit();
                         }),
                         "the program that reads it took nothing for 50 ms"));
    close(reader);
}

TEST_F(AtomicFileTest, FifosDescriptorWaitsForRoomAsOthersExpect)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
    quelm::AtomicFile file(fifo);
    EXPECT_EQ(fcntl(file.descriptor(), F_GETFL) & O_NONBLOCK, 0);
    close(reader);
}

TEST_F(AtomicFileTest, CommitNewNeverReplaces)
{
    quelm::AtomicFile first(folder / "book");
    quelm::AtomicFile second(folder / "book");
    first.write("first");
    second.write("second");
    EXPECT_TRUE(first.commitNew());
    EXPECT_FALSE(second.commitNew());
    EXPECT_EQ(contentOf(folder / "book"), "first");
    writeFile(folder / "other", "other");
    quelm::AtomicFile third(folder / "other");
    EXPECT_FALSE(third.commitNew());
    EXPECT_EQ(contentOf(folder / "other"), "other");
}

TEST_F(AtomicFileTest, CommitNewLeavesNoTemporaryFile)
{
    {
        quelm::AtomicFile file(folder / "book");
        EXPECT_TRUE(file.commitNew());
        quelm::AtomicFile late(folder / "book");
        EXPECT_FALSE(late.commitNew());
    }
    EXPECT_EQ(folder.names(), Names{"book"});
}

class EndingSignal : public AtomicFileTest, public testing::WithParamInterface<int> {};

TEST_P(EndingSignal, RemovesWhatIsUnfinished)
{
    writeFile(folder / "old", "old");
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0)
        writeUntilEnded(folder / "old", ready[1]);
    char said = 0;
    ASSERT_EQ(read(ready[0], &said, 1), 1);
    EXPECT_EQ(folder.names().size(), 2U) << "the temporary file stands there meanwhile";
    kill(child, GetParam());
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), GetParam());
    EXPECT_EQ(folder.names(), Names{"old"});
    EXPECT_EQ(contentOf(folder / "old"), "old");
    close(ready[0]);
    close(ready[1]);
}

INSTANTIATE_TEST_SUITE_P(Signals, EndingSignal, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(AtomicFileTest, NextWriterRemovesWhatAKilledOneLeft)
{
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0)
        writeUntilEnded(folder / "first", ready[1]);
    char said = 0;
    ASSERT_EQ(read(ready[0], &said, 1), 1);
    writeWhole(folder / "second", "x");
    EXPECT_EQ(folder.names().size(), 2U) << "a living writer's file stays";
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(folder.names().size(), 2U);
    writeWhole(folder / "second", "y");
    EXPECT_EQ(folder.names(), Names{"second"});
    close(ready[0]);
    close(ready[1]);
}

TEST_F(AtomicFileTest, ProgramsOwnSignalHandlerStaysAndCanRemoveWhatIsUnfinished)
{
    const int status = inProcess([&] {
        std::signal(SIGTERM, [](int) { quelm::removeUnfinishedFiles(); });
        quelm::AtomicFile file(folder / "new");
        file.write("x");
        raise(SIGTERM);
        const bool removed = folder.names().empty();
        const bool failed = mentions(problem([&] { file.commit(); }), "cannot be written");
        return removed && failed ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(AtomicFileTest, ChangingTheWorkingFolderMovesNothing)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    std::filesystem::create_directory("elsewhere");
    quelm::AtomicFile file("relative");
    std::filesystem::current_path(folder.path() / "elsewhere");
    file.write("x");
    file.commit();
    std::filesystem::current_path(before);
    EXPECT_EQ(folder.names(), (Names{"elsewhere", "relative"}));
}
