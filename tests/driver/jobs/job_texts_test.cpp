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

} // namespace
} // namespace quelm
