// Tests of what prints: Ghostscript reads the texts from pages made of the component's own page program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/cover_page.h"
#include "page_support.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

/// The texts of pages with these values, in one run: each page leaves the next as it was.
std::vector<std::vector<std::string>> printed(const std::vector<CoverValues>& pages)
{
    std::string all;
    for (const auto& values : pages)
        all += makeCoverPage(componentsPage(values), realTemplate()).postScript;
    return printedTexts(all);
}

std::vector<std::string> printed(const CoverValues& values) { return printed(std::vector{values}).at(0); }

std::vector<std::string> printed(const std::string& name, const std::string& note)
{
    return printed(typedValues(name, note));
}

constexpr const char* date = "03/05/2024 02:07 PM";

TEST(PrintedPage, ShowsEachNoteAsItIsTyped)
{
    const std::vector<std::string> notes = {"See you :)",
                                            ":(",
                                            "(",
                                            ")",
                                            "\\",
                                            "C:\\temp\\new",
                                            ")/showpage{}def(",
                                            ") quit (",
                                            "a)(b",
                                            "a\\) (b",
                                            "100% (really) \\o/",
                                            "\u00dcber J\u00fcrgen",
                                            "`x`",
                                            "\u00bfqu\u00e9?"};
    std::vector<CoverValues> pages;
    for (const auto& note : notes)
        pages.push_back(typedValues("Ann", note));
    const auto texts = printed(pages);
    ASSERT_EQ(texts.size(), notes.size());
    for (std::size_t page = 0; page < notes.size(); ++page)
        EXPECT_THAT(texts[page], ElementsAre("Ann", date, notes[page]));
}

TEST(PrintedPage, ShowsEachValueAsItIsTyped)
{
    const std::vector<std::string> names = {":)",
                                            "(",
                                            ")(",
                                            "\\",
                                            "a\\",
                                            "AC\\DC \\)",
                                            ")/showpage{}def(",
                                            ") def quit (",
                                            "J\u00fcrgen Wei\u00df",
                                            "\u00c6r\u00f8 \u00d1u\u00f1oa \u00fe\u00ff",
                                            "`x`"};
    std::vector<CoverValues> pages;
    for (const auto& name : names)
        pages.push_back(typedValues(name, "Call"));
    const auto texts = printed(pages);
    ASSERT_EQ(texts.size(), names.size());
    for (std::size_t page = 0; page < names.size(); ++page)
        EXPECT_THAT(texts[page], ElementsAre(names[page], date, "Call"));
}

TEST(PrintedPage, ShowsEveryCharacterOfIsoLatin1)
{
    std::vector<std::string> rows;
    for (char32_t first = 0xa1; first < 0x100; first += 16) {
        rows.emplace_back("x");
        for (char32_t code = first; code < first + 16 && code < 0x100; ++code)
            if (code != 0xad) // the soft hyphen
                rows.back() +=
                    {static_cast<char>(0xc0U | (code >> 6U)), static_cast<char>(0x80U | (code & 0x3fU))};
    }
    std::vector<CoverValues> pages;
    for (const auto& row : rows)
        pages.push_back(typedValues(row, row));
    const auto texts = printed(pages);
    ASSERT_EQ(texts.size(), rows.size());
    for (std::size_t page = 0; page < rows.size(); ++page)
        EXPECT_THAT(texts[page], ElementsAre(rows[page], date, rows[page]));
}

TEST(PrintedPage, ShowsEveryFieldInItsPlace)
{
    CoverValues values = typedValues("", "");
    std::vector<std::string> texts;
    for (std::size_t slot = 0; slot < noteSlot; ++slot) {
        values.at(slot) = "(\u00e4" + std::to_string(slot) + "\\";
        texts.push_back(values.at(slot));
    }
    texts.emplace_back(date);
    EXPECT_THAT(printed(values), ElementsAreArray(texts));
}

TEST(PrintedPage, ShowsEachStringOfANoteInALine)
{
    EXPECT_THAT(printed("", "a) (b"), ElementsAre(date, "a", "b"));
    EXPECT_THAT(printed("", "\u00e4) (C:\\temp) (\u00fc (x)"),
                ElementsAre(date, "\u00e4", "C:\\temp", "\u00fc (x)"));
}

TEST(PrintedPage, ShowsAWideNoteInSeveralLines)
{
    const std::string wide(30, 'W');
    EXPECT_THAT(printed("", wide + " " + wide), ElementsAre(date, wide, wide));
    EXPECT_THAT(printed("", wide + " \u00dcber " + wide), ElementsAre(date, wide + " \u00dcber", wide));
    EXPECT_THAT(printed("", std::string(64, 'W')),
                ElementsAre(date, std::string(35, 'W'), std::string(29, 'W')));
}

TEST(PrintedPage, ShowsAHyphenAsAHyphenWhereTheHeaderIsWrittenAnew)
{
    CoverValues values = typedValues("Ann-Marie", "a-b");
    values.at(3) = "555-1234";
    EXPECT_THAT(printed(values), ElementsAre("Ann\u2212Marie", "555\u22121234", date, "a-b"));
    values.at(1) = "M\u00fcller";
    EXPECT_THAT(printed(values), ElementsAre("Ann-Marie", "M\u00fcller", "555-1234", date, "a-b"));
    EXPECT_THAT(printed("", "a-\u00fc"), ElementsAre(date, "a-\u00fc"));
}

} // namespace
} // namespace quelm::tests
