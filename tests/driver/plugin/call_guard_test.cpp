// What the component throws ends at the guard.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/call_guard.h"

#include "tests/support/log_capture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

TEST(CallGuardTest, ACallThatReturnsIsNoFailure)
{
    quelm::CallGuard guard;
    bool called = false;
    EXPECT_TRUE(guard.run("Callback", [&called] { called = true; }));
    EXPECT_TRUE(called);
    EXPECT_EQ(guard.failures(), 0);
}

TEST(CallGuardTest, AnExceptionIsLoggedWithTheCallbacksName)
{
    const LogCapture log;
    quelm::CallGuard guard;
    EXPECT_FALSE(guard.run("T40AddFaxRecipient", [] { throw std::runtime_error("too\nlong"); }));
    EXPECT_EQ(guard.failures(), 1);
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "the component failed in T40AddFaxRecipient: too long");
    EXPECT_EQ(log.severities[0], quelm::Severity::error);
}

TEST(CallGuardTest, WhateverIsThrownIsCaught)
{
    const LogCapture log;
    quelm::CallGuard guard;
    EXPECT_FALSE(guard.run("T40AddFaxRecipient", [] { throw 7; }));
    EXPECT_EQ(guard.failures(), 1);
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_NE(log.messages[0].find("unknown kind"), std::string::npos);
}

TEST(CallGuardTest, AnActionRunsAheadOfEachCallButNotOfCallsWithinIt)
{
    const LogCapture log;
    quelm::CallGuard guard;
    std::string journal;
    guard.setBeforeCall([&journal] { journal += "before "; });
    guard.run("Outer", [&] {
        journal += "outer ";
        guard.run("Inner", [&] { journal += "inner "; });
    });
    guard.run("Failing", [] { throw 7; });
    guard.run("Last", [&] { journal += "last"; });
    EXPECT_EQ(journal, "before outer inner before before last");
}

} // namespace
