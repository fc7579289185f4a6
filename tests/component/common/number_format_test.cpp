// A number in a translated sentence: all that sprintf does with one integer, and nothing else.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/number_format.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>

struct Wording {
    const char* translation;
    const char* shown = nullptr; ///< null: the translation as it stands
};

static void PrintTo(const Wording& wording, std::ostream* out) { *out << wording.translation; }

class NumberFormatTest : public testing::TestWithParam<Wording> {};

INSTANTIATE_TEST_SUITE_P(AsSprintfWithOneInteger, NumberFormatTest,
                         testing::Values(Wording{"%d", "12"}, Wording{"%i weg?", "12 weg?"},
                                         Wording{"%3d", " 12"}, Wording{"%-4d|", "12  |"},
                                         Wording{"%+05i", "+0012"}, Wording{"% .4d", " 0012"},
                                         Wording{"%1$d", "12"}, Wording{"%1$d of %1$3i", "12 of  12"},
                                         Wording{"%u", "12"}, Wording{"%x", "c"}, Wording{"%#o", "014"},
                                         Wording{"%X%%", "C%"}, Wording{"%%d", "%d"}, Wording{"%.d", "12"}));

INSTANTIATE_TEST_SUITE_P(AnythingElse, NumberFormatTest,
                         testing::Values(Wording{"%s"}, Wording{"%n"}, Wording{"%d %n"}, Wording{"%d %d"},
                                         Wording{"%2$d"}, Wording{"%d %1$d"}, Wording{"%1$d %d"},
                                         Wording{"%*d"}, Wording{"%.*d"}, Wording{"%1$*1$d"}, Wording{"%ld"},
                                         Wording{"%hhd"}, Wording{"%c"}, Wording{"%f %d"},
                                         Wording{"%d, %%, %"}, Wording{"100%"}, Wording{"%5"}, Wording{"%1$"},
                                         Wording{"%0$d"}, Wording{"%d %99999d"},
                                         Wording{"%.99999999999999999999d"}, Wording{"%99999999999$d"},
                                         Wording{"%s %n 100% of %d, %x %5$n %"}, Wording{"%\xC3\xA4"}));

TEST_P(NumberFormatTest, IsShownWithTheNumberOrAsItStands)
{
    const Wording& wording = GetParam();
    EXPECT_EQ(withNumber(wording.translation, 12),
              wording.shown != nullptr ? wording.shown : wording.translation);
}

TEST(NumberFormat, ANumberBelowZeroIsShownAsTheConversionShowsIt)
{
    EXPECT_EQ(withNumber("%d %%", -1), "-1 %");
    EXPECT_EQ(withNumber("%5i", -1), "   -1");
    EXPECT_EQ(withNumber("%u", -1), "4294967295");
    EXPECT_EQ(withNumber("%x", -1), "ffffffff");
    EXPECT_EQ(withNumber("%d", std::numeric_limits<int>::min()), "-2147483648");
}

TEST(NumberFormat, RoomForAMessageIsEnough)
{
    EXPECT_EQ(withNumber("%999d", 1), std::string(998, ' ') + "1");
    EXPECT_EQ(withNumber("%.999d", -1), "-" + std::string(998, '0') + "1");
    EXPECT_EQ(withNumber("%1000d", 1), "%1000d");
}

TEST(NumberFormat, TextsOfOtherScriptsStandAsTheyAre)
{
    EXPECT_EQ(withNumber("\xD7\x9C\xD7\x9E\xD7\x97\xD7\x95\xD7\xA7 %d?", 3),
              "\xD7\x9C\xD7\x9E\xD7\x97\xD7\x95\xD7\xA7 3?");
    EXPECT_EQ(withNumber("", 3), "");
}
