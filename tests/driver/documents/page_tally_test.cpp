// Tests of counting the pages of PostScript that Ghostscript writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/page_tally.h"

#include <gtest/gtest.h>

#include <string>

namespace quelm {
namespace {

PageTally tallyOf(const std::string& text, std::size_t pieceSize)
{
    PageTally tally;
    for (std::size_t position = 0; position < text.size(); position += pieceSize)
        tally.append(std::string_view(text).substr(position, pieceSize));
    return tally;
}

TEST(PageTallyTest, PagesAreCountedWhereverThePiecesPart)
{
    const std::string text = "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndProlog\n%%Page: 1 1\nq Q\n\n%%Page: 2 2\n" +
                             std::string(200, 'x') + "\n%%Trailer\n%%EOF\n";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        const PageTally tally = tallyOf(text, size);
        EXPECT_EQ(tally.pages(), 2) << size;
        EXPECT_TRUE(tally.atEnd()) << size;
    }
}

TEST(PageTallyTest, PagesThatAreNumberedOtherwiseAreNone)
{
    EXPECT_EQ(tallyOf("%%Page: 2 2\n%%Page: 1 1\n%%Page: 1 1\n%%Page: (x) 2\n %%Page: 2 2\n", 7).pages(), 1);
    EXPECT_EQ(tallyOf("%%Page: 1 1" + std::string(100, ' ') + "\n", 7).pages(), 0);
}

TEST(PageTallyTest, WhatIsCutOffIsNotAtItsEnd)
{
    const std::string text = "%%Page: 1 1\nshowpage\n%%Trailer\n%%EOF";
    EXPECT_TRUE(tallyOf(text, 5).atEnd());
    EXPECT_TRUE(tallyOf(text + "\n\n", 5).atEnd());
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_FALSE(tallyOf(text.substr(0, size), 5).atEnd()) << size;
    EXPECT_FALSE(tallyOf(text + "\nmore", 5).atEnd());
    EXPECT_FALSE(tallyOf(text + "\nmore\n", 5).atEnd());
}

} // namespace
} // namespace quelm
