// Tests of letters and their marks as one character.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/composed_text.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(ComposedText, HasLettersAndTheirMarksAsOneCharacter)
{
    EXPECT_EQ(composedText("Ju\u0308rgen"), "J\u00fcrgen");
    EXPECT_EQ(composedText("\u0391\u0301\u0438\u0306z\u0301"), "\u0386\u0439\u017a");
    EXPECT_EQ(composedText("e\u0302\u0303"), "\u1ec5") << "two marks";
    EXPECT_EQ(composedText("\u1112\u1161\u11ab\u1100\u1173\u11af"), "\ud55c\uae00") << "Korean syllables";
}

TEST(ComposedText, LeavesEveryOtherCharacterAsItIs)
{
    // Canonical equivalents: another form of a name's character, the Kelvin sign, the Ohm sign.
    for (const char* text :
         {"", "Ann", "\ufa19\u8c48\uf900", "\u212a \u2126 \u212b", "x\u0301", "\u0301", "\ud55c",
          "\u05e9\u05dc\u05d5\u05dd", "\U0001F468\u200d\U0001F469", "\u0915\u094d\u0937"})
        EXPECT_EQ(composedText(text), text);
}

} // namespace
} // namespace quelm
