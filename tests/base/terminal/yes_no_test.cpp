// Answers to yes and no questions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/yes_no.h"

#include <gtest/gtest.h>

namespace {

TEST(YesNo, TakesTheLetterAndTheWord)
{
    EXPECT_TRUE(quelm::isYes("y"));
    EXPECT_TRUE(quelm::isYes("yes"));
    EXPECT_TRUE(quelm::isNo("n"));
    EXPECT_TRUE(quelm::isNo("no"));
}

TEST(YesNo, AYesIsNoNo)
{
    EXPECT_FALSE(quelm::isNo("y"));
    EXPECT_FALSE(quelm::isYes("n"));
}

TEST(YesNo, AnythingElseIsNeither)
{
    for (const char* answer : {"", "Y", "ye", "yes ", "ja", "j", "nein", "1"}) {
        EXPECT_FALSE(quelm::isYes(answer)) << answer;
        EXPECT_FALSE(quelm::isNo(answer)) << answer;
    }
}

} // namespace
