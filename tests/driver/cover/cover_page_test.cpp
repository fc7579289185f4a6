// Tests of which cover pages get into a job, and of those that stay the component's byte for byte.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/cover_page.h"

#include "page_support.h"
#include "tests/driver/jobs/job_support.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using testing::HasSubstr;

class CoverPageTest : public testing::Test {
protected:
    static std::string problem(const std::string& page)
    {
        return errorLine([&] { static_cast<void>(makeCoverPage(page, realTemplate())); });
    }
    static std::string withName(const std::string& name)
    {
        return problem(componentsPage(typedValues(name, "Call me")));
    }
    /// `note` as it stands between the brackets.
    static std::string withNote(const std::string& note)
    {
        CoverValues values = typedValues("Ann", "");
        values.at(noteSlot) = note;
        return problem(componentsPage(values));
    }
    static CoverPage made(const std::string& name, const std::string& note)
    {
        return pageFor(typedValues(name, note));
    }
};

TEST_F(CoverPageTest, AValueStaysInItsLine)
{
    for (const char* name :
         {"Ann\n%%EOF", "Ann\r%%EOF", "Ann)\n@PJL RESET\n(", "\x0c", "\x7f", "\x04", "\xc2\x85",
          "\xe2\x80\xa8", "\xe2\x80\xa9", "\xff", "Ann)\n       /RecipientCompany (Acme"})
        EXPECT_NE(withName(name), "") << name;
    EXPECT_NE(withNote(" (a\n%%EOF) "), "");
}

TEST_F(CoverPageTest, ANoteIsOneThatAComponentWrites)
{
    EXPECT_EQ(withNote(""), "") << "nobody confirmed a note";
    EXPECT_EQ(withNote(" () "), "");
    for (const char* note : {" (a", "a", "a) quit (b", " (a) ] quit [ "})
        EXPECT_NE(withNote(note), "") << note;
}

TEST_F(CoverPageTest, TheRefusalNamesTheTextInOneCleanLine)
{
    EXPECT_EQ(withName("Ann\x1b[2J"),
              "the fax cannot be written: a text on its cover page holds a line end, another control "
              "character, or bytes that are no UTF-8: \"Ann [2J\"; change that text");
    EXPECT_LT(withName(std::string(3000, '\x01')).size(), 300U);
}

TEST_F(CoverPageTest, TheTimeIsDigits)
{
    CoverValues values = typedValues("Ann", "");
    EXPECT_EQ(problem(componentsPage(values)), "");
    for (const char* year : {"quit", "", "123456789", "-1"}) {
        values.at(noteSlot + 1) = year;
        EXPECT_NE(problem(componentsPage(values)), "") << year;
    }
}

TEST_F(CoverPageTest, NoByteOfTheTextsAroundTheValuesCanBeChangedUnseen)
{
    FakeFaxSession session; // with a short page
    const auto problemOf = [&](const std::string& page) {
        return errorLine([&] { static_cast<void>(makeCoverPage(page, session.coverPageTemplate())); });
    };
    const std::string page = FakeFaxSession::coverPage("", "");
    ASSERT_EQ(problemOf(page), "");
    for (std::size_t at = 0; at < page.size(); ++at) {
        if (at == page.find("Acme"))
            at += 4;
        if (at == page.find("555-1234"))
            at += 8;
        std::string changed = page;
        changed[at] = changed[at] == '@' ? '!' : '@';
        ASSERT_NE(problemOf(changed), "") << at;
    }
    for (std::size_t size = 0; size < page.size(); ++size)
        ASSERT_NE(problemOf(page.substr(0, size)), "") << size;
    EXPECT_THAT(problemOf(page + "%%EOF\n"), HasSubstr("\"%%EOF\""));
    EXPECT_THAT(problemOf("%%EOF\n" + page), HasSubstr("\"%%EOF\""));
}

