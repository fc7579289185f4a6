// How a credit card is named.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/card_remark.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(CardRemark, TellsTheLastFourDigitsAlone)
{
    EXPECT_EQ(cardRemark("4111-1111 1111 2345"), "the credit card ending in 2345 is charged");
    EXPECT_EQ(cardRemark("4111 1111 1111 23-4,5#"), "the credit card ending in 2345 is charged");
}

TEST(CardRemark, TellsNoDigitOfAShortNumber)
{
    EXPECT_EQ(cardRemark("1234567"), "a credit card is charged");
    EXPECT_EQ(cardRemark("#"), "a credit card is charged");
    EXPECT_EQ(cardRemark(""), "");
}

TEST(CardRemark, TheDigitsAloneAreThoseOfTheRemark)
{
    EXPECT_EQ(cardDigits("4111-1111 1111 2345"), "2345");
    EXPECT_EQ(cardDigits("1234567"), "");
    EXPECT_EQ(cardDigits(""), "");
}

} // namespace
} // namespace quelm
