// Tests of the sample of an exchange's file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange.h"
#include "device/exchange/exchange_plan.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>

namespace quelm::device::tests {
namespace {

TEST(SampleExchangeTest, TheSampleChangesNothing)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(writeSampleExchange(folder / "exchange.conf"));
    EXPECT_EQ(std::filesystem::status(folder / "exchange.conf").permissions(), std::filesystem::perms(0600));
    const ExchangePlan plan = readExchangePlan(folder / "exchange.conf");
    const ExchangePlan without;
    EXPECT_EQ(plan.outsideLine, without.outsideLine);
    EXPECT_EQ(plan.asksForCards, without.asksForCards);
    EXPECT_EQ(plan.others, without.others);
    EXPECT_EQ(plan.identity, without.identity);
    EXPECT_TRUE(plan.numbers.empty());
}

TEST(SampleExchangeTest, EveryLineOfTheSampleMayBeTakenOver)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(writeSampleExchange(folder / "sample"));
    // Comments have a blank behind their sign, and what may be taken over has none.
    const std::string all = std::regex_replace(contentOf(folder / "sample"), std::regex("\n#(?! )"), "\n");
    const ExchangePlan plan = readExchangePlan(writeFile(folder / "all", all));
    EXPECT_EQ(plan.numbers.size(), 6U);
    EXPECT_EQ(plan.identity, "+1 555 010 0000");
}

TEST(SampleExchangeTest, WhatIsThereStays)
{
    const TemporaryFolder folder;
    writeFile(folder / "exchange.conf", "[number 1]\n");
    EXPECT_FALSE(writeSampleExchange(folder / "exchange.conf"));
    EXPECT_EQ(contentOf(folder / "exchange.conf"), "[number 1]\n");
}

} // namespace
} // namespace quelm::device::tests
