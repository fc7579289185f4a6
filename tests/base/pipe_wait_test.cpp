// Waiting for the program at the other end of a pipe.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/pipe_wait.h"

#include "base/whole_file.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>

namespace quelm {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t largest = 1U << 20U;
constexpr PipeLimits impatient{milliseconds(50), milliseconds(50)};
constexpr PipeLimits patient{milliseconds(60000), milliseconds(60000)};

class Pipes : public testing::Test {
protected:
    Pipes() { EXPECT_EQ(mkfifo(fifo.c_str(), 0600), 0); }

    /// Writes the parts to the fifo in a process of its own, with a pause ahead of each.
    template <typename... Parts>
    void writeSlowly(const Parts&... parts)
    {
        writer_ = fork();
        if (writer_ != 0)
            return;
        const int file = open(fifo.c_str(), O_WRONLY);
        for (const std::string part : {parts...}) {
            poll(nullptr, 0, 120); // longer than a wait between two looks
            if (write(file, part.data(), part.size()) < 0)
                _exit(1);
        }
        _exit(0);
    }
    ~Pipes() override
    {
        if (writer_ > 0)
            waitpid(writer_, nullptr, 0);
    }

    TemporaryFolder folder;
    std::string fifo = folder / "fifo";

private:
    pid_t writer_ = -1;
};

TEST_F(Pipes, AFifoWithoutAWriterIsWaitedForAndNamed)
{
    EXPECT_EQ(test::failureLine([&] { static_cast<void>(readTextFile(fifo, largest, impatient)); }),
              fifo +
                  ": cannot be read: no program writes to this fifo; start the one that does, and try again");
}

TEST_F(Pipes, AWriterThatFallsSilentIsGivenUp)
{
    const FileHandle writer(open(fifo.c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(write(writer.get(), "half", 4), 4);
    EXPECT_EQ(test::failureLine([&] { static_cast<void>(readTextFile(fifo, largest, impatient)); }),
              fifo +
                  ": cannot be read: nothing came for 50 ms from the program that writes it; see what keeps "
                  "that program, and try again");
}

TEST_F(Pipes, AWriterThatNeverSaysAWordIsGivenUp)
{
    const FileHandle writer(open(fifo.c_str(), O_RDWR | O_CLOEXEC));
    EXPECT_NE(test::failureLine([&] {
                  static_cast<void>(readTextFile(fifo, largest, impatient));
              }).find("nothing came for 50 ms"),
              std::string::npos);
}

TEST_F(Pipes, ASlowWriterIsReadWhole)
{
    writeSlowly("one ", "two ", "three");
    EXPECT_EQ(readTextFile(fifo, largest, patient), "one two three");
}

TEST_F(Pipes, AWriterThatComesLateAndSaysNothingGivesAnEmptyText)
{
    writeSlowly("");
    EXPECT_EQ(readTextFile(fifo, largest, patient), "");
}

TEST_F(Pipes, APipeIsReadByItsNameAsOthersRead)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle out(ends[0]);
    {
        const FileHandle in(ends[1]);
        ASSERT_EQ(write(in.get(), "all", 3), 3);
    }
    EXPECT_EQ(readTextFile("/dev/fd/" + std::to_string(out.get()), largest, impatient), "all");
    EXPECT_EQ(readTextFile("/dev/fd/" + std::to_string(out.get()), largest, impatient), "");
}

TEST_F(Pipes, WhoeverTypesAtATerminalHasAllTheTimeInTheWorld)
{
    int controlling = -1;
    int terminal = -1;
    std::array<char, 64> name{};
    ASSERT_EQ(openpty(&controlling, &terminal, name.data(), nullptr, nullptr), 0);
    const FileHandle keyboard(controlling);
    const FileHandle keptOpen(terminal);
    const pid_t typist = fork();
    if (typist == 0) {
        poll(nullptr, 0, 200); // several times the limit
        _exit(write(keyboard.get(), "typed\n\x04", 7) == 7 ? 0 : 1);
    }
    EXPECT_EQ(readTextFile(name.data(), largest, impatient), "typed\n");
    waitpid(typist, nullptr, 0);
}

TEST_F(Pipes, PlainFilesAreReadAtOnce)
{
    writeFile(folder / "plain", std::string(200000, 'x'));
    EXPECT_EQ(readTextFile(folder / "plain", largest, impatient).size(), 200000U);
}

} // namespace
} // namespace quelm
