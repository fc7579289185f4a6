// The CSV reader: what it takes, and what it says about what it does not.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipients_csv.h"

#include "base/log.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace quelm {
namespace {

using test::failureLine;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> told; ///< what was logged by the last reading

std::vector<RecipientInput> parsed(const std::string& text, const RecipientsReading& reading = {})
{
    told.clear();
    const auto before = setLogSink([](Severity, const std::string& line) { told.push_back(line); });
    try {
        auto recipients = parseRecipientsCsv(text, "list.csv", reading);
        setLogSink(before);
        return recipients;
    } catch (...) {
        setLogSink(before);
        throw;
    }
}

std::string refusal(const std::string& text)
{
    return failureLine([&] { parsed(text); });
}

auto named(const std::string& name) { return Field(&RecipientInput::name, name); }

TEST(RecipientsCsv, ReadsEveryColumn)
{
    const auto recipients = parsed("name,number,organization,phone,email,mailbox\n"
                                   "Ann,555-1234,Acme,555-9,ann@acme.example,12\n");
    ASSERT_THAT(recipients, SizeIs(1));
    EXPECT_EQ(recipients[0].name, "Ann");
    EXPECT_EQ(recipients[0].number, "555-1234");
    EXPECT_EQ(recipients[0].organization, "Acme");
    EXPECT_EQ(recipients[0].phone, "555-9");
    EXPECT_EQ(recipients[0].email, "ann@acme.example");
    EXPECT_EQ(recipients[0].mailbox, "12");
    EXPECT_EQ(recipients[0].origin, "list.csv:2");
}

TEST(RecipientsCsv, TakesTheColumnsInAnyOrder)
{
    const auto recipients = parsed("mailbox,number,name\n12,555,Ann\n");
    ASSERT_THAT(recipients, SizeIs(1));
    EXPECT_EQ(recipients[0].name, "Ann");
    EXPECT_EQ(recipients[0].number, "555");
    EXPECT_EQ(recipients[0].mailbox, "12");
}

TEST(RecipientsCsv, KeepsTheOrderOfTheRows)
{
    EXPECT_THAT(parsed("name,number\nAnn,1\nBob,2\nCid,3\n"),
                ElementsAre(named("Ann"), named("Bob"), named("Cid")));
}

TEST(RecipientsCsv, LeavesOptionalFieldsEmpty)
{
    const auto recipients = parsed("name,number,organization\nAnn,555,\n");
    EXPECT_EQ(recipients.at(0).organization, "");
}

TEST(RecipientsCsv, PassesOverAByteOrderMark)
{
    EXPECT_THAT(parsed("\xef\xbb\xbfname,number\nAnn,1\n"), ElementsAre(named("Ann")));
}

TEST(RecipientsCsv, TakesLinesThatEndInCarriageReturnAndLineFeed)
{
    const auto recipients = parsed("name,number\r\nAnn,1\r\nBob,2\r\n");
    EXPECT_THAT(recipients, ElementsAre(named("Ann"), named("Bob")));
    EXPECT_EQ(recipients[1].number, "2");
    EXPECT_EQ(recipients[1].origin, "list.csv:3");
}

TEST(RecipientsCsv, NeedsNoLineEndAfterTheLastRow)
{
    EXPECT_THAT(parsed("name,number\nAnn,1"), ElementsAre(named("Ann")));
}

TEST(RecipientsCsv, TakesQuotedFieldsWithCommasAndMarks)
{
    const auto recipients = parsed("name,number,organization\n\"O'Neil Ann\",1,\"The \"\"Acme\"\", Co\"\n");
    EXPECT_THAT(recipients, ElementsAre(named("O'Neil Ann")));
    EXPECT_EQ(recipients[0].organization, "The \"Acme\", Co");
}

TEST(RecipientsCsv, KeepsNamesOfAnyScript)
{
    EXPECT_THAT(parsed("name,number\nZoë Ærøskøbing,1\n田中,2\n"),
                ElementsAre(named("Zoë Ærøskøbing"), named("田中")));
}

TEST(RecipientsCsv, PassesOverBlanksAroundFieldsAndEmptyLines)
{
    const auto recipients = parsed("name, number\n\n  Ann , 1 \n   \nBob,2\n");
    EXPECT_THAT(recipients, ElementsAre(named("Ann"), named("Bob")));
    EXPECT_EQ(recipients[0].origin, "list.csv:3");
    EXPECT_EQ(recipients[1].origin, "list.csv:5");
}

TEST(RecipientsCsv, AColumnThatIsNotKnownIsLeftOutAndTold)
{
    EXPECT_THAT(parsed("name,number,colour\nAnn,1,red\n"), ElementsAre(named("Ann")));
    EXPECT_THAT(told, ElementsAre("list.csv: 1 column is not used: colour"));
    EXPECT_THAT(refusal("size,colour\n1,red\n"),
                StartsWith("list.csv:1: unknown column \"size\"; the columns are name, number"));
}

TEST(RecipientsCsv, RefusesAColumnThatStandsTwice)
{
    EXPECT_EQ(refusal("name,number,name\nAnn,1,Bob\n"), "list.csv:1: the column name stands twice");
}

TEST(RecipientsCsv, RefusesAListWithoutNumbers)
{
    EXPECT_THAT(refusal("name,phone\nAnn,1\n"), StartsWith("list.csv:1: the column number is missing"));
}

TEST(RecipientsCsv, WhoseNameIsMissingIsCalledByTheNumber)
{
    EXPECT_THAT(parsed("number\n+49 30-1\n"), ElementsAre(named("49 30-1")));
    EXPECT_THAT(parsed("name,number\n,555\n   ,556\n"), ElementsAre(named("555"), named("556")));
    EXPECT_THAT(parsed("555-1234\n555-1235\n"), ElementsAre(named("555-1234"), named("555-1235")));
}

TEST(RecipientsCsv, RefusesAnEmptyList)
{
    EXPECT_THAT(refusal(""), StartsWith("list.csv:1: the first line must name the columns"));
    EXPECT_THAT(refusal("\n\n"), StartsWith("list.csv:1: the first line must name the columns"));
}

TEST(RecipientsCsv, RefusesAListWithoutRows)
{
    EXPECT_THAT(refusal("name,number\n"), StartsWith("list.csv:1: no recipient follows"));
}

TEST(RecipientsCsv, RefusesARowWithTooManyOrTooFewFields)
{
    EXPECT_EQ(refusal("name,number\nAnn,1\nBob\n"), "list.csv:3: has 1 fields where the first line names 2");
    EXPECT_EQ(refusal("name,number\nAnn,1,2\n"), "list.csv:2: has 3 fields where the first line names 2");
}

TEST(RecipientsCsv, NamesEveryRowThatIsRefused)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(refusal("name,number\nA=B,1\nBob\n***,2\nAnn,3\n"),
              "list.csv: no recipient is taken, with 3 refused; --rename takes 1 of them under other names");
    const auto lines = testing::internal::GetCapturedStderr();
    EXPECT_THAT(lines, HasSubstr("list.csv:2: \"A=B\": The Name must not contain \"=\""));
    EXPECT_THAT(lines, HasSubstr("list.csv:3: has 1 fields where the first line names 2"));
    EXPECT_THAT(lines, HasSubstr("list.csv:4: \"***\": The Name must not contain \"*\""));
}

