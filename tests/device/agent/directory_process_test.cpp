// A server program as our child.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/directory_process.h"

#include "tests/support/processes.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <chrono>
#include <csignal>

namespace {

using quelm::device::DirectoryProcess;

class DirectoryProcessTest : public testing::Test {
protected:
    /// The shell's arguments for some lines, which run in a process of that name.
    static std::vector<std::string> shell(const std::string& lines) { return {"/bin/sh", "-c", lines}; }

    TemporaryFolder folder;
    std::string output = folder / "output";
};

TEST_F(DirectoryProcessTest, ItHasItsEnvironmentAloneAndItsOutputInTheFile)
{
    DirectoryProcess process(shell("echo \"$WORD\"; echo \"$HOME\"; echo wrong >&2"), {"WORD=said"}, output);
    EXPECT_TRUE(soon([&] { return !process.isRunning(); }));
    EXPECT_EQ(contentOf(output), "said\n\nwrong\n");
}

TEST_F(DirectoryProcessTest, NothingThatWeHaveOpenReachesIt)
{
    const int open = ::open("/dev/null", O_RDONLY);
    DirectoryProcess process(shell("ls /proc/self/fd | wc -l"), {"PATH=/usr/bin:/bin"}, output);
    EXPECT_TRUE(soon([&] { return !process.isRunning(); }));
    EXPECT_EQ(std::stoi(contentOf(output)), 4) << "the three, and the folder that is listed";
    ::close(open);
}

TEST_F(DirectoryProcessTest, ItMayOpenSoManyFilesAndNoMore)
{
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit all{before.rlim_max, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &all);
    DirectoryProcess process(shell("ulimit -n"), {}, output);
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(soon([&] { return !process.isRunning(); }));
    EXPECT_EQ(contentOf(output), "1024\n") << "the server makes room for as many connections";
}

TEST_F(DirectoryProcessTest, SignalsThatWeHoldBackReachIt)
{
    sigset_t terminate;
    sigset_t before;
    ::sigemptyset(&terminate);
    ::sigaddset(&terminate, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &terminate, &before);
    DirectoryProcess process({"/bin/grep", "SigBlk", "/proc/self/status"}, {}, output);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_TRUE(soon([&] { return !process.isRunning(); }));
    EXPECT_EQ(contentOf(output), "SigBlk:\t0000000000000000\n");
}

TEST_F(DirectoryProcessTest, IgnoredSignalsAndATerminalsAreNotItsOwn)
{
    const auto before = std::signal(SIGTERM, SIG_IGN);
    {
        const DirectoryProcess process(shell("echo $$ ; exec sleep 100"), {"PATH=/usr/bin:/bin"}, output);
        ASSERT_TRUE(soon([&] { return contentOf(output).ends_with('\n'); }));
        EXPECT_EQ(::getsid(process.id()), process.id());
    } // ends by SIGTERM, and so at once
    std::signal(SIGTERM, before);
}

TEST_F(DirectoryProcessTest, OneThatDoesNotWantToEndIsEnded)
{
    pid_t id = 0;
    {
        const DirectoryProcess process(shell("trap '' TERM; echo ready; while :; do sleep 100; done"),
                                       {"PATH=/usr/bin:/bin"}, output, std::chrono::milliseconds(100));
        id = process.id();
        ASSERT_TRUE(soon([&] { return contentOf(output) == "ready\n"; }));
    }
    EXPECT_FALSE(isRunning(id));
}

TEST_F(DirectoryProcessTest, AProgramThatIsNotThereEndsAtOnce)
{
    DirectoryProcess process({folder / "nothing"}, {}, output);
    EXPECT_TRUE(soon([&] { return !process.isRunning(); }));
}

} // namespace
