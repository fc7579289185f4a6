// The cover page: the recipient text, the sixteen values, and the two writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "frame/descriptor.h"
#include "host/calls.h"
#include "tests/support/component_test.h"
#include "tests/support/recording_writer.h"

#include <array>

using fake::RecordingWriter;

namespace {

/// The values of a cover page in the order of the page's head, and that head as it is written.
struct PageValues {
    std::array<std::string, 5> recipient = {}; ///< name, company, phone, fax, e-mail
    std::array<std::string, 5> sender = {};    ///< what stands on the lines name, company, phone, fax, e-mail
    std::string note = {};
    std::array<std::string, 5> clock = {"2024", "03", "05", "14", "07"};

    std::string head() const
    {
        return "\n"
               "%!PS-Adobe-3.0\n"
               "%%Page: FaxCover 1\n"
               "%%BeginPageSetup\n"
               "     8 dict begin\n"
               "     /QLMFaxCoverSheetParameters <<\n"
               "       /RecipientName    (" +
               recipient[0] +
               ")\n"
               "       /RecipientCompany (" +
               recipient[1] +
               ")\n"
               "       /RecipientPhone   (" +
               recipient[2] +
               ")\n"
               "       /RecipientFax     (" +
               recipient[3] +
               ")\n"
               "       /RecipientEmail   (" +
               recipient[4] +
               ")\n"
               "       /SenderName       (" +
               sender[0] +
               ")\n"
               "       /SenderCompany    (" +
               sender[1] +
               ")\n"
               "       /SenderPhone      (" +
               sender[2] +
               ")\n"
               "       /SenderFax        (" +
               sender[3] +
               ")\n"
               "       /SenderEmail      (" +
               sender[4] +
               ")\n"
               "       /CoverNote        [" +
               note +
               "]\n"
               "       /Year             " +
               clock[0] +
               "\n"
               "       /Month            " +
               clock[1] +
               "\n"
               "       /MonthDay         " +
               clock[2] +
               "\n"
               "       /Hour             " +
               clock[3] +
               "\n"
               "       /Minute           " +
               clock[4] +
               "\n"
               "     >> def\n";
    }
};

const std::array<std::string, 5> senderInStoredOrder = {"F1", "Sue", "Sales", "P1", "sue@s"};
const std::array<std::string, 5> senderOnItsLines = {"Sue", "Sales", "P1", "F1", "sue@s"};

} // namespace

class CoverSheetTest : public StartedComponentTest {
protected:
    CoverSheetTest()
    {
        job().senderFaxNumber = "F1";
        job().senderName = "Sue";
        job().senderOrganization = "Sales";
        job().senderPhone = "P1";
        job().senderEmail = "sue@s";
        job().customText = "All of you";
    }

    std::string recipientText(std::string text = "")
    {
        EXPECT_TRUE(job().getCoverSheetRecipientNameText(&text));
        return text;
    }

    /// The head of the page as it is written.
    std::string head()
    {
        RecordingWriter writer;
        EXPECT_EQ(job().serializeFaxCoverSheet(&writer), 1);
        return writer.writes.empty() ? "" : writer.writes.front().text;
    }

    void expectRefused()
    {
        RecordingWriter writer;
        EXPECT_EQ(job().serializeFaxCoverSheet(&writer), 0);
        EXPECT_TRUE(writer.writes.empty());
    }
};

// --- The templates ---------------------------------------------------------------------------

TEST_F(CoverSheetTest, TheTemplatesHaveTheirFixedSizes)
{
    EXPECT_EQ(std::string(pT40CoverPageHeader).size(), 593U);
    EXPECT_EQ(std::string(pT40CoverPageTrailer).size(), 12848U);
}

TEST_F(CoverSheetTest, TheHeaderTemplateIsThePageHeadWithSixteenSlots)
{
    PageValues slots;
    slots.recipient.fill("%s");
    slots.sender.fill("%s");
    slots.note = "%s";
    slots.clock.fill("%s");
    std::string expected = slots.head();
    for (std::string dsc : {"%!PS", "%%Page", "%%Begin"}) {
        std::string doubled;
        for (char c : dsc)
            doubled += c == '%' ? "%%" : std::string(1, c);
        expected.replace(expected.find(dsc), dsc.size(), doubled);
    }
    EXPECT_EQ(pT40CoverPageHeader, expected);
}

// --- The recipient text ----------------------------------------------------------------------

