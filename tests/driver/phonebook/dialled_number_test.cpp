// Numbers of address books, and what is dialled.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/dialled_number.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quelm {
namespace {

TEST(DialledNumber, WhatPhonebooksKeepStaysAsItIs)
{
    for (const auto* number : {"+49 (30) 12-34/5", "555.1234", "*31#555,,12", "", "0"}) {
        EXPECT_EQ(dialledNumber(number).number, number);
        EXPECT_FALSE(dialledNumber(number).hasExtension) << number;
    }
}

TEST(DialledNumber, AnExtensionIsDialledBehindAPause)
{
    for (const auto* number :
         {"tel:+1-555-1234;ext=12", "+1-555-1234 ext. 12", "+1-555-1234x12", "+1-555-1234, Ext 12",
          "TEL:+1-555-1234;phone-context=a;EXT=12;x=y", "+1-555-1234 Durchwahl: 12"}) {
        EXPECT_EQ(dialledNumber(number).number, "+1-555-1234,12") << number;
        EXPECT_TRUE(dialledNumber(number).hasExtension) << number;
    }
}

TEST(DialledNumber, SignsOfOtherWritingBecomeOurs)
{
    const std::vector<std::pair<std::string, std::string>> numbers{
        {"\u202a+44\u00a020 7946\u20110018\u202c", "+44 20 7946-0018"},
        {"\uff10\uff13\uff08\uff15\uff15\uff09", "03(55)"},
        {" 555\u20131234 ", "555-1234"},
        {"tel:%2B1%20555", "+1 555"},
        {"555p12W3", "555,12,3"}};
    for (const auto& [written, dialled] : numbers)
        EXPECT_EQ(dialledNumber(written).number, dialled);
}

TEST(DialledNumber, WhatIsNoNumberStaysToBeRefused)
{
    for (const auto* text : {"none", "ext 12", "ask Ann 12", "555 x", "x12", "\xff",
                             "1\xff"
                             "2"})
        EXPECT_EQ(dialledNumber(text).number, text);
}

} // namespace
} // namespace quelm
