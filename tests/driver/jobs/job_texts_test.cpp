// Tests of a user's texts in the comments of a print job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_texts.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(JobTextsTest, ACommentHoldsItsTextInParentheses)
{
    EXPECT_EQ(dscComment("%%Title:", "A letter"), "%%Title: (A letter)\n");
    EXPECT_EQ(dscComment("%%Title:", ""), "%%Title: ()\n");
}

TEST(JobTextsTest, ACommentEscapesWhatWouldEndIt)
{
    EXPECT_EQ(dscComment("%%Title:", "a(b)c\\d\r\n%%OID_ATT_X;\x7f"),
              "%%Title: (a\\(b\\)c\\\\d\\015\\012%%OID_ATT_X;\\177)\n");
    EXPECT_EQ(dscComment("%%Title:", "\xc3\xbc"), "%%Title: (\\303\\274)\n");
}

TEST(JobTextsTest, ALongCommentIsCutBetweenCharactersAt255Bytes)
{
    EXPECT_EQ(dscComment("%%Title:", std::string(245, 'x')), "%%Title: (" + std::string(244, 'x') + ")\n");
    EXPECT_EQ(dscComment("%%Title:", std::string(244, 'x')).size(), 256U) << "255 and the line end";
    EXPECT_EQ(dscComment("%%Title:", std::string(240, 'x') + "\xc3\xbc"),
              "%%Title: (" + std::string(240, 'x') + ")\n");
}

TEST(JobTextsTest, APjlTextCannotLeaveItsQuotes)
{
    EXPECT_EQ(pjlText("say \"hi\"\r\n@PJL RESET\x1b%-12345X"), "say 'hi'  @PJL RESET %-12345X");
    EXPECT_EQ(pjlText("tab\tdel\x7f"), "tab del ");
}

TEST(JobTextsTest, APjlTextIsAsciiOnly)
{
    EXPECT_EQ(pjlText("\xc3\x9c"
                      "berweisung \xe2\x82\xac \xf0\x9f\x93\xa0"),
              "?berweisung ? ?");
    EXPECT_EQ(pjlText("\xff\x80\x80\x80\x80z"), "??z") << "bytes that are no UTF-8";
}

TEST(JobTextsTest, APjlTextHasOneTo80Characters)
{
    EXPECT_EQ(pjlText(std::string(100, 'x')), std::string(80, 'x'));
    EXPECT_EQ(pjlText(""), "Fax");
}

TEST(JobTextsTest, PlainTextsAreOfAnyScriptWithoutLineEnds)
{
    for (const char* text :
         {"", "Ann", "\xce\x9d\xce\xaf\xce\xba\xce\xbf\xcf\x82 \xe7\x8e\x8b \xf0\x9f\x93\xa0"})
        EXPECT_TRUE(isPlainText(text)) << text;
    for (const std::string& text :
         {std::string("a\nb"), std::string("\r"), std::string("\t"), std::string("\x1b"), std::string("\x7f"),
          std::string("a\0b", 3), std::string("\xc2\x80"), std::string("\xc2\x85"), std::string("\xc2\x9f"),
          std::string("\xe2\x80\xa8"), std::string("\xe2\x80\xa9"), std::string("\xff"), std::string("\xc3")})
        EXPECT_FALSE(isPlainText(text)) << text;
    EXPECT_TRUE(isPlainText("\xc2\xa0")) << "the first behind the controls of ISO Latin 1";
}

TEST(JobTextsTest, AShownTextIsOneCleanLine)
{
    EXPECT_EQ(shownText("Z\xc3\xb6\xc3\xab \xe7\x8e\x8b"), "Z\xc3\xb6\xc3\xab \xe7\x8e\x8b");
    EXPECT_EQ(shownText("a\r\nb\x1b[2J"), "a  b [2J");
    EXPECT_EQ(shownText("\xff"), "\xef\xbf\xbd");
    EXPECT_EQ(shownText(""), "");
}

TEST(JobTextsTest, AShownTextIsCutBetweenCharacters)
{
    EXPECT_EQ(shownText("\xc3\xbc\xc3\xbc\xc3\xbc", 3), "\xc3\xbc\xc3\xbc\xc3\xbc");
    EXPECT_EQ(shownText("\xc3\xbc\xc3\xbc\xc3\xbc", 2), "\xc3\xbc\xc3\xbc...");
    EXPECT_EQ(shownText(std::string(100'000, '\xff')).size(), 60U * 3 + 3);
}

} // namespace
} // namespace quelm
