// Titles of jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/titles.h"

#include <gtest/gtest.h>

namespace quelm::device {
namespace {

TEST(Titles, OfACommentArePostScriptStringsOrPlain)
{
    EXPECT_EQ(titleOfComment(" (letter.ps)"), "letter.ps");
    EXPECT_EQ(titleOfComment(" letter.ps "), "letter.ps");
    EXPECT_EQ(titleOfComment(" (a (b) c)"), "a (b) c");
    EXPECT_EQ(titleOfComment(R"( (a\)b\\c\(d))"), R"(a)b\c(d)");
    EXPECT_EQ(titleOfComment(R"( (\344\0501\n\q\8))"), "\344(1\nq8");
    EXPECT_EQ(titleOfComment(" (\xCE\xB1)"), "\xCE\xB1");
    EXPECT_EQ(titleOfComment(""), "");
}

TEST(Titles, ThatDoNotEndAreWhatIsThere)
{
    EXPECT_EQ(titleOfComment(" (abc"), "abc");
    EXPECT_EQ(titleOfComment(R"( (abc\)"), "abc");
    EXPECT_EQ(titleOfComment(R"( (\77)"), "?");
}

TEST(Titles, OfPjlAreTheNameInQuotationMarks)
{
    EXPECT_EQ(nameAmongOptions(" NAME=\"letter.ps\""), "letter.ps");
    EXPECT_EQ(nameAmongOptions(" START=1 name = \"a b\" END=2"), "a b");
    EXPECT_EQ(nameAmongOptions(" DISPLAY=\"NAME=x\" NAME=\"y\""), "y");
    EXPECT_EQ(nameAmongOptions(" NAME=plain"), "plain");
    EXPECT_EQ(nameAmongOptions(" NAME=\"open"), "open");
    EXPECT_EQ(nameAmongOptions(" NAME NAME"), "");
    EXPECT_EQ(nameAmongOptions(" ;= \"NAME\" ,"), "");
    EXPECT_EQ(nameAmongOptions(""), "");
}

TEST(Titles, AQuotationMarkStandsAroundAValueAlone)
{
    for (const auto* options : {"", " NAME=\"a b\"", " NAME = \"\" DISPLAY=\"x\"", " NAME=plain"})
        EXPECT_TRUE(areQuotedWhole(options)) << options;
    for (const auto* options :
         {" NAME=\"a\"b\"", " NAME=\"a\"b\"c\"", " NAME=\"a", " NAME=a\"b\"", " \"NAME\""})
        EXPECT_FALSE(areQuotedWhole(options)) << options;
}

} // namespace
} // namespace quelm::device
