// The cover page on paper: what stands where, and that the document behind it notices nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/component/output/filled_cover_page.h"
#include "tests/component/output/ghostscript.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace rendering {
namespace {

/// The minus sign is what the code of the hyphen means in ISO Latin 1 fonts.
const std::string emailLabel = "E\u2212Mail:";

const std::vector<Text> labels = {
    {77, 700, "Helvetica", 24, "Fax Cover Sheet"}, {77, 650, "Helvetica", 16, "To:"},
    {77, 630, "Helvetica", 14, "Name:"},           {77, 610, "Helvetica", 14, "Organization:"},
    {77, 590, "Helvetica", 14, "Voice:"},          {77, 570, "Helvetica", 14, "Fax:"},
    {77, 550, "Helvetica", 14, emailLabel},        {77, 510, "Helvetica", 16, "From:"},
    {77, 490, "Helvetica", 14, "Name:"},           {77, 470, "Helvetica", 14, "Organization:"},
    {77, 450, "Helvetica", 14, "Voice:"},          {77, 430, "Helvetica", 14, "Fax:"},
    {77, 410, "Helvetica", 14, emailLabel},        {77, 350, "Helvetica", 14, "Date:"},
    {77, 290, "Helvetica", 16, "Note:"},
};

CoverPageValues everyValue()
{
    CoverPageValues values;
    values.recipientName = "Ann";
    values.recipientCompany = "Acme";
    values.recipientPhone = "5550001";
    values.recipientFax = "5551234";
    values.recipientEmail = "ann@acme.example";
    values.senderName = "Bob";
    values.senderCompany = "Quelm";
    values.senderPhone = "5550002";
    values.senderFax = "5559876";
    values.senderEmail = "bob@quelm.example";
    values.note = " (Call me.) ";
    return values;
}

CoverPageValues atTime(const std::string& hour, const std::string& minute)
{
    CoverPageValues values;
    values.hour = hour;
    values.minute = minute;
    return values;
}

const std::string document = "%!PS-Adobe-3.0\n"
                             "/Helvetica findfont 12 scalefont setfont 72 72 moveto (The document) show "
                             "showpage\n";

/// The only page of a cover sheet.
Page print(const CoverPageValues& values)
{
    const std::vector<Page> pages = texts(coverPage(values));
    EXPECT_EQ(pages.size(), 1U);
    return pages.empty() ? Page() : pages.front();
}

void sortDownThePage(Page& page)
{
    std::sort(page.begin(), page.end(), [](const Text& first, const Text& second) {
        return first.y != second.y ? first.y > second.y : first.x < second.x;
    });
}

void expectPage(Page actual, Page expected)
{
    sortDownThePage(actual);
    sortDownThePage(expected);
    for (std::size_t i = 0; i < actual.size() && i < expected.size(); ++i) {
        SCOPED_TRACE(expected[i].text);
        EXPECT_EQ(actual[i].text, expected[i].text);
        EXPECT_EQ(actual[i].font, expected[i].font);
        EXPECT_NEAR(actual[i].x, expected[i].x, 0.6);
        EXPECT_NEAR(actual[i].y, expected[i].y, 0.6);
        EXPECT_NEAR(actual[i].size, expected[i].size, 0.01);
    }
    EXPECT_EQ(actual.size(), expected.size());
}

Page labelsAnd(const Page& values)
{
    Page page = labels;
    page.insert(page.end(), values.begin(), values.end());
    return page;
}

void expectInk(const std::vector<Ink>& actual, const std::vector<Ink>& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        SCOPED_TRACE(expected[i].center);
        EXPECT_NEAR(actual[i].center, expected[i].center, 0.3);
        EXPECT_NEAR(actual[i].thickness, expected[i].thickness, 0.3);
    }
}

Picture pictureOf(const std::string& program)
{
    const std::vector<Picture> pages = pictures(program);
    if (pages.size() != 1)
        throw std::runtime_error("expected one page, not " + std::to_string(pages.size()));
    return pages.front();
}

TEST(CoverPage, PrintsEachLabelAndEachValueAtItsPlace)
{
    expectPage(print(everyValue()), labelsAnd({{221, 630, "Helvetica", 14, "Ann"},
                                               {221, 610, "Helvetica", 14, "Acme"},
                                               {221, 590, "Helvetica", 14, "5550001"},
                                               {221, 570, "Helvetica", 14, "5551234"},
                                               {221, 550, "Helvetica", 14, "ann@acme.example"},
                                               {221, 490, "Helvetica", 14, "Bob"},
                                               {221, 470, "Helvetica", 14, "Quelm"},
                                               {221, 450, "Helvetica", 14, "5550002"},
                                               {221, 430, "Helvetica", 14, "5559876"},
                                               {221, 410, "Helvetica", 14, "bob@quelm.example"},
                                               {221, 350, "Helvetica", 14, "07/08/2026 02:09 PM"},
                                               {77, 270, "Times-Roman", 14, "Call me."}}));
}

