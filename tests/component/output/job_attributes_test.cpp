// The attribute lines of a fax job: which, in which order and in how many writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/calls.h"
#include "tests/support/component_test.h"
#include "tests/support/recording_writer.h"

using fake::RecordingWriter;

namespace {

using Writes = std::vector<RecordingWriter::Write>;

/// One option value and the line that it gives.
struct OptionLine {
    int value;
    const char* line;
};

constexpr OptionLine confirmationLines[] = {
    {0, "OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"},
    {1, "OID_ATT_FAX_CONFIRMATION_SHEET FALSE;\r\n"},
    {2, "OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"}, // an unknown value repeats the job type
    {-1, "OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"},
};

constexpr OptionLine resolutionLines[] = {
    {0, "OID_ATT_FAX_RESOLUTION 0;\r\n"}, // Standard
    {1, "OID_ATT_FAX_RESOLUTION 2;\r\n"}, // Superfine
    {2, "OID_ATT_FAX_RESOLUTION 1;\r\n"}, // Fine
    {3, nullptr},
    {-1, nullptr},
};

constexpr OptionLine speedLines[] = {
    {0, "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_FORCED_4800;\r\n"},
    {1, "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n"},
    {2, "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n"},
    {3, nullptr},
    {-1, nullptr},
};

std::string withPrefix(const std::string& prefix, const char* line)
{
    return line != nullptr ? prefix + line : "";
}

} // namespace

class JobAttributesTest : public StartedComponentTest {
protected:
    void choosePjl() { job().setFaxParameter(host::in("PDLMode"), host::in("PJL")); }

    Writes serialize()
    {
        RecordingWriter writer;
        EXPECT_EQ(job().serializeFaxJob(&writer), 1);
        return writer.writes;
    }

    std::string stream()
    {
        RecordingWriter writer;
        EXPECT_EQ(job().serializeFaxJob(&writer), 1);
        return writer.stream();
    }
};

TEST_F(JobAttributesTest, ADefaultJobWithOneRecipientReceivesExactlyTheseWrites)
{
    host.featureValues = {{"LanFax Cover Sheet Option", 0},
                          {"LanFaxConfSheet", 0},
                          {"LanFax Resolution", 0},
                          {"LanFax Send Speed", 1}};
    addRecipient("Ann", "555-1234");
    EXPECT_EQ(serialize(), (Writes{
                               {"writeString", "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n"},
                               {"writeString", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"},
                               {"writeString", "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"
                                               "%%OID_ATT_FAX_RESOLUTION 0;\r\n"
                                               "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n"},
                               {"writeText", "%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n"},
                               {"writeString", "%%QLMbegin\r\n"},
                               {"writeString", "%%QLMend\r\n"},
                           }));
}

TEST_F(JobAttributesTest, APjlJobHasItsOwnPrefixAndNoBracketPair)
{
    choosePjl();
    job().dialingPrefix = "9";
    addRecipient("Ann", "555-1234")->setRecipientData("RecipientMailbox", "12");
    EXPECT_EQ(serialize(), (Writes{
                               {"writeString", "@PJL COMMENT OID_ATT_FAX_COVER_SHEET FALSE;\r\n"},
                               {"writeString", "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"},
                               {"writeString", "@PJL COMMENT OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"
                                               "@PJL COMMENT OID_ATT_FAX_RESOLUTION 0;\r\n"
                                               "@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n"},
                               {"writeText", "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n"
                                             "@PJL COMMENT OID_ATT_FAX_MAILBOX \"12\";\r\n"},
                           }));
}

TEST_F(JobAttributesTest, ReadsEveryOptionAtTheMomentOfWriting)
{
    addRecipient("Ann", "1");
    job().creditCard = "4711";
    host.journal.clear();
    serialize();
    EXPECT_EQ(host.journal.calls(), lines({
                                        R"(feature "LanFax Cover Sheet Option" -> 0)",
                                        R"(writeString "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n")",
                                        R"(writeString "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n")",
                                        R"(feature "LanFaxConfSheet" -> 0)",
                                        R"(feature "LanFax Resolution" -> 0)",
                                        R"(feature "LanFax Send Speed" -> 2)",
                                        R"(writeString "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n)"
                                        R"(%%OID_ATT_FAX_RESOLUTION 0;\r\n)"
                                        R"(%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n")",
                                        R"(writeText "%%OID_ATT_FAX_DESTINATION_PHONE "1";\r\n")",
                                        R"(feature "LanFax Send Time" -> 0)",
                                        R"(writeString "%%QLMbegin\r\n")",
                                        R"(writeString "%%OID_ATT_CREDIT_CARD "4711";\r\n")",
                                        R"(writeString "%%QLMend\r\n")",
                                    }));
}

