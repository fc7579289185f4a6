// Splitting the value of --to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipient_input.h"

#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

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

TEST(RecipientInput, NeedsANameAndANumber)
{
    for (const auto* value : {"Ann", "=555", "Ann=", "=", ""}) {
        const auto line = test::failureLine<UsageError>([&] { recipientFromOption(value); });
        EXPECT_NE(line.find("write NAME=NUMBER"), std::string::npos) << value;
    }
}

} // namespace
} // namespace quelm
