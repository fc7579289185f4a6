// Tests of which cover pages the driver lets into a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/cover_page_check.h"

#include "tests/driver/jobs/job_support.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using testing::HasSubstr;

class CoverPageCheckTest : public testing::Test {
protected:
    static std::string problem(const std::string& page)
    {
        FakeFaxSession session;
        return errorLine([&] { checkCoverPage(page, session.coverPageTemplate()); });
    }
    static std::string withName(const std::string& name) { return problem(FakeFaxSession::coverPage(name)); }
    static std::string withNote(const std::string& note)
    {
        return problem(FakeFaxSession::coverPage("Ann", note));
    }
};

TEST_F(CoverPageCheckTest, PagesOfEverydayTextsPass)
{
    EXPECT_EQ(withName(""), "");
    EXPECT_EQ(withName("Ann, Bob (Sales), \xce\x9d\xce\xaf\xce\xba\xce\xbf\xcf\x82, "
                       "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d, \xe7\x8e\x8b\xe5\xb0\x8f\xe6\x98\x8e"),
              "");
    EXPECT_EQ(withName("AC\\DC 100% \\)"), "");
    EXPECT_EQ(withNote(""), "") << "nobody confirmed a note";
    EXPECT_EQ(withNote(" () "), "");
    EXPECT_EQ(withNote(" (a) (b) "), "") << "a parenthesis starts a new line";
    EXPECT_EQ(withNote(" (see %s and (this)) "), "");
}

TEST_F(CoverPageCheckTest, AValueStaysInItsLine)
{
    for (const char* name :
         {"Ann\n%%EOF", "Ann\r%%EOF", "Ann)\n@PJL RESET\n(", "\x0c", "\x7f", "\x04", "\xc2\x85",
          "\xe2\x80\xa8", "\xe2\x80\xa9", "\xff", "Ann)\n       /RecipientCompany (Acme"})
        EXPECT_NE(withName(name), "") << name;
    EXPECT_NE(withNote(" (a\n%%EOF) "), "");
}

TEST_F(CoverPageCheckTest, AValueCannotEndItsString)
{
    for (const char* name : {"Smile :)", ") quit (", "(", "\\", "a\\\\\\"})
        EXPECT_NE(withName(name), "") << name;
    for (const char* note : {" (a) quit (b) ", " (:)) ", " (\\) ", " (a", "a", " (a) ] quit [ "})
        EXPECT_NE(withNote(note), "") << note;
}

TEST_F(CoverPageCheckTest, TheRefusalNamesTheTextInOneCleanLine)
{
    EXPECT_EQ(
        withName("Ann\x1b[2J) quit"),
        "the fax cannot be written: a text on its cover page holds a control character, or a parenthesis or "
        "backslash that cuts it off: \"Ann [2J) quit\"; change that text");
    EXPECT_LT(withName(std::string(3000, '(')).size(), 300U);
}

TEST_F(CoverPageCheckTest, TheTimeIsDigits)
{
    std::string page = FakeFaxSession::coverPage();
    const auto year = page.find("2024");
    EXPECT_NE(problem(std::string(page).replace(year, 4, "quit")), "");
    EXPECT_NE(problem(std::string(page).replace(year, 4, "")), "");
    EXPECT_EQ(problem(std::string(page).replace(year, 4, "1999")), "");
}

TEST_F(CoverPageCheckTest, NoByteOfTheTextsAroundTheValuesCanBeChangedUnseen)
{
    const std::string page = FakeFaxSession::coverPage("", "");
    for (std::size_t at = 0; at < page.size(); ++at) {
        if (at == page.find("Acme"))
            at += 4;
        if (at == page.find("555-1234"))
            at += 8;
        std::string changed = page;
        changed[at] = changed[at] == '@' ? '!' : '@';
        ASSERT_NE(problem(changed), "") << at;
    }
    for (std::size_t size = 0; size < page.size(); ++size)
        ASSERT_NE(problem(page.substr(0, size)), "") << size;
    EXPECT_THAT(problem(page + "%%EOF\n"), HasSubstr("\"%%EOF\""));
    EXPECT_THAT(problem("%%EOF\n" + page), HasSubstr("\"%%EOF\""));
}

TEST_F(CoverPageCheckTest, OfAPageWithoutATemplateOnlyCommandsAreRefused)
{
    for (const CoverPageTemplate& unknown :
         {CoverPageTemplate{}, CoverPageTemplate{"header", "trailer"}, CoverPageTemplate{"(%d)\n", ""},
          CoverPageTemplate{"%s %s\n", ""}}) {
        const auto check = [&](const std::string& page) {
            return errorLine([&] { checkCoverPage(page, unknown); });
        };
        EXPECT_EQ(check("%!PS\n%%Page: 1 1\n(x @PJL %%EOF) show\nshowpage\n"), "");
        for (const char* command :
             {"%%OID_ATT_X", "%%QLMend", "@PJL RESET", "%%EOF", "\x04", " %%EOF", "\t\v\f%%QLMbegin"})
            for (const char* lineEnd : {"\n", "\r", "\r\n", "\f"})
                EXPECT_NE(check("%!PS" + std::string(lineEnd) + command + "\n"), "") << command;
        EXPECT_NE(check(std::string("%!PS\n\0@PJL\n", 11)), "");
    }
}

} // namespace
} // namespace quelm::tests
