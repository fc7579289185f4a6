// What the options of the command `outbox` become.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/outbox_options.h"

#include "driver/cli/command_line.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

#include <vector>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

OutboxRequest parsed(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), {"quelm-driver", "outbox"});
    const auto line = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    EXPECT_EQ(line.command, Command::outbox);
    return line.outbox;
}

std::string refusal(const std::vector<const char*>& arguments)
{
    return test::failureLine<UsageError>([&] { parsed(arguments); });
}

TEST(OutboxOptions, EachActionIsKnown)
{
    EXPECT_EQ(parsed({"list"}).action, OutboxAction::list);
    EXPECT_TRUE(parsed({"list", "--json"}).asJson);
    EXPECT_THAT(parsed({"show", "7"}).numbers, ElementsAre(7));
    EXPECT_TRUE(parsed({"show", "7", "--json"}).asJson);
    const auto cancelled = parsed({"cancel", "7", "3"});
    EXPECT_EQ(cancelled.action, OutboxAction::cancel);
    EXPECT_THAT(cancelled.numbers, ElementsAre(7, 3));
    const auto sent = parsed({"send", "7", "8", "--yes"});
    EXPECT_EQ(sent.action, OutboxAction::send);
    EXPECT_THAT(sent.numbers, ElementsAre(7, 8));
    EXPECT_TRUE(sent.yes);
    EXPECT_FALSE(parsed({"run"}).wait);
    EXPECT_TRUE(parsed({"run", "--wait"}).wait);
}

TEST(OutboxOptions, AJobIsSentAgainToOthersElsewhereAndOnACard)
{
    const auto again = parsed({"resend", "7", "--to", "Bob=2", "--group", "Sales", "--duplicates", "skip",
                               "--device", "fax.example", "--credit-card-file", "card"});
    EXPECT_EQ(again.action, OutboxAction::resend);
    EXPECT_THAT(again.numbers, ElementsAre(7));
    EXPECT_THAT(again.job.to, ElementsAre("Bob=2"));
    EXPECT_THAT(again.job.groups, ElementsAre("Sales"));
    EXPECT_EQ(again.job.duplicates, Duplicates::skip);
    EXPECT_EQ(again.job.device->host, "fax.example");
    EXPECT_EQ(again.job.creditCardFile, "card");
    EXPECT_FALSE(again.withoutCard);
    EXPECT_TRUE(parsed({"resend", "7", "--without-card"}).withoutCard);
}

TEST(OutboxOptions, WhatIsNoJobIsWrongUsage)
{
    for (const char* number : {"0", "-1", "1x", "", "99999999999"})
        EXPECT_THAT(refusal({"show", "--", number}), HasSubstr("is no number of a job")) << number;
    EXPECT_THAT(refusal({"send"}), HasSubstr("NUMBER is missing"));
    EXPECT_THAT(refusal({}), HasSubstr("outbox needs one of list|show|cancel|send|resend|run"));
    EXPECT_THAT(refusal({"resend", "1", "2"}), HasSubstr("one word too many"));
    EXPECT_THAT(parsed({"show", "1", "2"}).numbers, ElementsAre(1, 2));
    EXPECT_THAT(refusal({"resend", "1", "--credit-card", "4", "--without-card"}), HasSubstr("stands beside"));
    EXPECT_THAT(refusal({"resend", "1", "--resolution", "fine"}), HasSubstr("there is no option"));
}

} // namespace
} // namespace quelm
