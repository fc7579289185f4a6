// Temporary files, and what killed processes leave of them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/temporary_file.h"

#include "base/atomic_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/two_users.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <vector>

namespace quelm {
namespace {

using Names = std::vector<std::string>;

class TemporaryFiles : public testing::Test {
protected:
    TemporaryFiles() : place(open(folder.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

    TemporaryFolder folder;
    FileHandle place;
};

constexpr const char* leftover = ".quelm-0123456789abcdef.tmp";

TEST_F(TemporaryFiles, HaveNamesThatNobodyGuesses)
{
    const auto name = temporaryName();
    EXPECT_EQ(name.size(), std::string(leftover).size());
    EXPECT_NE(name, temporaryName());
}

TEST_F(TemporaryFiles, AreForTheirUserAlone)
{
    const mode_t before = umask(0);
    const auto file = makeTemporaryFile(place.get(), leftover);
    umask(before);
    struct stat status {};
    ASSERT_EQ(fstat(file.get(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(TemporaryFiles, ThatNobodyHoldsAreSweptUp)
{
    writeFile(folder / leftover, "half");
    sweepTemporaryFiles(place.get());
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(TemporaryFiles, ThatAreBeingWrittenStay)
{
    const auto file = makeTemporaryFile(place.get(), leftover);
    ASSERT_TRUE(file.isOpen());
    sweepTemporaryFiles(place.get());
    EXPECT_EQ(folder.names(), Names{leftover});
    EXPECT_EQ(inProcess([&] {
                  sweepTemporaryFiles(place.get());
                  return 0;
              }),
              0);
    EXPECT_EQ(folder.names(), Names{leftover}) << "by another process";
}

TEST_F(TemporaryFiles, OtherNamesAndKindsOfFilesStay)
{
    Names others{".quelm-0123456789abcdef.tmp~", ".quelm-0123456789abcde.tmp", ".quelm-0123456789ABCDEF.tmp",
                 "quelm-0123456789abcdef.tmp", ".quelm-0123456789abcdeg.tmp"};
    for (const auto& name : others)
        writeFile(folder / name, "x");
    others.emplace_back(".quelm-aaaaaaaaaaaaaaaa.tmp");
    ASSERT_EQ(mkfifo((folder / others.back()).c_str(), 0600), 0);
    others.emplace_back(".quelm-bbbbbbbbbbbbbbbb.tmp");
    std::filesystem::create_symlink(others.front(), folder / others.back());
    others.emplace_back(".quelm-cccccccccccccccc.tmp");
    std::filesystem::create_directory(folder / others.back());
    sweepTemporaryFiles(place.get());
    std::sort(others.begin(), others.end());
    EXPECT_EQ(folder.names(), others);
}

TEST_F(TwoUsers, LeaveTheTemporaryFilesOfTheOther)
{
    const FileHandle place(open(folder.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const auto sweep = [&] {
        sweepTemporaryFiles(place.get());
        return 0;
    };
    writeFile(folder / leftover, "half");
    ASSERT_EQ(chmod((folder / leftover).c_str(), 0666), 0);
    giveTo(folder / leftover, victim);
    EXPECT_EQ(asUser(attacker, sweep), 0);
    EXPECT_EQ(folder.names(), Names{leftover});
    sweep();
    EXPECT_EQ(folder.names(), Names{leftover}) << "root, which may do all, leaves it too";
    EXPECT_EQ(asUser(victim, sweep), 0);
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(TemporaryFiles, ANameThatIsTakenIsNotUsed)
{
    writeFile(folder / leftover, "theirs");
    EXPECT_FALSE(makeTemporaryFile(place.get(), leftover).isOpen());
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(contentOf(folder / leftover), "theirs");
}

TEST_F(TemporaryFiles, WritersAndSweepersDoNotDisturbEachOther)
{
    std::array<int, 2> work{};
    ASSERT_EQ(pipe2(work.data(), O_CLOEXEC | O_NONBLOCK), 0);
    const pid_t sweeper = fork();
    if (sweeper == 0) {
        close(work[1]);
        char byte = 0;
        while (read(work[0], &byte, 1) != 0) // until the writer is done
            sweepTemporaryFiles(place.get());
        _exit(0);
    }
    close(work[0]);
    for (int i = 0; i < 500; ++i) {
        AtomicFile file(folder / "book");
        file.write(std::to_string(i));
        ASSERT_NO_THROW(file.commit());
        ASSERT_EQ(contentOf(folder / "book"), std::to_string(i));
    }
    close(work[1]);
    waitpid(sweeper, nullptr, 0);
    EXPECT_EQ(folder.names(), Names{"book"});
}

TEST_F(TemporaryFiles, NewFilesGetWhatTheUmaskLeaves)
{
    const mode_t before = umask(027);
    const auto permissions = permissionsOfNewFile(place.get());
    umask(before);
    EXPECT_EQ(permissions, 0640U);
    EXPECT_EQ(folder.names(), Names{});
}

} // namespace
} // namespace quelm
