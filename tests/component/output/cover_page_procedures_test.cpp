// The page program's procedures and constants, one by one, in Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/component/output/filled_cover_page.h"
#include "tests/component/output/ghostscript.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace rendering {
namespace {

/// What `script` writes when it runs behind the procedures, with the details at hand.
std::string run(const std::string& script, const CoverPageValues& values = {})
{
    return output(procedures(values) + "QLMFaxCoverSheetDetails begin\n" + script +
                  "\nend pgsave restore end\n");
}

TEST(CoverPageProcedures, FillAStringWithACharacter)
{
    EXPECT_EQ(run("4 string 65 strfill =  0 string 65 strfill ="), "AAAA\n\n");
}

TEST(CoverPageProcedures, GiveTheCharacterOfADigit)
{
    EXPECT_EQ(run("0 Digit =  9 Digit =  15 Digit ="), "48\n57\n70\n");
}

TEST(CoverPageProcedures, CountTheCharactersOfANumberWithItsSign)
{
    const std::vector<std::pair<std::string, std::string>> lengths = {
        {"0", "1"},  {"0.5", "1"}, {"1", "1"},    {"9", "1"},  {"10", "2"},
        {"99", "2"}, {"100", "3"}, {"2026", "4"}, {"-5", "2"}, {"-10", "3"}};
    std::string script;
    std::string expected;
    for (const auto& [number, length] : lengths) {
        script += number + " dup == IntegerLength == ";
        expected += number + "\n" + length + "\n";
    }
    EXPECT_EQ(run(script), expected);
}

TEST(CoverPageProcedures, TurnNumbersIntoDigits)
{
    EXPECT_EQ(run("0 IntToStr =  7 IntToStr =  2026 IntToStr =  1000 IntToStr ="), "0\n7\n2026\n1000\n");
}

TEST(CoverPageProcedures, PadNumbersWithZerosButNeverCutThem)
{
    EXPECT_EQ(run("2 5 FormatInteger =  2 12 FormatInteger =  4 7 FormatInteger =  0 365 FormatInteger =  "
                  "2 2026 FormatInteger ="),
              "05\n12\n0007\n365\n2026\n");
}

TEST(CoverPageProcedures, LeaveNothingOnTheOperandStack)
{
    EXPECT_EQ(run("count  /Place << /X 100 /Y 100 >> def\n"
                  "<< /X 1 /Y 1 /String (a) >> PrintString  (b) Place PrintString2  [(c) 4 (d)] Place "
                  "PrintStringList  42 Place PrintNumber  1 2 3 4 PrintLine  1 2 3 4 5 PrintFrame\n"
                  "1 2 3 4 BeginClip EndClip  FormatDateTime\n"
                  "count exch sub ="),
              "1\n");
}

TEST(CoverPageProcedures, DefineTheDateAmongTheParametersAndKeepTheFormatAsItIs)
{
    EXPECT_EQ(run("FormatDateTime  QLMFaxCoverSheetParameters /DateTime get =  DateTimeFormat ="),
              "07/08/2026 02:09 PM\n00/00/0000 00:00 AM\n");
}

TEST(CoverPageProcedures, ShowTheHourAsItIsOnA24HourClock)
{
    EXPECT_EQ(run("QLMFaxCoverSheetDetails dup /24HourClock true put /DateTimeFormat (00.00.0000 00:00) put\n"
                  "/MonthDayOffset 0 def /MonthOffset 3 def\n"
                  "FormatDateTime  QLMFaxCoverSheetParameters /DateTime get ="),
              "08.07.2026 14:09\n");
}

TEST(CoverPageProcedures, PrintNothingForALabelWithoutText)
{
    const std::string program =
        procedures({}) + "QLMFaxCoverSheetDetails begin\n"
                         "<< /X 10 /Y 20 >> PrintString\n"
                         "<< /X 10 /Y 20 /String null >> PrintString\n"
                         "<< /X 10 /Y 20 /String (seen) >> PrintString end showpage pgsave restore end\n";
    const std::vector<Page> pages = texts(program);
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_EQ(pages[0].size(), 1U);
    EXPECT_EQ(pages[0][0].text, "seen");
}

TEST(CoverPageProcedures, PrintNumbersWithoutPadding)
{
    const std::vector<Page> pages =
        texts(procedures({}) + "QLMFaxCoverSheetDetails begin\n"
                               "42 << /X 10 /Y 20 >> PrintNumber end showpage pgsave restore end\n");
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_EQ(pages[0].size(), 1U);
    EXPECT_EQ(pages[0][0].text, "42");
    EXPECT_NEAR(pages[0][0].x, 10, 1);
    EXPECT_NEAR(pages[0][0].y, 20, 1);
}

TEST(CoverPageDetails, HoldTheLayoutConstants)
{
    const std::vector<std::pair<std::string, std::string>> constants = {
        {"DateTimeFormat", "(00/00/0000 00:00 AM)"},
        {"24HourClock", "false"},
        {"MonthOffset", "0"},
        {"MonthDayOffset", "3"},
        {"YearOffset", "6"},
        {"HourOffset", "11"},
        {"MinuteOffset", "14"},
        {"MeridianOffset", "17"},
        {"AnteMeridian", "(AM)"},
        {"PostMeridian", "(PM)"},
        {"PageWidth", "612"},
        {"PageHeight", "792"},
        {"LeftMargin", "72"},
        {"TopMargin", "72"},
        {"BottomMargin", "72"},
        {"RightMargin", "72"},
        {"FontName", "/Helvetica-ISOLatin1"},
        {"FontSize", "14"},
        {"Digits", "(0123456789ABCDEF)"},
        {"FrameWidth", "468"},
    };
    std::string script;
    std::string expected;
    for (const auto& [key, value] : constants) {
        script += "QLMFaxCoverSheetDetails /" + key + " get == ";
        expected += value + "\n";
    }
    EXPECT_EQ(run(script), expected);
}

} // namespace
} // namespace rendering
