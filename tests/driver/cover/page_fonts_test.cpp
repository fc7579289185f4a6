// Tests of texts in the page's fonts. Ghostscript, whose fonts are as wide as a device's, measures beside
// them. SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/page_fonts.h"

#include "page_support.h"

#include <gmock/gmock.h>

#include <sstream>

namespace quelm::tests {
namespace {

using testing::ElementsAre;

TEST(Latin1, HasTheCharactersOfWesternEurope)
{
    EXPECT_EQ(latin1(""), "");
    EXPECT_EQ(latin1("Ann 555-1234 ~"), "Ann 555-1234 ~");
    EXPECT_EQ(latin1("J\u00fcrgen \u00c5se \u00ff\u00a0"), "J\xfcrgen \xc5se \xff\xa0");
}

TEST(Latin1, IsNothingForAnyOtherCharacter)
{
    for (const char* text : {"\u0141ukasz", "\u2019", "\u20ac", "\u03bd", "\U0001F600", "soft\u00adhyphen",
                             "x\u0301", "u\u0308", "\u0080", "\u009f", "\x7f", "\x1f"})
        EXPECT_EQ(latin1(text), std::nullopt) << text;
}

TEST(Latin1, CallsTheHyphenAHyphen)
{
    EXPECT_EQ(latin1Codes("a-b`'"), "a\xad"
                                    "b\x91'");
}

/// What the font's characters are wide in Ghostscript, by their codes from 32.
std::vector<double> measuredWidths(const std::string& font)
{
    std::istringstream output(ghostscriptOutput(
        "/" + font +
        " findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall\n"
        "/Encoding ISOLatin1Encoding def currentdict end /Measured exch definefont pop\n"
        "/Measured 1000 selectfont\n"
        "32 1 255 { 1 string dup 0 4 -1 roll put stringwidth pop = } for\n"));
    return {std::istream_iterator<double>(output), {}};
}

TEST(PrintedWidth, IsThatOfTheFont)
{
    const std::pair<PageFont, const char*> fonts[] = {{PageFont::helvetica, "Helvetica"},
                                                      {PageFont::timesRoman, "Times-Roman"}};
    for (const auto& [font, name] : fonts) {
        const auto widths = measuredWidths(name);
        ASSERT_EQ(widths.size(), 224U);
        for (std::size_t at = 0; at < widths.size(); ++at) {
            const std::string code(1, static_cast<char>(at + 32));
            EXPECT_NEAR(printedWidth(code, font) * 1000 / pageFontSize, widths[at], 1)
                << name << " " << at + 32;
        }
    }
    EXPECT_NEAR(printedWidth("WW", PageFont::helvetica), 2 * 0.944 * 14, 0.001);
    EXPECT_EQ(printedWidth("", PageFont::helvetica), 0);
}

std::vector<std::string_view> broken(std::string_view text, double widest)
{
    return brokenLines(text, PageFont::timesRoman, widest);
}

TEST(BrokenLines, AreOneWhereTheTextFits)
{
    EXPECT_THAT(broken("", 10), ElementsAre(""));
    EXPECT_THAT(broken("Please call", 100), ElementsAre("Please call"));
    const std::string_view text = "exactly as wide";
    EXPECT_THAT(broken(text, printedWidth(text, PageFont::timesRoman)), ElementsAre(text));
}

TEST(BrokenLines, EndAtBlanks)
{
    EXPECT_THAT(broken("one two three", 50), ElementsAre("one two", "three"));
    EXPECT_THAT(broken("one   two  ", 25), ElementsAre("one", "two"));
    EXPECT_THAT(broken("  one two", 35), ElementsAre("  one", "two"));
}

TEST(BrokenLines, EndWithinAWordThatIsWiderThanALine)
{
    EXPECT_THAT(broken("iiii iiiiiiii i", 20), ElementsAre("iiii", "iiiii", "iii i"));
    EXPECT_THAT(broken("WWW", 1), ElementsAre("W", "W", "W"));
    EXPECT_THAT(broken("   iiiiiii", 20), ElementsAre("   ii", "iiiii"));
}

TEST(BrokenLines, LoseNothingAndAreNeverTooWide)
{
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += static_cast<char>(i * 7919 % 5 == 0 ? ' ' : 'a' + i * 31 % 26);
    for (const double widest : {15.0, 40.0, 463.0}) {
        std::string together;
        for (const auto line : broken(text, widest)) {
            EXPECT_LE(printedWidth(line, PageFont::timesRoman), widest);
            together += line;
        }
        std::string expected = text;
        std::erase(expected, ' ');
        std::erase(together, ' ');
        EXPECT_EQ(together, expected);
    }
}

} // namespace
} // namespace quelm::tests
