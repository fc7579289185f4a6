// Tests of what prints: Ghostscript reads the texts from pages made of the component's own page program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/cover_page.h"
#include "driver/cover/page_fonts.h"
#include "page_support.h"
#include "tests/driver/jobs/job_support.h"

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
        all += pageFor(values).postScript;
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

/// 64 Chinese characters, 192 bytes.
std::string chineseText()
{
    std::string text;
    for (char32_t code = 0x4e00; code < 0x4e40; ++code)
        text += {static_cast<char>(0xe0U | (code >> 12U)), static_cast<char>(0x80U | ((code >> 6U) & 0x3fU)),
                 static_cast<char>(0x80U | (code & 0x3fU))};
    return text;
}

/// The values of a page on which everything is drawn that can be.
CoverValues drawnValues()
{
    CoverValues values = typedValues("", chineseText() + ") (\u00fc) (plain");
    for (std::size_t slot = 0; slot < noteSlot; ++slot)
        values.at(slot) = "\u03a3\u03c9\u03ba\u03c1\u03ac\u03c4\u03b7\u03c2 \u05e9\u05dc\u05d5\u05dd";
    values.at(1) = "plain";
    return values;
}

TEST(PrintedPage, LeavesAllAsItWasForTheDocument)
{
    const std::string page = pageFor(drawnValues()).postScript;
    const std::string tell = "countdictstack = count = /show load type = FontDirectory /QuelmTimes known =\n"
                             "/QuelmShow where { pop (there) } { (gone) } ifelse =\n";
    const std::string before = ghostscriptOutput(tell);
    EXPECT_THAT(before, testing::HasSubstr("0\noperatortype\nfalse\ngone\n"));
    EXPECT_EQ(ghostscriptOutput(page + tell), before);
    EXPECT_EQ(ghostscriptOutput(page + page + tell), before) << "a second time";
}

TEST(PrintedPage, HandsEveryOtherStringToTheOperator)
{
    // What comes to the `show` ahead of the page is printed in brackets.
    const std::string listing = "/show { ([) print print (]) print } def\n";
    const std::string output = ghostscriptOutput(listing + pageFor(drawnValues()).postScript);
    EXPECT_EQ(output, "[Fax Cover Sheet][To:][Name:][Organization:][Voice:][Fax:][E-Mail:][From:][Name:]"
                      "[Organization:][Voice:][Fax:][E-Mail:][Date:][Note:][plain][03/05/2024 02:07 PM][\xfc]"
                      "[plain]");
}

