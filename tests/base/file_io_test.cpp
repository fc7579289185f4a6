// Tests of the print path's file descriptors.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/file_io.h"

#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace quelm::tests {
namespace {

/// A test with an empty folder, where temporary files go.
class FileIoTest : public testing::Test {
protected:
    FileIoTest() { ::setenv("TMPDIR", folder.path().c_str(), 1); }
    ~FileIoTest() override
    {
        if (before_)
            ::setenv("TMPDIR", before_->c_str(), 1);
        else
            ::unsetenv("TMPDIR");
    }

    TemporaryFolder folder;

private:
    static std::optional<std::string> temporaryFolder()
    {
        const char* value = std::getenv("TMPDIR");
        return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
    }

    std::optional<std::string> before_ = temporaryFolder();
};

TEST_F(FileIoTest, AnUnnamedFileLeavesNoName)
{
    const FileHandle unnamed = makeUnnamedFile();
    writeAll(unnamed.get(), "some text", "it");
    EXPECT_EQ(folder.names(), std::vector<std::string>{});
    std::string text(20, ' ');
    text.resize(readFully(unnamed.get(), text.data(), text.size(), 5, "it"));
    EXPECT_EQ(text, "text");
}

TEST_F(FileIoTest, WithoutAFolderForTemporaryFilesTheLineSaysWhatToSet)
{
    ::setenv("TMPDIR", (folder / "missing").c_str(), 1);
    EXPECT_EQ(test::failureLine([] { static_cast<void>(makeUnnamedFile()); }),
              (folder / "missing") + ": no temporary file can be made there: No such file or directory; set "
                                     "TMPDIR to a folder with room");
}

void doNothing(int) {}

/// A timer that interrupts system calls every millisecond.
class Interruptions {
public:
    Interruptions()
    {
        struct sigaction action = {};
        action.sa_handler = doNothing; // without SA_RESTART
        ::sigaction(SIGALRM, &action, &before_);
        setTimer(1000);
    }
    ~Interruptions()
    {
        setTimer(0);
        ::sigaction(SIGALRM, &before_, nullptr);
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;

private:
    static void setTimer(int microseconds)
    {
        const itimerval timer{{0, microseconds}, {0, microseconds}};
        ::setitimer(ITIMER_REAL, &timer, nullptr);
    }
    struct sigaction before_ = {};
};

TEST_F(FileIoTest, InterruptedAndShortWritesArriveWhole)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const std::string text(std::size_t{3} << 20U, 'x');
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[1]);
        std::size_t total = 0;
        std::array<char, 4096> block{};
        for (ssize_t size = 0; (size = ::read(ends[0], block.data(), block.size())) > 0;)
            total += static_cast<std::size_t>(size);
        ::_exit(total == text.size() ? 0 : 1);
    }
    ::close(ends[0]);
    FileHandle written(ends[1]);
    {
        const Interruptions interruptions;
        writeAll(written.get(), text, "the pipe");
    }
    written.close();
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace quelm::tests
