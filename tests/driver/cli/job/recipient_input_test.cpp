// Splitting the value of --to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipient_input.h"

#include "driver/store/name_checks.h"
#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace quelm {
namespace {

TEST(RecipientInput, SplitsNameAndNumber)
{
    const auto recipient = recipientFromOption("Ann=555-1234");
    EXPECT_EQ(recipient.name, "Ann");
    EXPECT_EQ(recipient.number, "555-1234");
    EXPECT_EQ(recipient.origin, "--to Ann=555-1234");
}

TEST(RecipientInput, SplitsAtTheLastEqualsSign)
{
    const auto recipient = recipientFromOption("A=B=555");
    EXPECT_EQ(recipient.name, "A=B");
    EXPECT_EQ(recipient.number, "555");
}

TEST(RecipientInput, ANumberAloneIsItsOwnName)
{
    const auto recipient = recipientFromOption("+1 (555) 123-4567");
    EXPECT_EQ(recipient.name, "1 555 123-4567");
    EXPECT_EQ(recipient.number, "+1 (555) 123-4567");
    EXPECT_EQ(recipient.origin, "--to +1 (555) 123-4567");
    EXPECT_TRUE(recipient.isTyped);
    for (const auto& [number, name] : {std::pair{"555-1234", "555-1234"},
                                       {"030/12", "030 12"},
                                       {"*70,#1", "70 1"},
                                       {"(0)", "0"},
                                       {"12(", "12"}}) {
        EXPECT_EQ(nameOfNumber(number), name);
        EXPECT_FALSE(problemWithName(nameOfNumber(number), "- .")) << "what the dialog takes as a name";
    }
    EXPECT_EQ(nameOfNumber(std::string(30, '1') + " 23").size(), 30U) << "31 characters, without the blank";
}

TEST(RecipientInput, NeedsANameAndANumberOrANumberAlone)
{
    for (const auto* value : {"Ann", "=555", "Ann=", "=", "", "555=", "+", "Ann 555", "5\n5"}) {
        const auto line = test::failureLine<UsageError>([&] { recipientFromOption(value); });
        EXPECT_NE(line.find("write NAME=NUMBER"), std::string::npos) << value;
    }
}

} // namespace
} // namespace quelm