TEST_F(JobAttributesTest, OnlyTheValueOneMeansACoverSheet)
{
    for (int value : {0, 1, 2, -1}) {
        host.featureValues["LanFax Cover Sheet Option"] = value;
        EXPECT_EQ(serialize().front().text, value == 1 ? "%%OID_ATT_FAX_COVER_SHEET TRUE;\r\n"
                                                       : "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n");
    }
}

TEST_F(JobAttributesTest, TheCoverLineFollowsTheOptionAndNotTheJobsField)
{
    job().faxCoverPage = true;
    EXPECT_EQ(serialize().front().text, "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n");
}

TEST_F(JobAttributesTest, TheJobTypeLineAloneEndsInABareLineFeed)
{
    EXPECT_EQ(serialize().at(1).text, "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n");
}

TEST_F(JobAttributesTest, EveryCombinationOfOptionsGivesItsLinesInOneWrite)
{
    for (bool pjl : {false, true}) {
        if (pjl)
            choosePjl();
        const std::string prefix = pjl ? "@PJL COMMENT " : "%%";
        for (const OptionLine& confirmation : confirmationLines) {
            for (const OptionLine& resolution : resolutionLines) {
                for (const OptionLine& speed : speedLines) {
                    host.featureValues = {{"LanFaxConfSheet", confirmation.value},
                                          {"LanFax Resolution", resolution.value},
                                          {"LanFax Send Speed", speed.value}};
                    EXPECT_EQ(serialize().at(2).text, withPrefix(prefix, confirmation.line) +
                                                          withPrefix(prefix, resolution.line) +
                                                          withPrefix(prefix, speed.line))
                        << confirmation.value << ' ' << resolution.value << ' ' << speed.value;
                }
            }
        }
    }
}

TEST_F(JobAttributesTest, AnUnknownConfirmationValueWritesTheJobTypeASecondTime)
{
    host.featureValues["LanFaxConfSheet"] = 5;
    const Writes writes = serialize();
    EXPECT_EQ(writes.at(1).text, "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n");
    EXPECT_EQ(writes.at(2).text, "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"
                                 "%%OID_ATT_FAX_RESOLUTION 0;\r\n"
                                 "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n");
}

TEST_F(JobAttributesTest, RecipientsAreWrittenInTheOrderOfTheList)
{
    addRecipient("Carla", "3");
    addRecipient("Anne", "1")->setRecipientData("RecipientMailbox", "77");
    addRecipient("Bernard", "2");
    addPick("Dora", "4");
    const Writes writes = serialize();
    ASSERT_EQ(writes.size(), 8U);
    EXPECT_EQ(writes[3], (RecordingWriter::Write{"writeText", "%%OID_ATT_FAX_DESTINATION_PHONE \"3\";\r\n"}));
    EXPECT_EQ(writes[4], (RecordingWriter::Write{"writeText", "%%OID_ATT_FAX_DESTINATION_PHONE \"1\";\r\n"
                                                              "%%OID_ATT_FAX_MAILBOX \"77\";\r\n"}));
    EXPECT_EQ(writes[5], (RecordingWriter::Write{"writeText", "%%OID_ATT_FAX_DESTINATION_PHONE \"2\";\r\n"}));
}

TEST_F(JobAttributesTest, TheDialingPrefixLeadsEveryNumber)
{
    addRecipient("Anne", "1");
    addRecipient("Bernard", "2");
    job().dialingPrefix = "00";
    const Writes writes = serialize();
    EXPECT_EQ(writes.at(3).text, "%%OID_ATT_FAX_DESTINATION_PHONE \"00,1\";\r\n");
    EXPECT_EQ(writes.at(4).text, "%%OID_ATT_FAX_DESTINATION_PHONE \"00,2\";\r\n");
}

TEST_F(JobAttributesTest, TheCreditCardStandsInTheBracketPairOfADscJob)
{
    job().creditCard = "4711 \"0815\"";
    EXPECT_TRUE(stream().ends_with("%%QLMbegin\r\n%%OID_ATT_CREDIT_CARD \"4711 \"0815\"\";\r\n%%QLMend\r\n"));
}

