// Dotted numbers: what names an object and what does not.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/object_identifier.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using quelm::parseObjectIdentifier;

/// `count` numbers, 1.3.1.1.1...
std::string ofNumbers(int count)
{
    std::string text = "1.3";
    for (int i = 2; i < count; ++i)
        text += ".1";
    return text;
}

TEST(ObjectIdentifierTest, NumbersAreReadFromTheRoot)
{
    EXPECT_EQ(parseObjectIdentifier("1.3.6.1.2.1.1.1.0"),
              (quelm::ObjectIdentifier{1, 3, 6, 1, 2, 1, 1, 1, 0}));
    EXPECT_EQ(parseObjectIdentifier("0.0"), (quelm::ObjectIdentifier{0, 0}));
    EXPECT_EQ(parseObjectIdentifier("1.3.4294967295"), (quelm::ObjectIdentifier{1, 3, 4294967295U}));
}

TEST(ObjectIdentifierTest, ADotMayStandAhead)
{
    EXPECT_EQ(parseObjectIdentifier(".1.3.6"), (quelm::ObjectIdentifier{1, 3, 6}));
    EXPECT_FALSE(parseObjectIdentifier("..1.3.6"));
}

TEST(ObjectIdentifierTest, OtherTextsAreNone)
{
    for (const char* text : {"", ".", "1", "abc", "1.3.x", "1.3.", "1..3", "1.3 .6", " 1.3", "1.3\n", "1.-3",
                             "1.+3", "1.0x3", "1.3,6", "sysDescr.0"})
        EXPECT_FALSE(parseObjectIdentifier(text)) << text;
}

TEST(ObjectIdentifierTest, NumbersBeyond32BitsAreNone)
{
    EXPECT_FALSE(parseObjectIdentifier("1.3.4294967296"));
    EXPECT_FALSE(parseObjectIdentifier("1.3.99999999999999999999999999"));
}

TEST(ObjectIdentifierTest, TheFirstTwoNumbersTravelAsOne)
{
    EXPECT_TRUE(parseObjectIdentifier("1.39"));
    EXPECT_FALSE(parseObjectIdentifier("0.40"));
    EXPECT_FALSE(parseObjectIdentifier("1.40"));
    EXPECT_TRUE(parseObjectIdentifier("2.4294967215"));
    EXPECT_FALSE(parseObjectIdentifier("2.4294967216"));
    EXPECT_FALSE(parseObjectIdentifier("3.1"));
}

TEST(ObjectIdentifierTest, ANameHasAtMost128Numbers)
{
    EXPECT_TRUE(parseObjectIdentifier(ofNumbers(128)));
    EXPECT_FALSE(parseObjectIdentifier(ofNumbers(129)));
    EXPECT_FALSE(parseObjectIdentifier(ofNumbers(300)));
}

TEST(ObjectIdentifierTest, WhatWasReadIsWrittenTheSame)
{
    EXPECT_EQ(quelm::dotted({1, 3, 6, 4294967295U}), "1.3.6.4294967295");
    EXPECT_EQ(quelm::dotted({}), "");
}

} // namespace
