// Where lines are broken.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/wrapped_text.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;

TEST(WrappedText, FillsLinesWithWholeWords)
{
    EXPECT_THAT(wrappedLines("one two three", 7), ElementsAre("one two", "three"));
    EXPECT_THAT(wrappedLines("one two three", 13), ElementsAre("one two three"));
    EXPECT_THAT(wrappedLines("one two three", 12), ElementsAre("one two", "three"));
}

TEST(WrappedText, LeavesNoBlanksAtTheEndsOfLines)
{
    EXPECT_THAT(wrappedLines("  one   two  ", 4), ElementsAre("one", "two"));
    EXPECT_THAT(wrappedLines("", 4), ElementsAre(""));
    EXPECT_THAT(wrappedLines(" ", 4), ElementsAre(""));
}

TEST(WrappedText, LeavesAWordThatIsTooWideOnALineOfItsOwn)
{
    EXPECT_THAT(wrappedLines("a --sender-organization b", 10),
                ElementsAre("a", "--sender-organization", "b"));
}

TEST(WrappedText, CountsColumnsRatherThanBytes)
{
    EXPECT_THAT(wrappedLines("äöü ßéè", 7), ElementsAre("äöü ßéè"));
    EXPECT_THAT(wrappedLines("שלום עולם", 9), ElementsAre("שלום עולם"));
    EXPECT_THAT(wrappedLines("e\u0301e\u0301 x", 4), ElementsAre("e\u0301e\u0301 x"));
}

TEST(WrappedText, BreaksScriptsThatAreWrittenWithoutBlanks)
{
    EXPECT_THAT(wrappedLines("把文件写成传真", 6), ElementsAre("把文件", "写成传", "真"));
    EXPECT_THAT(wrappedLines("写成。传真", 4), ElementsAre("写", "成。", "传真"));
    EXPECT_THAT(wrappedLines("写成 传真", 9), ElementsAre("写成 传真"));
}

} // namespace
} // namespace quelm