TEST_F(JobAttributesTest, TheCreditCardStandsAloneInAPjlJob)
{
    choosePjl();
    job().creditCard = "4711";
    const std::string written = stream();
    EXPECT_TRUE(written.ends_with("G3_AUTO;\r\n@PJL COMMENT OID_ATT_CREDIT_CARD \"4711\";\r\n")) << written;
    EXPECT_EQ(written.find("QLM"), std::string::npos);
}

TEST_F(JobAttributesTest, ADscJobWithoutACreditCardHasAnEmptyBracketPair)
{
    EXPECT_TRUE(stream().ends_with("G3_AUTO;\r\n%%QLMbegin\r\n%%QLMend\r\n"));
}

TEST_F(JobAttributesTest, NothingOfADelayedSendReachesTheStream)
{
    addRecipient("Ann", "1");
    const Writes now = serialize();
    host.choose("LanFax Send Time", 1);
    host.spin("SendAtHr", 9);
    host.spin("SendAtMin", 30);
    host.choose("SendAtAmPm", 1);
    host.journal.clear();

    EXPECT_EQ(serialize(), now);

    EXPECT_EQ(host.journal.count("feature \"SendAt"), 3) << "the line is composed, and then dropped";
}

TEST_F(JobAttributesTest, OnlyTheValueOneComposesADelayedSend)
{
    for (int value : {0, 2, -1}) {
        host.featureValues["LanFax Send Time"] = value;
        serialize();
    }
    EXPECT_EQ(host.journal.count("feature \"SendAt"), 0);
}

TEST_F(JobAttributesTest, ANullWriterIsRefusedAndNothingIsRead)
{
    addRecipient("Ann", "1");
    host.journal.clear();
    EXPECT_EQ(job().serializeFaxJob(nullptr), 0);
    EXPECT_EQ(host.journal.all(), "");
}

TEST_F(JobAttributesTest, FailedWritesStopNothing)
{
    addRecipient("Anne", "1");
    addRecipient("Bernard", "2");
    RecordingWriter writer;
    writer.failFrom = 1;
    EXPECT_EQ(job().serializeFaxJob(&writer), 1);
    EXPECT_EQ(writer.writes, serialize());
}

TEST_F(JobAttributesTest, AJobWithoutRecipientsWritesNoDestination)
{
    RecordingWriter writer;
    EXPECT_EQ(job().serializeRecipients(&writer), 1);
    EXPECT_TRUE(writer.writes.empty());
    EXPECT_EQ(serialize().size(), 5U);
}

TEST_F(JobAttributesTest, RecipientsAreWrittenByThemselvesToo)
{
    addRecipient("Anne", "1");
    RecordingWriter writer;
    EXPECT_EQ(job().serializeRecipients(&writer), 1);
    EXPECT_EQ(writer.writes, (Writes{{"writeText", "%%OID_ATT_FAX_DESTINATION_PHONE \"1\";\r\n"}}));
}

TEST_F(JobAttributesTest, OptionsAreWrittenWithoutBracketAndCreditCard)
{
    job().creditCard = "4711";
    RecordingWriter writer;
    job().serializeFaxOptions(&writer);
    EXPECT_EQ(writer.writes.size(), 3U);
    EXPECT_EQ(writer.stream().find("CREDIT"), std::string::npos);
}

TEST_F(JobAttributesTest, WritingTwiceGivesTheSameStream)
{
    addRecipient("Anne", "1")->setRecipientData("RecipientMailbox", "12");
    EXPECT_EQ(stream(), stream());
}

TEST_F(JobAttributesTest, AJobWithRecipientsMayBeSent)
{
    addRecipient("Ann", "1");
    host.journal.clear();
    EXPECT_EQ(job().CheckFaxInfo(), 1);
    EXPECT_EQ(host.journal.effects(), "");
}

TEST_F(JobAttributesTest, AJobWithoutRecipientsIsRefusedAndTheFaxDialogShownAgain)
{
    host.close("Lan Fax Window");
    host.journal.clear();
    addPick("Ann", "1");
    EXPECT_EQ(job().CheckFaxInfo(), 0);
    EXPECT_EQ(host.journal.effects(),
              lines({R"(set "Lan Fax Window" Visibility on)", R"(set "Lan Fax TabSet" Value 0)"}));
    EXPECT_TRUE(host.visible("Lan Fax Window"));
}