TEST_F(CoverSheetTest, CustomTextReplacesTheNamesOnlyWhenRecipientsAreShown)
{
    addRecipient("Ann", "1");
    job().showCustomText = true;
    EXPECT_EQ(recipientText("before"), "");
    job().showRecipientInfo = true;
    EXPECT_EQ(recipientText("before"), "All of you");
}

TEST_F(CoverSheetTest, WithoutRecipientInformationTheTextIsEmptied)
{
    addRecipient("Ann", "1");
    EXPECT_EQ(recipientText("before"), "");
}

TEST_F(CoverSheetTest, WithoutRecipientsThereIsNoTextOfNames)
{
    job().showRecipientInfo = true;
    std::string text = "before";
    EXPECT_FALSE(job().getCoverSheetRecipientNameText(&text));
    EXPECT_EQ(text, "before");
}

TEST_F(CoverSheetTest, NamesAreJoinedByCommaAndBlank)
{
    job().showRecipientInfo = true;
    addRecipient("Ann", "1");
    EXPECT_EQ(recipientText(), "Ann");
    addRecipient("Bob", "2");
    addRecipient("Carla", "3");
    EXPECT_EQ(recipientText(), "Ann, Bob, Carla");
}

TEST_F(CoverSheetTest, NamesAreAppendedToWhatAnEarlierCallLeft)
{
    job().showRecipientInfo = true;
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    EXPECT_EQ(recipientText("Ann, Bob"), "Ann, BobAnn, Bob");
}

TEST_F(CoverSheetTest, AMissingNameAddsNothingButItsSeparator)
{
    job().showRecipientInfo = true;
    addRecipient("", "1");
    addRecipient("Bob", "2");
    EXPECT_EQ(recipientText(), ", Bob");
}

struct LengthCase {
    const char* name;
    std::vector<std::string> names;
    std::string text;
};

class RecipientTextLengthTest : public CoverSheetTest, public testing::WithParamInterface<LengthCase> {};

