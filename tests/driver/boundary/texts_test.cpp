// Messages about names and numbers, token lists and formatted copies.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/texts.h"

#include "host/calls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using testing::HasSubstr;

int tokenNumber(const char* list, const char* token) { return host::tokenNumber(list, token, true); }

} // namespace

TEST(ValidateName, ReturnsAMessageOrNull)
{
    EXPECT_EQ(host::validateName("Anne", "- ."), nullptr);
    const auto message = host::validateName("Anne@home", "- .");
    ASSERT_NE(message, nullptr);
    EXPECT_THAT(message.get(), HasSubstr("must not contain \"@\""));
}

TEST(ValidateName, AcceptsTheMarksOfNamesInAPhonebook)
{
    EXPECT_EQ(host::validateName("Gal\u00b7la", "- ."), nullptr);
    EXPECT_EQ(host::validateName("\u05d1\u05df\u05be\u05d3\u05d5\u05d3", "- ."), nullptr);
}

TEST(ValidateName, TakesNullForAnEmptyText)
{
    EXPECT_EQ(ValidateName(host::in("Anne"), nullptr), nullptr);
    EXPECT_EQ(ValidateName(nullptr, host::in("-")), nullptr);
}

TEST(ValidatePhoneNumber, ReturnsAMessageOrNull)
{
    EXPECT_EQ(host::validatePhoneNumber("+49 30", "- "), nullptr);
    const auto message = host::validatePhoneNumber("30x", "- ");
    ASSERT_NE(message, nullptr);
    EXPECT_THAT(message.get(), HasSubstr("must not contain \"x\""));
}

TEST(SaveString, PutsTheArgumentInItsPlace)
{
    EXPECT_STREQ(host::saveString("%s", "Anne").get(), "Anne");
    EXPECT_STREQ(host::saveString("<%s> 100%%", "a%sb").get(), "<a%sb> 100%");
    EXPECT_STREQ(host::saveString("no place", "Anne").get(), "no place");
}

TEST(SaveString, DoesNotTakeAFurtherPlaceForAnArgument)
{
    EXPECT_STREQ(host::saveString("%s %s %n %", "a").get(), "a %s %n %");
    EXPECT_STREQ(std::unique_ptr<char[]>(SaveString(host::in("[%s]"), nullptr)).get(), "[]");
}

TEST(SaveString, KeepsALongTextWhole)
{
    const std::string longText(70000, 'x');
    EXPECT_EQ(host::saveString("%s", longText.c_str()).get(), longText);
}

TEST(GetTokenNum, CountsFromOne)
{
    EXPECT_EQ(tokenNumber(",A,B,C,", "A"), 1);
    EXPECT_EQ(tokenNumber(",A,B,C,", "C"), 3);
    EXPECT_EQ(tokenNumber("A,B,C", "C"), 3);
    EXPECT_EQ(tokenNumber(",Send Time,LanFax Cover,", "LanFax Cover"), 2);
}

TEST(GetTokenNum, MatchesWholeTokensByteForByte)
{
    EXPECT_EQ(tokenNumber(",Alpha,B,", "Al"), 0);
    EXPECT_EQ(tokenNumber(",Alpha,B,", "lpha"), 0);
    EXPECT_EQ(tokenNumber(",Alpha,B,", "alpha"), 0);
    EXPECT_EQ(tokenNumber(",Alpha,B,", "Alpha "), 0);
    EXPECT_EQ(tokenNumber(",Al,Alpha,", "Alpha"), 2);
}

TEST(GetTokenNum, AnswersZeroForWhatIsNoToken)
{
    EXPECT_EQ(tokenNumber(",A,B,", ""), 0);
    EXPECT_EQ(tokenNumber(",A,B,", "A,B"), 0);
    EXPECT_EQ(tokenNumber("", "A"), 0);
    EXPECT_EQ(tokenNumber(",", "A"), 0);
    EXPECT_EQ(tokenNumber(nullptr, "A"), 0);
    EXPECT_EQ(tokenNumber(",A,", nullptr), 0);
}

TEST(GetTokenNum, CountsAnEmptyPlace) { EXPECT_EQ(tokenNumber(",A,,C,", "C"), 3); }

TEST(GetTokenNum, DoesNotChangeWithTheFlag)
{
    for (const char* token : {"A", "b", "B", "x"})
        EXPECT_EQ(GetTokenNum(host::in(",A,B,"), host::in(token), ',', true),
                  GetTokenNum(host::in(",A,B,"), host::in(token), ',', false));
}

TEST(GetTokenNum, TakesAnyDelimiter)
{
    EXPECT_EQ(GetTokenNum(host::in(";A;B;"), host::in("B"), ';', true), 2);
}

TEST(Itoa, WritesEveryNumber)
{
    EXPECT_STREQ(itoa(0), "0");
    EXPECT_STREQ(itoa(2147483647), "2147483647");
    EXPECT_STREQ(itoa(-2147483647 - 1), "-2147483648");
}
