// Cards that stand where nobody looks for them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/card_digits.h"

#include <gtest/gtest.h>

namespace quelm::device {
namespace {

TEST(CardDigits, OfALongRowAreStars)
{
    EXPECT_EQ(withoutCards("4000123412341234"), "****************");
    EXPECT_EQ(withoutCards("a 4000 1234-1234 1234 b"), "a **** ****-**** **** b");
    EXPECT_EQ(withoutCards("OID_ATT_CREDIT_CARD_4000_1234.1234,1234x"),
              "OID_ATT_CREDIT_CARD_****_****.****,****x");
    EXPECT_EQ(withoutCards("400012341234"), "************");
}

TEST(CardDigits, OfAShortRowStay)
{
    EXPECT_EQ(withoutCards("40001234123"), "40001234123");
    EXPECT_EQ(withoutCards("400012x412341234"), "400012x412341234");
    EXPECT_EQ(withoutCards("\"55\"; \"66\" 0|1|2"), "\"55\"; \"66\" 0|1|2");
    EXPECT_EQ(withoutCards(""), "");
}

TEST(CardDigits, AreStarsAlsoWhereAPartIsCut)
{
    const std::string before(50, 'x');
    EXPECT_EQ(shownPart(before + "4000123412341234").find_first_of("0123456789"), std::string::npos);
    EXPECT_EQ(shownPart("4000123412341234", 5).find_first_of("0123456789"), std::string::npos);
}

} // namespace
} // namespace quelm::device
