// Rows of texts for a terminal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/columns.h"

#include <gtest/gtest.h>

namespace {

TEST(AlignedColumns, PadsToTheWidestOfAColumn)
{
    EXPECT_EQ(quelm::alignedColumns({{"Ann", "1"}, {"Cornelius", "22"}}), "Ann        1\nCornelius  22\n");
}

TEST(AlignedColumns, CountsWhatATerminalShowsNotBytes)
{
    EXPECT_EQ(quelm::alignedColumns({{"Zoë", "1"}, {"Anne", "2"}}), "Zoë   1\nAnne  2\n");
    EXPECT_EQ(quelm::alignedColumns({{"日本", "1"}, {"Anne", "2"}}), "日本  1\nAnne  2\n");
    EXPECT_EQ(quelm::widthOf("e\u0301"), 1U);
}

TEST(AlignedColumns, KeepsThePlaceOfAnEmptyCellAndEndsWithoutBlanks)
{
    EXPECT_EQ(quelm::alignedColumns({{"Ann", "", "1"}, {"Bob", "2", ""}, {"Cid", "", ""}}),
              "Ann  -  1\nBob  2\nCid\n");
    EXPECT_EQ(quelm::alignedColumns({}), "");
}

TEST(AlignedColumns, ShowsEachRowAsOneLineOfText)
{
    EXPECT_EQ(quelm::alignedColumns({{"a\nb", "\xff"}}), "a b  \ufffd\n");
}

} // namespace
