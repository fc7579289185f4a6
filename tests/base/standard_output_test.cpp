// What a command says on standard output.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/standard_output.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/log.h"
#include "tests/support/failure_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

namespace quelm {
namespace {

/// Standard output is another file as long as this lives.
class OutputTo {
public:
    explicit OutputTo(int file) : before_(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3))
    {
        std::fflush(stdout);
        ::dup2(file, STDOUT_FILENO);
    }
    ~OutputTo() { ::dup2(before_.get(), STDOUT_FILENO); }
    OutputTo(const OutputTo&) = delete;
    OutputTo& operator=(const OutputTo&) = delete;

private:
    FileHandle before_;
};

std::string readSome(int file)
{
    std::array<char, 4096> text{};
    const auto size = ::read(file, text.data(), text.size());
    return {text.data(), static_cast<std::size_t>(size < 0 ? 0 : size)};
}

constexpr const char* hostile = "Ann\x1b[2J \u009b1m \u202e321\tשלום\n";

TEST(WriteAnswer, IsDataForAPipe)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle out(ends[0]);
    const FileHandle in(ends[1]);
    {
        const OutputTo redirected(in.get());
        writeAnswer(hostile);
    }
    EXPECT_EQ(readSome(out.get()), hostile);
}

TEST(WriteAnswer, IsHarmlessOnATerminal)
{
    int controlling = -1;
    int terminal = -1;
    ASSERT_EQ(::openpty(&controlling, &terminal, nullptr, nullptr, nullptr), 0);
    const FileHandle screen(controlling);
    const FileHandle output(terminal);
    {
        const OutputTo redirected(output.get());
        writeAnswer(hostile);
    }
    EXPECT_EQ(readSome(screen.get()), "Ann\\u{1b}[2J \\u{9b}1m \\u{202e}321\tשלום\r\n");
}

TEST(WriteAnswer, FailsWhenItCannotBeWritten)
{
    const FileHandle full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full.isOpen());
    const OutputTo redirected(full.get());
    EXPECT_EQ(test::failureLine([] { writeAnswer("Ann"); }),
              "standard output: cannot be written: the disk is full; make room and try again");
}

TEST(WriteAnswer, FailsWhenNobodyReads)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle in(ends[1]);
    ::close(ends[0]);
    const OutputTo redirected(in.get());
    EXPECT_EQ(test::failureLine([] { writeAnswer("Ann"); }),
              "standard output: cannot be written: the program that reads it has ended");
}

TEST(WriteConfirmation, ThatCannotBeWrittenIsNoFailure)
{
    const FileHandle full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full.isOpen());
    const OutputTo redirected(full.get());
    EXPECT_NO_THROW(writeConfirmation("added Ann"));
}

TEST(WriteConfirmation, IsNothingForAQuietProgram)
{
    testing::internal::CaptureStdout();
    setQuiet(true);
    writeConfirmation("added Ann");
    writeAnswer("Ann");
    setQuiet(false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Ann");
}

TEST(WriteResult, ThatCannotBeWrittenSaysThatTheWorkIsDone)
{
    const FileHandle full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full.isOpen());
    const OutputTo redirected(full.get());
    EXPECT_EQ(
        test::failureLine([] { writeResult("{}"); }),
        "standard output: cannot be written: the disk is full; make room and try again; what the command "
        "was to do is done all the same");
}

} // namespace
} // namespace quelm
