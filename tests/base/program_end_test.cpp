// The line and the exit status with which a program ends.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/program_end.h"

#include "base/error.h"
#include "base/log.h"
#include "base/process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <new>
#include <stdexcept>

namespace {

struct End {
    int status;
    std::string errors;
    bool operator==(const End&) const = default;
};

End endOf(const std::function<void()>& work)
{
    testing::internal::CaptureStderr();
    const int status = quelm::exitStatusOf("prog", work);
    return {status, testing::internal::GetCapturedStderr()};
}

TEST(ProgramEnd, WorkThatIsDoneIsSilent)
{
    EXPECT_EQ(endOf([] {}), (End{0, ""}));
}

TEST(ProgramEnd, ProgramsAreWaitedForAlsoWhereTheirEndsWereIgnored)
{
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(endOf([] {
                  quelm::ProcessRequest request;
                  request.arguments = {"sh", "-c", "exit 3"};
                  EXPECT_EQ(quelm::runProcess(request).exitStatus, 3);
              }),
              (End{0, ""}));
    std::signal(SIGCHLD, SIG_DFL);
}

TEST(ProgramEnd, WrongUsageIsStatusTwo)
{
    EXPECT_EQ(endOf([] { throw quelm::UsageError("say which"); }), (End{2, "prog: say which\n"}));
}

TEST(ProgramEnd, EveryOtherFailureIsStatusOne)
{
    EXPECT_EQ(endOf([] { throw quelm::Error("x is missing"); }), (End{1, "prog: x is missing\n"}));
    EXPECT_EQ(endOf([] { throw std::runtime_error("odd"); }), (End{1, "prog: odd\n"}));
    EXPECT_EQ(endOf([] { throw std::bad_alloc(); }), (End{1, "prog: out of memory\n"}));
}

TEST(ProgramEnd, WhatIsLoggedStandsBehindTheProgramsName)
{
    EXPECT_EQ(endOf([] { quelm::log(quelm::Severity::error, "a file is broken"); }),
              (End{0, "prog: a file is broken\n"}));
}

TEST(ProgramEnd, AFailureIsOneLineWhateverItHolds)
{
    const std::string errors = endOf([] { throw quelm::Error("a\nb"); }).errors;
    EXPECT_EQ(errors.find('\n'), errors.size() - 1) << errors;
}

TEST(ProgramEnd, AFailureIsHarmlessAndBoundedWhateverItHolds)
{
    const auto errors =
        endOf([] {
            throw quelm::UsageError("\u009b\u202e" + std::string(100000, 'x') + "; see --help");
        }).errors;
    EXPECT_TRUE(errors.starts_with("prog:  \\u{202e}xx")) << errors.substr(0, 30);
    EXPECT_TRUE(errors.ends_with("x; see --help\n"));
    EXPECT_LT(errors.size(), 1100U);
}

TEST(ProgramEnd, NoFileTakesThePlaceOfAStreamThatTheProgramWasStartedWithout)
{
    // In a process of its own: the streams are the test's own otherwise.
    EXPECT_EXIT(
        {
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
                ::close(stream);
            int lowest = -1;
            bool refused = false;
            const int status = quelm::exitStatusOf("prog", [&] {
                lowest = ::open("/", O_RDONLY | O_CLOEXEC);
                char byte = 'x';
                refused = ::write(STDOUT_FILENO, &byte, 1) < 0 && errno == EBADF &&
                          ::write(STDERR_FILENO, &byte, 1) < 0 && errno == EBADF &&
                          ::read(STDIN_FILENO, &byte, 1) < 0 && errno == EBADF;
            });
            ::_exit(status == 0 && lowest > STDERR_FILENO && refused ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

} // namespace