TEST(CoverPage, PrintsTheEmptyFormWithItsDateWhenNothingElseIsGiven)
{
    CoverPageValues values;
    values.note = " () ";
    expectPage(print(values), labelsAnd({{221, 350, "Helvetica", 14, "07/08/2026 02:09 PM"}}));
    values.note = "";
    expectPage(print(values), labelsAnd({{221, 350, "Helvetica", 14, "07/08/2026 02:09 PM"}}));
}

TEST(CoverPage, PrintsEachStringOfTheNoteOnALineOfItsOwn)
{
    CoverPageValues values;
    values.note = " (a) (b) "; // What the note "a) (b" turns into.
    expectPage(print(values), labelsAnd({{221, 350, "Helvetica", 14, "07/08/2026 02:09 PM"},
                                         {77, 270, "Times-Roman", 14, "a"},
                                         {77, 254, "Times-Roman", 14, "b"}}));
}

TEST(CoverPage, PassesOverWhatIsNoStringInTheNote)
{
    CoverPageValues values;
    values.note = " (a) 5 (b) "; // What the note "a) 5 (b" turns into.
    expectPage(print(values), labelsAnd({{221, 350, "Helvetica", 14, "07/08/2026 02:09 PM"},
                                         {77, 270, "Times-Roman", 14, "a"},
                                         {77, 254, "Times-Roman", 14, "b"}}));
}

TEST(CoverPage, LeavesOutValuesThatTheHeaderDoesNotDefine)
{
    std::string program = coverPage(everyValue());
    for (const std::string line :
         {"       /RecipientName    (Ann)\n", "       /CoverNote        [ (Call me.) ]\n",
          "       /SenderEmail      (bob@quelm.example)\n"}) {
        const std::size_t found = program.find(line);
        ASSERT_NE(found, std::string::npos) << line;
        program.erase(found, line.size());
    }
    const std::vector<Page> pages = texts(program);
    ASSERT_EQ(pages.size(), 1U);
    expectPage(pages[0], labelsAnd({{221, 610, "Helvetica", 14, "Acme"},
                                    {221, 590, "Helvetica", 14, "5550001"},
                                    {221, 570, "Helvetica", 14, "5551234"},
                                    {221, 550, "Helvetica", 14, "ann@acme.example"},
                                    {221, 490, "Helvetica", 14, "Bob"},
                                    {221, 470, "Helvetica", 14, "Quelm"},
                                    {221, 450, "Helvetica", 14, "5550002"},
                                    {221, 430, "Helvetica", 14, "5559876"},
                                    {221, 350, "Helvetica", 14, "07/08/2026 02:09 PM"}}));
}

TEST(CoverPage, ShowsTheTimeOnA12HourClock)
{
    const std::vector<std::pair<CoverPageValues, std::string>> times = {
        {atTime("00", "05"), "07/08/2026 12:05 AM"}, {atTime("01", "00"), "07/08/2026 01:00 AM"},
        {atTime("08", "09"), "07/08/2026 08:09 AM"}, {atTime("11", "59"), "07/08/2026 11:59 AM"},
        {atTime("12", "00"), "07/08/2026 12:00 PM"}, {atTime("13", "00"), "07/08/2026 01:00 PM"},
        {atTime("23", "30"), "07/08/2026 11:30 PM"}};
    std::string program;
    for (const auto& [values, shown] : times)
        program += coverPage(values);
    const std::vector<Page> pages = texts(program);
    ASSERT_EQ(pages.size(), times.size());
    for (std::size_t i = 0; i < times.size(); ++i)
        expectPage(pages[i], labelsAnd({{221, 350, "Helvetica", 14, times[i].second}}));
}

TEST(CoverPage, DrawsADoubleLineAndThreeFramesOfRows)
{
    const Picture picture = pictureOf(coverPage({}));
    // Down the page at x 500, where no text stands; the list begins at the bottom.
    expectInk(picture.alongVertical(500), {{345, 2},
                                           {365, 2}, // date
                                           {405, 2},
                                           {425, 1},
                                           {445, 1},
                                           {465, 1},
                                           {485, 1},
                                           {505, 2}, // sender
                                           {545, 2},
                                           {565, 1},
                                           {585, 1},
                                           {605, 1},
                                           {625, 1},
                                           {645, 2}, // recipient
                                           {693, 0.25},
                                           {695, 0.25}});
}

