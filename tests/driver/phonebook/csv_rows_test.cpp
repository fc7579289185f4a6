// Rows of CSV text and their lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Fields = std::vector<std::string>;

TEST(CsvRows, KnowTheLinesOnWhichTheyBegin)
{
    const auto rows = readCsvRows("\xef\xbb\xbf"
                                  "a,b\r\n\r\n\"c\nd\",e\n \nf,\"g\"\"\"");
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_EQ(rows[0].line, 1U);
    EXPECT_EQ(rows[1].line, 3U);
    EXPECT_EQ(rows[2].line, 6U);
    EXPECT_EQ(rows[1].fields, (Fields{"c\nd", "e"}));
    EXPECT_EQ(rows[2].fields, (Fields{"f", "g\""}));
}

TEST(CsvRows, ABadRowIsNamedAndTheNextOnesAreRead)
{
    const auto rows = readCsvRows(std::string("a,b\nc\"d\",e\nf,g\nh\xff,i\nj\0,k\nl,m\n", 29));
    ASSERT_THAT(rows, SizeIs(6));
    EXPECT_THAT(rows[1].problem, HasSubstr("quotation marks stand amid a field"));
    EXPECT_EQ(rows[2].fields, (Fields{"f", "g"}));
    EXPECT_THAT(rows[3].problem, HasSubstr("is not UTF-8"));
    EXPECT_THAT(rows[4].problem, HasSubstr("NUL"));
    EXPECT_EQ(rows[4].line, 5U);
    EXPECT_EQ(rows[5].fields, (Fields{"l", "m"}));
    EXPECT_EQ(rows[5].problem, "");
}

TEST(CsvRows, AnOpenQuoteEndsTheReading)
{
    const auto rows = readCsvRows("a\n\"b\nc\n");
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[1].line, 2U);
    EXPECT_THAT(rows[1].problem, HasSubstr("not closed"));
}

TEST(CsvRows, ARowThatNeverEndsIsRefusedWhereItBegins)
{
    std::string text = "a\n\"b";
    for (int i = 0; i < 600000; ++i)
        text += "x\n";
    const auto rows = readCsvRows(text + "last\n");
    ASSERT_GE(rows.size(), 2U);
    EXPECT_EQ(rows[1].line, 2U);
    EXPECT_EQ(rows[1].problem, "is longer than 1 MiB; a quotation mark may be missing");
    EXPECT_EQ(rows.back().fields, Fields{"last"});
}

TEST(CsvRows, AMillionEmptyLinesAreNoRows)
{
    EXPECT_THAT(readCsvRows("a\n" + std::string(1000000, '\n') + "b\n"), SizeIs(2));
}

TEST(CsvRows, TheFirstLineNamesOrShowsTheSeparator)
{
    EXPECT_EQ(dialectOf("sep=;\na,b;c\n").separator, ';');
    EXPECT_EQ(dialectOf("\xef\xbb\xbf\"SEP=\t\"\r\na").separator, ',');
    EXPECT_EQ(dialectOf("sep=\t\r\na,b").separator, '\t');
    EXPECT_EQ(dialectOf("\r\n\"a;b;c\",d;e;f\n,,,,,").separator, ';');
    EXPECT_EQ(dialectOf("a\tb\n").separator, '\t');
    EXPECT_EQ(dialectOf("").separator, ',');
    EXPECT_FALSE(dialectOf("sep=ab\n").isNamed);
    const std::string text = "sep=|\na|b,c\n\n\"d|\"|e\n";
    const auto rows = readCsvRows(text, dialectOf(text));
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[0].line, 2U);
    EXPECT_EQ(rows[0].fields, (Fields{"a", "b,c"}));
    EXPECT_EQ(rows[1].fields, (Fields{"d|", "e"}));
}

TEST(CsvRows, EmptyFieldsBetweenTabsCount)
{
    const auto rows = readCsvRows("a\tb\tc\n\t x \t\n", {'\t'});
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[1].fields, (Fields{"", "x", ""}));
}

TEST(CsvRows, LinesOfOldSystemsEndInCarriageReturns)
{
    const auto rows = readCsvRows("a,b\r\r\"c\",d\r");
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[1].line, 3U);
    EXPECT_EQ(rows[1].fields, (Fields{"c", "d"}));
}

TEST(CsvRows, TextsThatAreKeptFromBeingCalculatedAreTexts)
{
    const auto rows = readCsvRows("=\"012\",\"=\"\"x\"\",=\"\"\",a=b\n=1+2,\"a\n=\"\"\"\n");
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[0].fields, (Fields{"012", "=\"x\",=\"", "a=b"}));
    EXPECT_EQ(rows[1].fields, (Fields{"=1+2", "a\n=\""}));
}

TEST(CsvRows, SeparatorsHaveNames)
{
    EXPECT_EQ(separatorNamed("semicolon"), ';');
    EXPECT_EQ(separatorNamed("tab"), '\t');
    EXPECT_EQ(separatorNamed("|"), '|');
    for (const auto* text : {"", "a", "1", " ", "\"", ";;", "\u00a7"})
        EXPECT_EQ(separatorNamed(text), std::nullopt) << text;
}

TEST(CsvRows, NothingHasNoRows)
{
    EXPECT_THAT(readCsvRows(""), IsEmpty());
    EXPECT_THAT(readCsvRows("\n\r\n"), IsEmpty());
}

TEST(CsvLine, QuotesWhatNeedsIt)
{
    EXPECT_EQ(csvLine({"a", "b c", "", "1"}), "a,b c,,1\n");
    EXPECT_EQ(csvLine({"a,b", "c\"d", "e\nf", " g", "h "}), "\"a,b\",\"c\"\"d\",\"e\nf\",\" g\",\"h \"\n");
}

TEST(CsvLine, IsReadAsItWas)
{
    const Fields fields{"a,\"b\"", "\r\n", " c ", "", "Zo\xc3\xab", "\""};
    const auto rows = readCsvRows(csvLine(fields) + csvLine({"x"}));
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[0].fields, fields);
    EXPECT_EQ(rows[1].line, 3U);
}

} // namespace
} // namespace quelm
