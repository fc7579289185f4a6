// What texts look like to the library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"
#include "driver/phonebook/charset_guesser.h"

#include <gtest/gtest.h>

namespace {

std::string guess(std::string_view text) { return quelm::part<quelm::CharsetGuesser>().guess(text); }

TEST(UchardetGuesser, KnowsJapaneseAndRussianByTheirBytes)
{
    // "name,number", and two names behind it.
    EXPECT_EQ(guess("name,number\n\x93\x63\x92\x86\x91\xbe\x98\x59,1\n\x97\xe9\x96\xd8\x88\xea\x98\x59,2\n"),
              "SHIFT_JIS");
    EXPECT_EQ(guess("name\n\xc8\xe2\xe0\xed \xcf\xe5\xf2\xf0\xee\xe2\n\xcc\xe0\xf0\xe8\xff "
                    "\xd1\xe8\xe4\xee\xf0\xee\xe2\xe0\n"),
              "WINDOWS-1251");
}

TEST(UchardetGuesser, AnEmptyTextLooksLikeNothing) { EXPECT_EQ(guess(""), ""); }

} // namespace