TEST(CoverPage, PartsLabelsFromValuesByALine144PointsFromTheLeft)
{
    const Picture picture = pictureOf(coverPage({}));
    for (const double justBelowTheText : {628.0, 488.0, 348.0}) {
        SCOPED_TRACE(justBelowTheText);
        expectInk(picture.alongHorizontal(justBelowTheText), {{72, 2}, {216, 1}, {540, 2}});
    }
}

TEST(CoverPage, EndsTheDoubleLineWhereTheFramesEnd)
{
    const Picture picture = pictureOf(coverPage({}));
    for (const double x : {74.0, 538.0}) {
        const std::vector<Ink> ink = picture.alongVertical(x);
        ASSERT_GE(ink.size(), 2U) << x;
        EXPECT_NEAR(ink[ink.size() - 2].center, 693, 0.3) << x;
        EXPECT_NEAR(ink[ink.size() - 1].center, 695, 0.3) << x;
    }
    for (const double x : {70.0, 542.0})
        EXPECT_TRUE(picture.alongVertical(x).empty()) << x;
}

TEST(CoverPage, CutsLongValuesOffAtTheRightMargin)
{
    CoverPageValues values;
    values.recipientName = std::string(200, 'M');
    values.note = '(' + std::string(200, 'M') + ')';
    const Picture picture = pictureOf(coverPage(values));
    for (const double x : {545.0, 575.0, 605.0})
        EXPECT_TRUE(picture.alongVertical(x).empty()) << x;
    EXPECT_GT(picture.alongVertical(530).size(), pictureOf(coverPage({})).alongVertical(530).size());
}

TEST(CoverPage, LooksTheSameWhateverGraphicsStateItMeets)
{
    const std::string disturbed = "0.7 setgray 2 setlinecap 9 setlinewidth 1 setlinejoin 1 setmiterlimit "
                                  "[5 3] 2 setdash true setoverprint true setstrokeadjust 10 10 moveto "
                                  "300 300 lineto\n";
    EXPECT_EQ(pictureOf(disturbed + coverPage(everyValue())), pictureOf(coverPage(everyValue())));
}

TEST(CoverPage, TurnsOverprintAndStrokeAdjustmentOff)
{
    const std::string atEndOfPage =
        "true setoverprint true setstrokeadjust << /EndPage { exch pop 0 eq dup { currentoverprint = "
        "currentstrokeadjust = } if } >> setpagedevice\n";
    EXPECT_EQ(output(atEndOfPage + coverPage({})), "false\nfalse\n");
}

TEST(CoverPage, UsesTheSettingsOfLanguageLevel2OnlyWhereTheyExist)
{
    const std::string watched = "/setoverprint { (overprint ) print = } def "
                                "/setstrokeadjust { (stroke adjustment ) print = } def\n";
    EXPECT_EQ(output("/languagelevel 1 def " + watched + coverPage({})), "");
    EXPECT_EQ(output("/languagelevel 2 def " + watched + coverPage({})),
              "overprint false\nstroke adjustment false\n");
}

TEST(CoverPage, LeavesTheDocumentBehindItOnAPageOfItsOwn)
{
    const std::vector<Page> pages = texts(coverPage(everyValue()) + document);
    ASSERT_EQ(pages.size(), 2U);
    expectPage(pages[1], {{72, 72, "Helvetica", 12, "The document"}});

    const std::vector<Picture> behindTheCover = pictures(coverPage(everyValue()) + document);
    ASSERT_EQ(behindTheCover.size(), 2U);
    EXPECT_EQ(behindTheCover[1], pictureOf(document));
}

TEST(CoverPage, LeavesTheInterpreterAsItWas)
{
    const std::string unusual =
        "(left by others) 7 3 setlinewidth 0.5 setgray 1 setlinecap 1 setlinejoin "
        "4 setmiterlimit [2 1] 1 setdash true setoverprint 12 dict begin\n"
        "/state { countdictstack = count = currentdict length = currentgray = "
        "currentlinewidth = currentlinecap = currentlinejoin = currentmiterlimit = "
        "currentdash = == currentoverprint = matrix currentmatrix == clippath pathbbox "
        "4 { = } repeat newpath vmstatus pop pop = 2 copy = = } def\n"
        "/known? { where { pop (defined) } { (undefined) } ifelse = } def\n";
    const std::string before = output(unusual + "state\n");
    ASSERT_FALSE(before.empty());
    EXPECT_EQ(output(unusual + coverPage(everyValue()) + "state\n"), before);
    EXPECT_EQ(output(unusual + coverPage(everyValue()) +
                     "/QLMFaxCoverSheetDetails known? /QLMFaxCoverSheetParameters known? /PrintString known? "
                     "FontDirectory /Helvetica-ISOLatin1 known =\n"),
              "undefined\nundefined\nundefined\nfalse\n");
}

} // namespace
} // namespace rendering
