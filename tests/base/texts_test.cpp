// What programs ask of texts, and do to them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/texts.h"

#include <gtest/gtest.h>

#include <string_view>

namespace quelm {
namespace {

TEST(Trimmed, LeavesOutTheWhiteSpaceAroundAText)
{
    EXPECT_EQ(trimmed("  fax.example:9100\r\n"), "fax.example:9100");
    EXPECT_EQ(trimmed("\f\va \t b\v\f"), "a \t b");
    EXPECT_EQ(trimmed("a b"), "a b");
    EXPECT_EQ(trimmed(" \t\n"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(OneLine, PutsBlanksInPlaceOfControlCharacters)
{
    EXPECT_EQ(oneLine("two\r\nlines\tand \x1b[31mcolour\x7f"), "two  lines and  [31mcolour ");
    EXPECT_EQ(oneLine("Zo\u00eb"), "Zo\u00eb");
}

TEST(IsUtf8, TakesWholeCharactersAndNoNul)
{
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("Zoë 田中"));
    EXPECT_FALSE(isUtf8("Zo\xeb"));
    EXPECT_FALSE(isUtf8("\xc3"));
    EXPECT_FALSE(isUtf8("\xc0\xaf"));
    EXPECT_FALSE(isUtf8("\xed\xa0\x80"));
    EXPECT_FALSE(isUtf8(std::string_view("a\0b", 3)));
}

TEST(ControlCharacters, AreFoundAnywhereInAText)
{
    EXPECT_FALSE(hasControlCharacter("Zoë, 12 (x)"));
    for (const auto* text : {"a\nb", "a\tb", "\x1b[0m", "\x7f"})
        EXPECT_TRUE(hasControlCharacter(text));
}

} // namespace
} // namespace quelm
