// The line and the exit status with which a program ends.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/program_end.h"

#include "base/error.h"
#include "base/log.h"

#include <gtest/gtest.h>

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

} // namespace