/// PostScript behind which strings of more than 127 bytes are no keys, as on a device of Level 2. Ghostscript
/// takes longer ones.
constexpr const char* strictKeys = R"(
/tooLong { dup type /stringtype eq { length 127 gt } { pop false } ifelse } bind def
/refuse { (a key of more than 127 bytes) print flush /limitcheck cvx stop } bind def
/known1 /known load def /known { dup tooLong { refuse } if //known1 } def
/where1 /where load def /where { dup tooLong { refuse } if //where1 } def
/load1 /load load def   /load { dup tooLong { refuse } if //load1 } def
/cvn1 /cvn load def     /cvn { dup tooLong { refuse } if //cvn1 } def
/put1 /put load def     /put { 1 index tooLong { refuse } if //put1 } def
/get1 /get load def     /get { dup tooLong { refuse } if //get1 } def
/def1 /def load def     /def { 1 index tooLong { refuse } if //def1 } bind def1
)";

TEST(PrintedPage, LooksUpNoStringThatADeviceWouldNotTakeForAKey)
{
    const std::string refused = ghostscriptOutput(
        strictKeys + std::string("{ 1 dict (" + std::string(128, 'x') + ") known } stopped { pop } if"));
    ASSERT_EQ(refused, "a key of more than 127 bytes");
    CoverValues values = typedValues(chineseText(), chineseText());
    values.at(1) = std::string(200, 'x');
    const std::string page = pageFor(values).postScript;
    EXPECT_EQ(ghostscriptOutput(strictKeys + page), "");
    EXPECT_THAT(page, testing::HasSubstr("/RecipientName    (\\001QuelmA)\n"));
    EXPECT_THAT(page, testing::HasSubstr("/CoverNote        [ (\\001QuelmB) (\\001QuelmC) ]\n"));
}

TEST(PrintedPage, TakesNoTypedTextForADrawing)
{
    for (const char* name : {"A", "\\001QuelmA", "(\\001QuelmA)", "QuelmTexts"}) {
        CoverValues values = drawnValues();
        values.at(0) = name;
        EXPECT_EQ(printed(values).at(0), name);
    }
}

/// Where the name of a recipient has ink.
InkBox inkOfName(const std::string& name)
{
    CoverValues without = typedValues("", "");
    without.at(1) = "\u03b1"; // so that both are written anew
    CoverValues with = without;
    with.at(0) = name;
    return difference(pageFor(with).postScript, pageFor(without).postScript);
}

TEST(PrintedPage, HasInkWhereADrawingStands)
{
    CoverValues without = drawnValues();
    without.at(0).clear();
    const auto ink = difference(pageFor(drawnValues()).postScript, pageFor(without).postScript);
    // The name begins at (221, 630), in a row of 20 points.
    EXPECT_NEAR(ink.left, 221, 2);
    EXPECT_LT(ink.right, 221 + 17 * pageFontSize);
    EXPECT_GT(ink.right, 221 + 5 * pageFontSize);
    EXPECT_GE(ink.bottom, 625);
    EXPECT_LE(ink.top, 645);
}

TEST(PrintedPage, ClipsADrawingAtTheMargin)
{
    EXPECT_THAT(pageFor(typedValues(chineseText(), "")).cut, testing::SizeIs(1));
    const auto ink = inkOfName(chineseText());
    EXPECT_NEAR(ink.right, 540, 2);
}

TEST(PrintedPage, CutsOffTheEndOfATextThatIsReadFromTheRight)
{
    std::string wide(10, ' '); // its beginning, on the right
    for (int word = 0; word < 20; ++word)
        wide += "\u05d0\u05d1\u05d2 ";
    EXPECT_THAT(pageFor(typedValues(wide, "")).cut, testing::SizeIs(1));
    const auto ink = inkOfName(wide);
    EXPECT_GE(ink.left, 221) << "the labels stand further to the left";
    EXPECT_LT(ink.left, 221 + 2 * pageFontSize);
    EXPECT_GT(ink.right, 540 - 5 * pageFontSize);
    EXPECT_LT(ink.right, 540 - pageFontSize) << "the blanks are there";
}

TEST(PrintedPage, RefusesACharacterThatNoFontHas)
{
    const auto problem = errorLine([] { static_cast<void>(pageFor(typedValues("x\ufdd0y", ""))); });
    EXPECT_EQ(problem,
              "the cover sheet cannot be printed: no font of this computer has U+FDD0; install a font "
              "that does, or change the text");
}

TEST(PrintedPage, NamesWhatItCannotShow)
{
    const auto problem = errorLine(
        [] { static_cast<void>(pageFor(typedValues("\U000323AF\ufdd0\ufdd1\ufdd2\ufdd3\ufdd4", ""))); });
    EXPECT_THAT(problem, testing::HasSubstr(
                             "no font of this computer has \"\U000323AF\" U+323AF, U+FDD0, U+FDD1, U+FDD2, "
                             "U+FDD3, ...; install"));
}

TEST(PrintedPage, ShowsLettersWithTheirMarksAsFontsHaveThem)
{
    const auto pageOf = [](const std::string& name) { return pageFor(typedValues(name, name)).postScript; };
    EXPECT_EQ(pageOf("\u0391\u0301\u0438\u0306"), pageOf("\u0386\u0439"));
    EXPECT_THAT(printed("Ju\u0308rgen", "Ju\u0308rgen"), ElementsAre("J\u00fcrgen", date, "J\u00fcrgen"));
}

TEST(PrintedPage, CountsNoBlanksAtTheEndOfAText)
{
    const std::string blanks(200, ' ');
    for (const char* text : {"x", "\u00fc", "\u03c9"}) {
        const auto page = pageFor(typedValues(text + blanks, text + blanks));
        EXPECT_THAT(page.cut, testing::IsEmpty()) << text;
    }
    std::string note = "a";
    for (int line = 0; line < 20; ++line)
        note += ") ( ";
    EXPECT_THAT(pageFor(typedValues("", note)).cut, testing::IsEmpty());
    EXPECT_THAT(pageFor(typedValues("", note + ") (\u03c9")).cut, testing::SizeIs(1));
}

TEST(PrintedPage, KeepsTallLettersInTheirLine)
{
    std::string tall = "\u03c9";
    for (int mark = 0; mark < 3; ++mark)
        tall += "\u030a\u0332";
    EXPECT_THAT(pageFor(typedValues(tall, "")).cut, testing::IsEmpty());
    const auto ink = inkOfName(tall);
    EXPECT_GE(ink.bottom, 630 - 6 - 1);
    EXPECT_LE(ink.top, 630 + 15 + 1);

    for (int mark = 0; mark < 20; ++mark)
        tall += "\u030a";
    const auto told =
        testing::ElementsAre("the cover sheet has no room for letters as tall as those of \"" + tall +
                             "\": they run into the lines beside them; change that text");
    EXPECT_THAT(pageFor(typedValues(tall, "")).cut, told);
    EXPECT_THAT(pageFor(typedValues("", tall)).cut, told);
}

} // namespace
} // namespace quelm::tests
