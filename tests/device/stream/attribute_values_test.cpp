// What the values of attributes may be.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/attribute_values.h"

#include <gtest/gtest.h>

namespace quelm::device {
namespace {

TEST(AttributeValues, AreComparedLetterByLetter)
{
    EXPECT_EQ(truthOf("TRUE"), true);
    EXPECT_EQ(truthOf("FALSE"), false);
    for (const auto* other : {"true", "TRUE ", "1", ""})
        EXPECT_EQ(truthOf(other), std::nullopt) << other;
}

TEST(AttributeValues, ResolutionsAndSpeedsAreThoseOfTheTables)
{
    auto resolution = Resolution::fine;
    EXPECT_TRUE(readResolution("0", resolution));
    EXPECT_EQ(resolution, Resolution::standard);
    EXPECT_TRUE(readResolution("1", resolution));
    EXPECT_EQ(resolution, Resolution::fine);
    EXPECT_TRUE(readResolution("2", resolution));
    EXPECT_EQ(resolution, Resolution::superfine);
    EXPECT_FALSE(readResolution("3", resolution));
    EXPECT_FALSE(readResolution("01", resolution));
    EXPECT_EQ(resolution, Resolution::superfine);

    auto speed = Speed::automatic;
    EXPECT_TRUE(readSpeed("OID_VAL_FAX_TYPE_G3_FORCED_4800", speed));
    EXPECT_EQ(speed, Speed::forced4800);
    EXPECT_TRUE(readSpeed("OID_VAL_FAX_TYPE_G3_14400", speed));
    EXPECT_EQ(speed, Speed::upTo14400);
    EXPECT_TRUE(readSpeed("OID_VAL_FAX_TYPE_G3_AUTO", speed));
    EXPECT_EQ(speed, Speed::automatic);
    EXPECT_FALSE(readSpeed("OID_VAL_FAX_TYPE_G3", speed));
}

TEST(AttributeValues, NumbersAreWhatCanBeDialled)
{
    for (const auto* number :
         {"5550104477", "+49.30*1#2,3/4", "9,555", "9 1-2,555", "*#9,,1", "1", ",1", "1,"})
        EXPECT_EQ(problemOfNumber(number), "") << number;
}

TEST(AttributeValues, OtherNumbersAreRefusedWithTheirSign)
{
    EXPECT_EQ(problemOfNumber(""), "the number \"\" has no digit");
    EXPECT_EQ(problemOfNumber("*#"), "the number \"*#\" has no digit");
    EXPECT_EQ(problemOfNumber("555-1234"),
              "the number \"555-1234\" holds \"-\", which no number to dial can");
    EXPECT_EQ(problemOfNumber("9,555 12"),
              "the number \"9,555 12\" holds \" \", which no number to dial can");
    EXPECT_EQ(problemOfNumber("5\"5"), "the number \"5\"5\" holds \"\"\", which no number to dial can");
    EXPECT_EQ(problemOfNumber("5ä"), "the number \"5ä\" holds \"ä\", which no number to dial can");
    // A plus, a point and a slash belong to the number, not to a prefix.
    EXPECT_EQ(problemOfNumber("9/ 1,5"), "");
    EXPECT_EQ(problemOfNumber("(9),5"), "the number \"(9),5\" holds \"(\", which no number to dial can");
    EXPECT_EQ(problemOfNumber(std::string_view("5\0", 2)),
              "the number \"5 \" holds 0x00, which no number to dial can");
}

TEST(AttributeValues, MailboxesHaveOneToFourSigns)
{
    for (const auto* mailbox : {"1", "12aB", "*#", "zzzz"})
        EXPECT_TRUE(isMailbox(mailbox)) << mailbox;
    for (const auto* other : {"", "12345", "1 2", "ä", "1-2", "\""})
        EXPECT_FALSE(isMailbox(other)) << other;
}

TEST(AttributeValues, CardsHaveDigitsAndWhatPartsThem)
{
    for (const auto* card : {"4000", "4000 1234-12,*#", "1"})
        EXPECT_TRUE(isCard(card)) << card;
    for (const auto* other : {"", " ", "-*#", "4000x", "4000\"", "+1"})
        EXPECT_FALSE(isCard(other)) << other;
}

TEST(AttributeValues, KeysAreCountedAsTheyArePressed)
{
    EXPECT_EQ(keyCount(""), 0U);
    EXPECT_EQ(keyCount("9,+49 30-1.2/3*#"), 13U);
    EXPECT_EQ(problemOfNumber("+" + std::string(98, '5')), "");
    EXPECT_EQ(problemOfNumber("+" + std::string(99, '5')),
              "the number has 101 keys, and a telephone number 100 at most");
}

} // namespace
} // namespace quelm::device
