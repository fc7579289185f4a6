// The cover page's two texts as they stand: sizes, the template's slots, the page program's outline.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "output/cover_page.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

int occurrences(const std::string& text, const std::string& part)
{
    int count = 0;
    for (std::size_t found = text.find(part); found != std::string::npos; found = text.find(part, found + 1))
        ++count;
    return count;
}

/// Looks for the parts one behind the other, each on a line of its own.
void expectLinesInOrder(const std::string& text, const std::vector<std::string>& lines)
{
    std::size_t position = 0;
    for (const std::string& line : lines) {
        const std::size_t found = text.find('\n' + line + '\n', position);
        ASSERT_NE(found, std::string::npos) << line;
        position = found + line.size() + 1;
    }
}

TEST(CoverPageText, HasTheSizesThatHostsRelyOn)
{
    EXPECT_EQ(std::strlen(coverPageHeaderText), 593U);
    EXPECT_EQ(std::strlen(coverPageTrailerText), 12848U);
    EXPECT_EQ(sizeof coverPageHeaderText, 594U);
    EXPECT_EQ(sizeof coverPageTrailerText, 12849U);
}

TEST(CoverPageText, FillsTheHeaderTemplateInTheDocumentedOrder)
{
    std::vector<char> filled(1024);
    const int length = std::snprintf(filled.data(), filled.size(), coverPageHeaderText, "r-name", "r-company",
                                     "r-phone", "r-fax", "r-email", "s-name", "s-company", "s-phone", "s-fax",
                                     "s-email", " (a note) ", "2026", "07", "08", "00", "05");
    ASSERT_GT(length, 0);
    EXPECT_STREQ(filled.data(), "\n"
                                "%!PS-Adobe-3.0\n"
                                "%%Page: FaxCover 1\n"
                                "%%BeginPageSetup\n"
                                "     8 dict begin\n"
                                "     /QLMFaxCoverSheetParameters <<\n"
                                "       /RecipientName    (r-name)\n"
                                "       /RecipientCompany (r-company)\n"
                                "       /RecipientPhone   (r-phone)\n"
                                "       /RecipientFax     (r-fax)\n"
                                "       /RecipientEmail   (r-email)\n"
                                "       /SenderName       (s-name)\n"
                                "       /SenderCompany    (s-company)\n"
                                "       /SenderPhone      (s-phone)\n"
                                "       /SenderFax        (s-fax)\n"
                                "       /SenderEmail      (s-email)\n"
                                "       /CoverNote        [ (a note) ]\n"
                                "       /Year             2026\n"
                                "       /Month            07\n"
                                "       /MonthDay         08\n"
                                "       /Hour             00\n"
                                "       /Minute           05\n"
                                "     >> def\n");
}

TEST(CoverPageText, HasSixteenSlotsAndOtherwiseOnlyDoubledPercentSigns)
{
    const std::string header = coverPageHeaderText;
    EXPECT_EQ(occurrences(header, "%s"), 16);
    std::string rest = header;
    for (const std::string part : {"%s", "%%"})
        for (std::size_t found = rest.find(part); found != std::string::npos; found = rest.find(part))
            rest.erase(found, part.size());
    EXPECT_EQ(rest.find('%'), std::string::npos);
}

TEST(CoverPageText, LaysTheTrailerOutInTheDocumentedOrder)
{
    expectLinesInOrder(coverPageTrailerText, {
                                                 "/QLMFaxCoverSheetDetails <<",
                                                 ">> def",
                                                 "/pgsave save def",
                                                 "/Helvetica-ISOLatin1 exch definefont pop",
                                                 "% Proc Name:   strfill",
                                                 "% Proc Name:   Digit",
                                                 "% Proc Name:   IntegerLength",
                                                 "% Proc Name:   IntToStr",
                                                 "% Proc Name:   FormatInteger",
                                                 "% Proc Name:   FormatDateTime",
                                                 "% Proc Name:   BeginClip",
                                                 "% Proc Name:   EndClip",
                                                 "% Proc Name:   PrintString",
                                                 "% Proc Name:   PrintString2",
                                                 "% Proc Name:   PrintStringList",
                                                 "% Proc Name:   PrintNumber",
                                                 "% Proc Name:   PrintLine",
                                                 "%%EndPageSetup",
                                                 "% Proc Name:   PrintFrame",
                                                 "%%EndPageSetup",
                                                 "QLMFaxCoverSheetDetails begin",
                                                 "showpage",
                                                 "pgsave restore",
                                                 "end",
                                                 "%%PageTrailer",
                                                 "%% End Fax Cover Sheet Template",
                                             });
}

TEST(CoverPageText, MarksTheBlockThatTranslatorsChange)
{
    const std::string trailer = coverPageTrailerText;
    const std::size_t begin = trailer.find("Begin Translation");
    const std::size_t end = trailer.find("End Translation");
    ASSERT_NE(begin, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    const std::string block = trailer.substr(begin, end - begin);
    for (const char* text : {"(Fax Cover Sheet)", "(To:)", "(From:)", "(Name:)", "(Organization:)",
                             "(Voice:)", "(Fax:)", "(E-Mail:)", "(Date:)", "(Note:)", "(AM)", "(PM)"})
        EXPECT_NE(block.find(text), std::string::npos) << text;
}

TEST(CoverPageText, DescribesEveryProcedure)
{
    const std::string trailer = coverPageTrailerText;
    EXPECT_EQ(occurrences(trailer, "% Proc Name: "), 14);
    EXPECT_EQ(occurrences(trailer, "% Synopsis: "), 14);
    EXPECT_EQ(occurrences(trailer, "% Description: "), 14);
}

TEST(CoverPageText, KeepsTheEndOfThePageSetupTwice)
{
    EXPECT_EQ(occurrences(coverPageTrailerText, "%%EndPageSetup"), 2);
}

TEST(CoverPageText, EndsWithTheClosingCommentSoThatADocumentMayFollowOnALineOfItsOwn)
{
    const std::string trailer = coverPageTrailerText;
    const std::string ending = "%%PageTrailer\n%% End Fax Cover Sheet Template\n";
    ASSERT_GE(trailer.size(), ending.size());
    EXPECT_EQ(trailer.substr(trailer.size() - ending.size()), ending);
    EXPECT_EQ(std::string(coverPageHeaderText).back(), '\n');
}

} // namespace
