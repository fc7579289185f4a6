// Tests of finding the PostScript inside what printer drivers put around it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/print_wrapping.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

/// What is left of a file when its wrapping is taken off.
std::string unwrapped(const std::string& content)
{
    const std::string body = content.substr(measurePrologue(content).size);
    return body.substr(0, findEpilogue(body));
}

TEST(PrintWrappingTest, PlainPostScriptHasNone)
{
    EXPECT_EQ(measurePrologue("%!PS\nshowpage\n").size, 0U);
    EXPECT_EQ(findEpilogue("showpage\n"), 9U);
}

TEST(PrintWrappingTest, TakesOffWhatDriversPutAround)
{
    EXPECT_EQ(unwrapped("\x04%!PS\nshowpage\n\x04"), "%!PS\nshowpage\n");
    EXPECT_EQ(unwrapped("\x1b%-12345X%!PS\nshowpage\n\x1b%-12345X"), "%!PS\nshowpage\n");
    EXPECT_EQ(unwrapped("\x1b%-12345X@PJL JOB\r\n@PJL SET COPIES=2\r\n@PJL ENTER LANGUAGE = PostScript "
                        "\r\n%!PS\nshowpage\n"
                        "\x04\x1b%-12345X@PJL EOJ\r\n\x1b%-12345X"),
              "%!PS\nshowpage\n");
    EXPECT_EQ(unwrapped("\x1b"
                        "E\x1b%-12345X@PJL\n\r\n\xef\xbb\xbf%!PS\nshowpage\n\x1b"
                        "E\x1b%-12345X\r\n"),
              "%!PS\nshowpage\n");
    EXPECT_EQ(unwrapped("@PJL JOB\n%!PS\n"), "%!PS\n");
}

TEST(PrintWrappingTest, NamesTheLanguageThatIsEntered)
{
    EXPECT_EQ(measurePrologue("\x1b%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE = PclXL\r\n) HP").language,
              "PCLXL");
    EXPECT_EQ(measurePrologue("\x1b%-12345X@PJL JOB\r\n%!PS").language, "");
}

TEST(PrintWrappingTest, PjlLinesEndWhereTheLanguageIsEntered)
{
    EXPECT_EQ(unwrapped("@PJL ENTER LANGUAGE=POSTSCRIPT\n@PJL SET X=1\n%!PS"), "@PJL SET X=1\n%!PS");
}

TEST(PrintWrappingTest, LeavesBytesInTheMiddleOfTheDocument)
{
    const std::string document = "%!PS\n\x04 a \x1b%-12345X b\nshowpage\n";
    EXPECT_EQ(unwrapped(document), document);
    EXPECT_EQ(unwrapped(document + "\x04\r\n\x04"), document);
}

TEST(PrintWrappingTest, ReadsTheHeaderOfAnEpsFileWithPreview)
{
    std::string head("\xc5\xd0\xd3\xc6\x20\x01\x00\x00\x05\x02\x01\x00", 12);
    EXPECT_FALSE(readPreviewHeader(head)) << "cut off";
    head.resize(30);
    const auto section = readPreviewHeader(head);
    ASSERT_TRUE(section);
    EXPECT_EQ(section->offset, 0x120U);
    EXPECT_EQ(section->size, 0x10205U);
    EXPECT_FALSE(readPreviewHeader("%!PS-Adobe-3.0 EPSF-3.0\n and so on and on"));
}

TEST(PrintWrappingTest, FindsAUelHoweverTheBytesArrive)
{
    const std::string text = "a\x1b\x1b%-1234\x1b%-12345X.";
    EXPECT_TRUE(UelSearch()(text));
    for (std::size_t split = 0; split <= text.size(); ++split) {
        UelSearch search;
        const bool first = search(std::string_view(text).substr(0, split));
        const bool second = search(std::string_view(text).substr(split));
        EXPECT_NE(first, second) << split;
    }
    EXPECT_FALSE(UelSearch()("\x1b%-12345Y \x1b%-1234"));
}

} // namespace
} // namespace quelm
