// Tests of parting the exchange's file in groups and keys.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange_lines.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quelm::device::tests {
namespace {

std::vector<ExchangeGroup> read(const std::string& text)
{
    return readExchangeLines(text, [](const std::string& problem) { throw std::runtime_error(problem); });
}

std::string refusal(const std::string& text)
{
    try {
        (void)read(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "(taken)";
}

TEST(ExchangeLinesTest, GroupsAndKeysStandAsTheyAreInTheFile)
{
    const auto groups = read("\xEF\xBB\xBF# a comment\r\n\n [exchange] \r\n\tothers = no-answer\r\n"
                             "identity=+1 = 2 # 3\n  # another\n[number 555 ]\n[]\nkey [x] = a\\b");
    ASSERT_EQ(groups.size(), 3U);
    EXPECT_EQ(groups[0].name, "exchange");
    ASSERT_EQ(groups[0].entries.size(), 2U);
    EXPECT_EQ(groups[0].entries[0].key, "others");
    EXPECT_EQ(groups[0].entries[0].value, "no-answer");
    EXPECT_EQ(groups[0].entries[1].value, "+1 = 2 # 3");
    EXPECT_EQ(groups[1].name, "number 555");
    EXPECT_TRUE(groups[1].entries.empty());
    EXPECT_EQ(groups[2].name, "");
    EXPECT_EQ(groups[2].entries[0].key, "key [x]");
    EXPECT_EQ(groups[2].entries[0].value, "a\\b");
    EXPECT_TRUE(read("").empty());
}

TEST(ExchangeLinesTest, ALineThatIsNothingIsNamedWithItsNumber)
{
    const std::string end = ", which is no group in brackets, no key with \"=\" and a value, and no comment "
                            "behind \"#\"";
    EXPECT_EQ(refusal("[number 1]\n\nbusy\n"), "has \"busy\" in line 3" + end);
    EXPECT_EQ(refusal("[number 1\n"), "has \"[number 1\" in line 1" + end);
    EXPECT_EQ(refusal("[number 1] busy\n"), "has \"[number 1] busy\" in line 1" + end);
    EXPECT_EQ(refusal("= 1\n"), "has \"= 1\" in line 1" + end);
    EXPECT_EQ(refusal("\n\xFF\n"), "is no UTF-8 text in line 2; save it as UTF-8");
    EXPECT_EQ(refusal(std::string("# \0\n", 4)), "is no UTF-8 text in line 1; save it as UTF-8");
    EXPECT_LT(refusal(std::string(100'000, 'x')).size(), 300U);
}

TEST(ExchangeLinesTest, AKeyStandsBelowAGroup)
{
    EXPECT_EQ(refusal("# first\nothers = fax\n"),
              "has \"others = fax\" in line 2 ahead of any group; write [exchange] or [number PATTERN] "
              "above it");
}

TEST(ExchangeLinesTest, NothingStandsTwiceAndNoValueIsEmpty)
{
    EXPECT_EQ(refusal("[a]\n[b]\n[ a ]\n"), "has the group [a] twice; join the two");
    EXPECT_EQ(refusal("[a]\nb = 1\nb=2\n"), "has [a] b twice; remove one of the lines");
    EXPECT_EQ(refusal("[a]\nb = \n"), "has no value at [a] b; write one or remove the line");
    EXPECT_EQ(read("[a]\nb = 1\n[c]\nb = 1\n").size(), 2U);
}

} // namespace
} // namespace quelm::device::tests