TEST_F(CoverPageTest, OfAPageWithoutATemplateOnlyCommandsAreRefused)
{
    for (const CoverPageTemplate& unknown :
         {CoverPageTemplate{}, CoverPageTemplate{"header", "trailer"}, CoverPageTemplate{"(%d)\n", ""},
          CoverPageTemplate{"%s %s\n", ""}}) {
        const auto check = [&](const std::string& page) {
            return errorLine([&] { static_cast<void>(makeCoverPage(page, unknown)); });
        };
        const std::string page = "%!PS\n%%Page: 1 1\n(x @PJL %%EOF) show\nshowpage\n";
        EXPECT_EQ(makeCoverPage(page, unknown).postScript, page);
        EXPECT_EQ(makeCoverPage("showpage", unknown).postScript, "showpage\n") << "what follows is a line";
        for (const char* command :
             {"%%OID_ATT_X", "%%QLMend", "@PJL RESET", "%%EOF", "\x04", " %%EOF", "\t\v\f%%QLMbegin"})
            for (const char* lineEnd : {"\n", "\r", "\r\n", "\f"})
                EXPECT_NE(check("%!PS" + std::string(lineEnd) + command + "\n"), "") << command;
        EXPECT_NE(check(std::string("%!PS\n\0@PJL\n", 11)), "");
    }
}

TEST_F(CoverPageTest, APageOfPlainLettersIsTheComponents)
{
    for (const char* name : {"", "Ann", "O'Neil, Bob (Sales) 100%", "555-1234", "\"#$%&*+,./:;<=>?@[]^_{|}~"})
        for (const char* note : {"", "Please call back", "a) (b", "x (y) z", "a) () (b-c"}) {
            const std::string page = componentsPage(typedValues(name, note));
            EXPECT_EQ(makeCoverPage(page, realTemplate()).postScript, page) << name << " / " << note;
        }
    CoverValues values = typedValues("Ann", "");
    values.at(noteSlot) = "";
    EXPECT_EQ(pageFor(values).postScript, componentsPage(values));
}

TEST_F(CoverPageTest, NothingStandsAroundAPageThatItsFontsCanPrint)
{
    for (const auto& [name, note] : {std::pair{"J\u00fcrgen \\", "a"}, {"Ann", "See you :)"}, {"(", "\\"}}) {
        const std::string page = made(name, note).postScript;
        EXPECT_TRUE(
            page.starts_with(realTemplate().header.substr(0, 1) + "%!PS-Adobe-3.0\n%%Page: FaxCover 1\n"));
        EXPECT_TRUE(page.ends_with(realTemplate().trailer));
    }
}

TEST_F(CoverPageTest, WhatAPageNeedsStandsWithinThePage)
{
    // Programs that take pages apart keep what stands ahead of the first for all of them.
    const std::string start = "\n%!PS-Adobe-3.0\n%%Page: FaxCover 1\n%%BeginPageSetup\n";
    ASSERT_TRUE(componentsPage(typedValues("", "")).starts_with(start));
    for (const char* name : {"\u738b", "%%BeginPageSetup \u738b"}) {
        const std::string page = made(name, "\u00fc").postScript;
        EXPECT_TRUE(page.starts_with(start + "% What the fonts of the cover page cannot print")) << name;
        EXPECT_EQ(page.find("%%Page:", start.size()), std::string::npos);
        EXPECT_TRUE(page.ends_with("end\nrestore\n"));
    }
}

TEST_F(CoverPageTest, AValueWiderThanThePageIsTold)
{
    EXPECT_THAT(made("Ann", "Call me").cut, testing::IsEmpty());
    const std::string line = "the cover sheet has no room for all of \"%\": the text is cut off; shorten it";
    const auto expected = [&](const std::string& name) {
        return std::string(line).replace(line.find('%'), 1, name);
    };
    for (const std::string& name : {std::string(30, 'W'), std::string(30, 'W') + "\u00fc"})
        EXPECT_THAT(made(name, "").cut, testing::ElementsAre(expected(name)));
    EXPECT_THAT(made(std::string(24, 'W'), "").cut, testing::IsEmpty()) << "317 of 319 points";
    EXPECT_THAT(made(std::string(24, 'W') + "'", "").cut, testing::SizeIs(1));
}

TEST_F(CoverPageTest, ANoteOfMoreLinesThanThePageHasIsTold)
{
    std::string note = "1";
    for (int line = 2; line <= 13; ++line)
        note += ") (" + std::to_string(line);
    EXPECT_THAT(made("", note).cut, testing::IsEmpty());
    const auto told = testing::ElementsAre(
        "the cover sheet has no room for more than 13 lines of its note: what comes behind them is cut off; "
        "shorten the note");
    EXPECT_THAT(made("", note + ") (14").cut, told);
    EXPECT_THAT(made("", std::string(5000, 'W')).cut, told);
    EXPECT_THAT(made("", std::string(5000, 'W') + "\u00fc").cut, told);
}

} // namespace
} // namespace quelm::tests