TEST(RecipientsCsv, RenamesWhereThatIsWanted)
{
    EXPECT_THAT(refusal("name,number\nA=B,1\n"),
                testing::AllOf(StartsWith("list.csv:2: \"A=B\": The Name must not contain"),
                               testing::EndsWith("; --rename changes the name")));
    RecipientsReading reading;
    reading.rename = true;
    EXPECT_THAT(parsed("name,number\nA=B,1\nAnn,2\n", reading), ElementsAre(named("A B"), named("Ann")));
    EXPECT_THAT(told, ElementsAre("list.csv:2: \"A=B\" becomes \"A B\""));
}

TEST(RecipientsCsv, TakesTheExportsOfAddressBooks)
{
    const auto recipients = parsed("Vorname;Nachname;Firma;Fax privat;Fax gesch\xe4"
                                   "ftlich;Telefon gesch\xe4"
                                   "ftlich\r\n"
                                   "J\xfcrgen;Gro\xdf;K\xe4se AG;030 2;030 1 Durchwahl 7;030 9\r\n"
                                   "Ohne;Fax;;;;030 8\r\n");
    ASSERT_THAT(recipients, ElementsAre(named("J\u00fcrgen Gro\u00df")));
    EXPECT_EQ(recipients[0].number, "030 1,7");
    EXPECT_EQ(recipients[0].phone, "030 9");
    EXPECT_THAT(told,
                ElementsAre("list.csv: read as windows-1252; say --recipients-charset when names look wrong",
                            "list.csv: 1 person without a fax number was passed over",
                            "list.csv: 1 further fax number is not used, for everybody gets one fax"));
}