TEST_P(RecipientTextLengthTest, StopsAfterTheNameThatPassesThirtyBytesAndCutsNothing)
{
    job().showRecipientInfo = true;
    for (const std::string& name : GetParam().names)
        addRecipient(name, "1");
    EXPECT_EQ(recipientText(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Every, RecipientTextLengthTest,
    testing::Values(
        LengthCase{
            "SeparatorCounts", {"12345678901234567890123456789", "Bob"}, "12345678901234567890123456789, "},
        LengthCase{"ExactlyThirtyWithTheSeparatorGoesOn",
                   {"1234567890123456789012345678", "Bob", "Carla"},
                   "1234567890123456789012345678, Bob, "},
        LengthCase{"OneLongNameIsNotCut", {longText(5000), "Bob"}, longText(5000) + ", "},
        LengthCase{"TheLastNameHasNoSeparator",
                   {"1234567890123456789012345678", "Bob"},
                   "1234567890123456789012345678, Bob"},
        // Fifteen letters of two bytes each, and the separator: 32 bytes, 17 letters.
        LengthCase{"BytesCountAndNotLetters",
                   {"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4"
                    "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4",
                    "Bob"},
                   "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4"
                   "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4, "}),
    [](const auto& test) { return test.param.name; });

// --- The values ------------------------------------------------------------------------------

TEST_F(CoverSheetTest, OneRecipientIsShownWithItsFields)
{
    job().showRecipientInfo = true;
    addRecipient("Ann", "5551234")->setRecipientData("RecipientOrganization", "Acme");
    EXPECT_EQ(head(), (PageValues{.recipient = {"Ann", "Acme", "", "5551234", ""}}.head()));
}

TEST_F(CoverSheetTest, OneRecipientsPhoneAndEmailHaveTheirOwnLines)
{
    job().showRecipientInfo = true;
    auto* ann = addRecipient("Ann", "(555) 1-2");
    ann->setRecipientData("RecipientPhone", "777");
    ann->setRecipientData("RecipientEmail", "ann@acme");
    EXPECT_EQ(head(), (PageValues{.recipient = {"Ann", "", "777", "(555) 1-2", "ann@acme"}}.head()));
}

TEST_F(CoverSheetTest, ARecipientWithoutAnyFieldLeavesEmptyLines)
{
    job().showRecipientInfo = true;
    addRecipient("", "");
    EXPECT_EQ(head(), PageValues{}.head());
}

TEST_F(CoverSheetTest, OneRecipientIsHiddenWithoutRecipientInformation)
{
    addRecipient("Ann", "5551234");
    EXPECT_EQ(head(), PageValues{}.head());
}

TEST_F(CoverSheetTest, SenderInformationStandsOnItsLinesWithOneRecipient)
{
    job().showSenderInfo = true;
    addRecipient("Ann", "5551234");
    EXPECT_EQ(head(), PageValues{.sender = senderOnItsLines}.head());
    job().showRecipientInfo = true;
    EXPECT_EQ(head(),
              (PageValues{.recipient = {"Ann", "", "", "5551234", ""}, .sender = senderOnItsLines}.head()));
}

TEST_F(CoverSheetTest, SenderInformationStandsOnItsLinesWithoutRecipients)
{
    job().showSenderInfo = true;
    EXPECT_EQ(head(), PageValues{.sender = senderOnItsLines}.head());
}

TEST_F(CoverSheetTest, CustomTextReplacesOneRecipientsNameOnly)
{
    job().showRecipientInfo = true;
    job().showCustomText = true;
    addRecipient("Ann", "5551234")->setRecipientData("RecipientOrganization", "Acme");
    EXPECT_EQ(head(), (PageValues{.recipient = {"All of you", "Acme", "", "5551234", ""}}.head()));
}

TEST_F(CoverSheetTest, SeveralRecipientsAreNamedInOneLineAndTheSenderIsFilledInStoredOrderUnasked)
{
    job().showRecipientInfo = true;
    for (const char* name : {"Ann", "Bob", "Carla"})
        addRecipient(name, "1")->setRecipientData("RecipientEmail", "x@y");
    EXPECT_EQ(
        head(),
        (PageValues{.recipient = {"Ann, Bob, Carla", "", "", "", ""}, .sender = senderInStoredOrder}.head()));
}

TEST_F(CoverSheetTest, SeveralRecipientsFillTheSenderInStoredOrderWhenAskedToo)
{
    job().showSenderInfo = true;
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    EXPECT_EQ(head(), PageValues{.sender = senderInStoredOrder}.head());
}

TEST_F(CoverSheetTest, TheNamesOfSeveralRecipientsStopPastThirtyBytes)
{
    job().showRecipientInfo = true;
    for (const char* name : {"Ann Anderson", "Bernard Bloomsbury", "Carla"})
        addRecipient(name, "1");
    EXPECT_EQ(head(), (PageValues{.recipient = {"Ann Anderson, Bernard Bloomsbury, ", "", "", "", ""},
                                  .sender = senderInStoredOrder}
                           .head()));
}

TEST_F(CoverSheetTest, CustomTextReplacesSeveralNames)
{
    job().showRecipientInfo = true;
    job().showCustomText = true;
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    EXPECT_EQ(
        head(),
        (PageValues{.recipient = {"All of you", "", "", "", ""}, .sender = senderInStoredOrder}.head()));
}

TEST_F(CoverSheetTest, CustomTextIsShownToSeveralEvenWithoutRecipientInformation)
{
    job().showCustomText = true;
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    EXPECT_EQ(
        head(),
        (PageValues{.recipient = {"All of you", "", "", "", ""}, .sender = senderInStoredOrder}.head()));
}

TEST_F(CoverSheetTest, WritingTheSamePageAgainAddsTheNamesToThoseOfTheFirstTime)
{
    job().showRecipientInfo = true;
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    head();
    EXPECT_EQ(head(),
              (PageValues{.recipient = {"Ann, BobAnn, Bob", "", "", "", ""}, .sender = senderInStoredOrder}
                   .head()));
}

TEST_F(CoverSheetTest, SeveralRecipientsWithoutInformationShowWhatAnEarlierPageLeft)
{
    job().showRecipientInfo = true;
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    head();
    job().showRecipientInfo = false;
    EXPECT_EQ(head(),
              (PageValues{.recipient = {"Ann, Bob", "", "", "", ""}, .sender = senderInStoredOrder}.head()));
}

TEST_F(CoverSheetTest, CustomTextIsEnoughForAPageWithoutRecipients)
{
    job().showRecipientInfo = true;
    job().showCustomText = true;
    EXPECT_EQ(head(), PageValues{}.head());
}

TEST_F(CoverSheetTest, TheNoteIsInsertedAsTheTextOfAnArray)
{
    job().coverNotes = " (Call me) ";
    EXPECT_EQ(head(), PageValues{.note = " (Call me) "}.head());
}

TEST_F(CoverSheetTest, ANoteWithBracketsBecomesTwoLines)
{
    host.choose("LanFax Cover Sheet Option", 1);
    host.type("LanFax Cover Sheet Notes", "a) (b");
    host.press("LanFax OK Button");
    EXPECT_EQ(head(), PageValues{.note = " (a) (b) "}.head());
}

TEST_F(CoverSheetTest, NothingIsEscapedOrTakenForAFormat)
{
    job().showRecipientInfo = true;
    job().showSenderInfo = true;
    job().senderName = "50% (\\) %s %n";
    addRecipient("(Ann\\", "%d");
    EXPECT_EQ(head(), (PageValues{.recipient = {"(Ann\\", "", "", "%d", ""},
                                  .sender = {"50% (\\) %s %n", "Sales", "P1", "F1", "sue@s"}}
                           .head()));
}

TEST_F(CoverSheetTest, APageLongerThan8192BytesIsWrittenWhole)
{
    job().showRecipientInfo = true;
    job().showCustomText = true;
    job().customText = longText(20000);
    addRecipient("Ann", "1");
    EXPECT_EQ(head(), (PageValues{.recipient = {longText(20000), "", "", "1", ""}}.head()));
}

// --- The clock -------------------------------------------------------------------------------

TEST_F(CoverSheetTest, ReadsTheClockOnceAndFormatsItFiveTimes)
{
    head();
    EXPECT_EQ(host.journal.count("time "), 5);
    EXPECT_EQ(host.journal.calls().substr(0, host.journal.calls().find("writeText")),
              lines({R"(time "%Y" size 8 flag 1)", R"(time "%m" size 4 flag 0)", R"(time "%d" size 4 flag 0)",
                     R"(time "%H" size 4 flag 0)", R"(time "%M" size 4 flag 0)"}));
}

TEST_F(CoverSheetTest, AllFiveValuesDescribeOneMomentEvenWhenTheYearEnds)
{
    host.clock = {fake::localTime(2024, 12, 31, 23, 59), fake::localTime(2025, 1, 1, 0, 0)};
    EXPECT_EQ(head(), (PageValues{.clock = {"2024", "12", "31", "23", "59"}}.head()));
    EXPECT_EQ(head(), (PageValues{.clock = {"2025", "01", "01", "00", "00"}}.head()));
}

TEST_F(CoverSheetTest, HoursAreHandedOverByThe24HourClock)
{
    host.clock = {fake::localTime(2024, 3, 5, 0, 5), fake::localTime(2024, 3, 5, 13, 0)};
    EXPECT_EQ(head(), (PageValues{.clock = {"2024", "03", "05", "00", "05"}}.head()));
    EXPECT_EQ(head(), (PageValues{.clock = {"2024", "03", "05", "13", "00"}}.head()));
}

// --- The writes ------------------------------------------------------------------------------

TEST_F(CoverSheetTest, HeadAndTrailerAreOneWriteEach)
{
    RecordingWriter writer;
    EXPECT_EQ(job().serializeFaxCoverSheet(&writer), 1);
    EXPECT_EQ(writer.writes, (std::vector<RecordingWriter::Write>{{"writeText", PageValues{}.head()},
                                                                  {"writeText", pT40CoverPageTrailer}}));
}

TEST_F(CoverSheetTest, ANullWriterIsRefusedBeforeTheClockIsRead)
{
    EXPECT_EQ(job().serializeFaxCoverSheet(nullptr), 0);
    EXPECT_EQ(host.journal.all(), "");
}

TEST_F(CoverSheetTest, RecipientInformationWithoutRecipientsWritesNothing)
{
    job().showRecipientInfo = true;
    expectRefused();
    EXPECT_EQ(host.journal.count("time "), 5);
}

TEST_F(CoverSheetTest, AFailedHeadLeavesNothingOfThePage)
{
    RecordingWriter writer;
    writer.failAt = 1;
    EXPECT_EQ(job().serializeFaxCoverSheet(&writer), 0);
    EXPECT_EQ(writer.writes.size(), 1U);
    EXPECT_EQ(writer.stream(), "");
}

TEST_F(CoverSheetTest, AFailedTrailerLeavesTheHeadAlone)
{
    RecordingWriter writer;
    writer.failAt = 2;
    EXPECT_EQ(job().serializeFaxCoverSheet(&writer), 0);
    EXPECT_EQ(writer.stream(), PageValues{}.head());
}
