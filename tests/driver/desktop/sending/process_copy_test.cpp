// Tests of work in a copy of the process.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/process_copy.h"

#include "base/error.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace quelm {
namespace {

using std::chrono::milliseconds;

bool hasChildren() { return waitpid(-1, nullptr, WNOHANG) >= 0; }

TEST(ProcessCopy, ReturnsWhatTheWorkReturned)
{
    const std::string bytes = std::string("a\0b\n", 4) + std::string(300000, 'x');
    EXPECT_EQ(inProcessCopy([&bytes] { return bytes; }), bytes);
    EXPECT_EQ(inProcessCopy([] { return std::string(); }), "");
}

TEST(ProcessCopy, WhatTheWorkChangesStaysAsItIsHere)
{
    int changed = 0;
    const auto work = [&changed] { return std::to_string(++changed); };
    EXPECT_EQ(inProcessCopy(work), "1");
    EXPECT_EQ(inProcessCopy(work), "1");
    EXPECT_EQ(changed, 0);
}

TEST(ProcessCopy, AnErrorOfTheWorkArrives)
{
    try {
        inProcessCopy([]() -> std::string { throw Error("no paper"); });
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "no paper");
    }
}

TEST(ProcessCopy, ADeathIsAnError)
{
    EXPECT_THROW(inProcessCopy([]() -> std::string {
                     raise(SIGKILL);
                     return "";
                 }),
                 Error);
}

TEST(ProcessCopy, WorkThatTakesTooLongIsEnded)
{
    const auto forever = []() -> std::string {
        for (;;)
            pause();
    };
    EXPECT_THROW(inProcessCopy(forever, milliseconds(20)), Error);
    EXPECT_FALSE(hasChildren());
}

TEST(ProcessCopy, NoProcessIsLeftBehind)
{
    inProcessCopy([] { return std::string("done"); });
    EXPECT_FALSE(hasChildren());
}

} // namespace
} // namespace quelm