TEST(RecipientsCsv, PassesOverTheGroupsOfAnExportedPhonebook)
{
    EXPECT_THAT(
        parsed("name,number,organization,phone,email,type,members\nAnn,1,,,,entry,\nTeam,,,,,group,Ann\n"),
        ElementsAre(named("Ann")));
    EXPECT_THAT(
        told, ElementsAre("list.csv: 1 group was passed over, for its members stand in the list themselves"));
}

TEST(RecipientsCsv, AListOfNobodyWithAFaxIsRefused)
{
    EXPECT_EQ(refusal("Vorname,Fax\nAnn,\n"), "list.csv: holds nobody with a fax number");
}

TEST(RecipientsCsv, RefusesARowWithoutNumber)
{
    EXPECT_EQ(refusal("name,number\nAnn,\n"), "list.csv:2: the fax number is missing");
}

TEST(RecipientsCsv, RefusesAQuoteThatIsNotClosedAtTheLineWhereItsRowBegins)
{
    EXPECT_THAT(refusal("name,number\nAnn,1\n\"Bob,2\nCid,3\n"),
                StartsWith("list.csv:3: a quoted field is not closed"));
}

TEST(RecipientsCsv, RefusesQuotesAmidAField)
{
    EXPECT_THAT(refusal("name,number\nA\"n\"n,1\n"),
                StartsWith("list.csv:2: quotation marks stand amid a field"));
    EXPECT_THAT(refusal("name,number\n\"Ann\"x,1\n"),
                StartsWith("list.csv:2: quotation marks stand amid a field"));
}

TEST(RecipientsCsv, RefusesALineBreakWithinAField)
{
    EXPECT_EQ(refusal("name,number,organization\nAnn,1,\"Acme\nInc\"\n"),
              "list.csv:2: the organization holds a line break or control character");
}

TEST(RecipientsCsv, CountsTheLinesOfRowsBehindALineBreak)
{
    EXPECT_THAT(refusal("name,number\n\"A\n\nB\",1\n"),
                StartsWith("list.csv:2: the name holds a line break"));
    EXPECT_THAT(refusal("name,number\nAnn,\"1\n\n\"2\n"),
                StartsWith("list.csv:2: quotation marks stand amid"));
}

TEST(RecipientsCsv, RefusesNulBytes)
{
    EXPECT_THAT(refusal(std::string("name,number\nA\0nn,1\n", 19)),
                StartsWith("list.csv:2: holds a NUL byte"));
}

TEST(RecipientsCsv, RefusesTextThatIsNotWhatItIsSaidToBe)
{
    RecipientsReading reading;
    reading.text.charset = "UTF-8";
    EXPECT_THAT(failureLine([&] { parsed("name,number\nAnn,1\nZo\xeb,2\n", reading); }),
                StartsWith("list.csv:3: is not UTF-8"));
}

TEST(RecipientsCsv, ReadsUtf16)
{
    std::string text("\xff\xfe");
    for (const char character : std::string("number\n5551\n"))
        text += {character, '\0'};
    EXPECT_THAT(parsed(text), ElementsAre(named("5551")));
}

TEST(RecipientsCsv, NamesAFileThatCannotBeRead)
{
    EXPECT_THAT(failureLine([] { readRecipientsCsv("/nonexistent/list.csv"); }),
                StartsWith("/nonexistent/list.csv: cannot be read"));
    EXPECT_THAT(failureLine([] { readRecipientsCsv("/"); }), StartsWith("/: cannot be read"));
}

TEST(RecipientsCsv, StopsReadingAFileWithoutEnd)
{
    EXPECT_THAT(failureLine([] { readRecipientsCsv("/dev/zero"); }), HasSubstr("larger than 64 MiB"));
}

} // namespace
} // namespace quelm
