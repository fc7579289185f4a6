// Decoding phonebook records: the tagged text and the member lists.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/record_format.h"

#include "host/record_database.h"
#include "phonebook/phonebook_state.h"
#include "tests/support/component_test.h"

#include <stdexcept>

class RecordFormatTest : public StartedComponentTest {
protected:
    RecordFormatTest() { ClearLegacyDBRecipientInfo(out); }

    /// Decodes into `out`. The lengths say nothing: a reader goes by the terminators.
    bool parse(std::string data, std::string key = "uAnne")
    {
        LegacyDBRecord record{0, 0, 7, key.data(), data.data()};
        return ParseLegacyPBEntry(&record, out);
    }

    std::string members(std::string value)
    {
        ParseGroupEntry(value, out);
        return out.groupMembers;
    }

    LegacyDBRecipient out;
};

TEST_F(RecordFormatTest, ClearingLeavesNothing)
{
    out.type = 2;
    for (std::string* text : {&out.name, &out.company, &out.faxNumber, &out.voiceNumber, &out.email, &out.blc,
                              &out.faxMailbox, &out.groupMembers})
        *text = "x";
    ClearLegacyDBRecipientInfo(out);
    EXPECT_EQ(out.type, 0);
    for (std::string* text : {&out.name, &out.company, &out.faxNumber, &out.voiceNumber, &out.email, &out.blc,
                              &out.faxMailbox, &out.groupMembers})
        EXPECT_EQ(*text, "");
}

TEST_F(RecordFormatTest, APersonIsReadBackAsWritten)
{
    auto recipient = makeRecipient("Anne", "(555) 1234");
    recipient->setRecipientData("RecipientOrganization", "Acme");
    recipient->setRecipientData("RecipientPhone", "777");
    recipient->setRecipientData("RecipientEmail", "a@b");
    recipient->setRecipientData("RecipientMailbox", "12");
    ASSERT_TRUE(recipient->serializeRecipientToDatabase(personalPBDatabase));

    EXPECT_TRUE(parse(host.savedRecords[0].data));

    EXPECT_EQ(out.type, 1);
    EXPECT_EQ(out.name, "Anne");
    EXPECT_EQ(out.faxNumber, "(555) 1234");
    EXPECT_EQ(out.company, "Acme");
    EXPECT_EQ(out.voiceNumber, "777");
    EXPECT_EQ(out.email, "a@b");
    EXPECT_EQ(out.faxMailbox, "") << "a mailbox does not survive the phonebook";
    EXPECT_EQ(out.blc, "");
    EXPECT_EQ(out.groupMembers, "");
}

TEST_F(RecordFormatTest, AGroupHasItsNameFromTheKey)
{
    EXPECT_TRUE(parse(".sgen\r\n,uAnne,uBernard\r\n.egen\r\n", "gTeam"));
    EXPECT_EQ(out.type, 2);
    EXPECT_EQ(out.name, "Team");
    EXPECT_EQ(out.groupMembers, ",Anne,Bernard,");
}

struct TagField {
    const char* tag;
    std::string LegacyDBRecipient::*field;
};

class TagTest : public RecordFormatTest, public testing::WithParamInterface<TagField> {};

TEST_P(TagTest, IsReadIntoItsField)
{
    const std::string tag = GetParam().tag;
    EXPECT_TRUE(parse(".s" + tag + "\r\nvalue\r\n.e" + tag + "\r\n"));
    EXPECT_EQ(out.*GetParam().field, "value");
    EXPECT_EQ(out.type, 0);
    out.*GetParam().field = "";
    for (const std::string* other : {&out.name, &out.company, &out.faxNumber, &out.voiceNumber, &out.email,
                                     &out.blc, &out.faxMailbox, &out.groupMembers})
        EXPECT_EQ(*other, "");
}

INSTANTIATE_TEST_SUITE_P(Every, TagTest,
                         testing::Values(TagField{"nam", &LegacyDBRecipient::name},
                                         TagField{"cmp", &LegacyDBRecipient::company},
                                         TagField{"fxn", &LegacyDBRecipient::faxNumber},
                                         TagField{"von", &LegacyDBRecipient::voiceNumber},
                                         TagField{"fxm", &LegacyDBRecipient::faxMailbox},
                                         TagField{"eml", &LegacyDBRecipient::email},
                                         TagField{"blc", &LegacyDBRecipient::blc}),
                         [](const auto& test) { return test.param.tag; });

TEST_F(RecordFormatTest, TagsAreLookedUpWithTheFlag)
{
    parse(".sxyz\r\nfoo\r\n.exyz\r\n.snam\r\nAnne\r\n.enam\r\n");
    EXPECT_EQ(host.journal.all(),
              lines({R"(token "xyz" in ",usg,nam,cmp,fxn,von,fxm,eml,blc,dtm,gen," flag true -> 0)",
                     R"(token "nam" in ",usg,nam,cmp,fxn,von,fxm,eml,blc,dtm,gen," flag true -> 2)"}));
}

TEST_F(RecordFormatTest, TheValueOfTheEntryMarkIsIgnored)
{
    EXPECT_TRUE(parse(".susg\r\nwhatever\r\n.eusg\r\n"));
    EXPECT_EQ(out.type, 1);
}

TEST_F(RecordFormatTest, ARecordWithoutFieldsIsDecodedIntoNothing)
{
    for (const char* data : {"", "plain text", "nam\r\nAnne\r\n.enam\r\n", ".enam"}) {
        EXPECT_TRUE(parse(data)) << data;
        EXPECT_EQ(out.type, 0);
        EXPECT_EQ(out.name, "");
    }
}

TEST_F(RecordFormatTest, AFieldWithoutItsEndIsAFailureThatKeepsTheFieldsAheadOfIt)
{
    EXPECT_FALSE(parse(".snam\r\nAnne\r\n"));
    EXPECT_EQ(out.name, "");
    EXPECT_FALSE(parse(".susg\r\n0\r\n.eusg\r\n.scmp\r\nAcme\r\n.ecmp\r\n.snam\r\nAnne\r\n.ecmp\r\n"));
    EXPECT_EQ(out.type, 1);
    EXPECT_EQ(out.company, "Acme");
    EXPECT_EQ(out.name, "");
}

TEST_F(RecordFormatTest, ATagCutShortHasNoEnd)
{
    for (const char* data : {".s", ".sn", ".sna", ".snam"})
        EXPECT_FALSE(parse(data)) << data;
}

TEST_F(RecordFormatTest, UnknownFieldsAndTheDateAreSkipped)
{
    EXPECT_TRUE(parse(".sxyz\r\nfoo\r\n.exyz\r\n.sdtm\r\n2024\r\n.edtm\r\n.snam\r\nAnne\r\n.enam\r\n"));
    EXPECT_EQ(out.name, "Anne");
    EXPECT_EQ(out.type, 0);
}

TEST_F(RecordFormatTest, AnUnknownFieldIsSkippedOnlyWhenItIsClosed)
{
    EXPECT_FALSE(parse(".sxyz\r\nfoo\r\n.snam\r\nAnne\r\n.enam\r\n"));
    EXPECT_EQ(out.name, "");
}

TEST_F(RecordFormatTest, WhiteSpaceAtBothEndsOfAValueGoes)
{
    EXPECT_TRUE(parse(".snam\r\n  Anne \t\r\n.enam\r\n"));
    EXPECT_EQ(out.name, "Anne");
    EXPECT_TRUE(parse(".snam\v\f A  B \n.enam"));
    EXPECT_EQ(out.name, "A  B");
}

TEST_F(RecordFormatTest, LettersOfOtherScriptsAreNoWhiteSpace)
{
    EXPECT_TRUE(parse(".snam\r\n\xC2\xA0\xC3\x85sa\xC2\x85\r\n.enam\r\n"));
    EXPECT_EQ(out.name, "\xC2\xA0\xC3\x85sa\xC2\x85");
}

TEST_F(RecordFormatTest, AFieldWithoutAnyValueAssignsNothing)
{
    out.name = "kept";
    EXPECT_TRUE(parse(".snam.enam.scmp\r\nAcme\r\n.ecmp"));
    EXPECT_EQ(out.name, "kept");
    EXPECT_EQ(out.company, "Acme");
}

TEST_F(RecordFormatTest, AValueOfWhiteSpaceOnlyLeavesTheParserAsAnException)
{
    EXPECT_THROW(parse(".snam\r\n\r\n.enam\r\n"), std::out_of_range);
    EXPECT_THROW(parse(".sgen\r\n\r\n.egen\r\n", "gTeam"), std::out_of_range);
    EXPECT_THROW(parse(".sxyz .exyz"), std::out_of_range);
}

TEST_F(RecordFormatTest, FieldsComeInAnyOrderAndTheLastOfOneTagCounts)
{
    EXPECT_TRUE(parse(
        ".sfxn\r\n1\r\n.efxn\r\n.snam\r\nA\r\n.enam\r\n.susg\r\n0\r\n.eusg\r\n.snam\r\nB\r\n.enam\r\n"));
    EXPECT_EQ(out.type, 1);
    EXPECT_EQ(out.name, "B");
    EXPECT_EQ(out.faxNumber, "1");
}

TEST_F(RecordFormatTest, FieldsThatTheRecordLacksKeepWhatTheyHeld)
{
    out.type = 2;
    out.company = "kept";
    out.groupMembers = ",X,";
    EXPECT_TRUE(parse(".snam\r\nAnne\r\n.enam\r\n"));
    EXPECT_EQ(out.type, 2);
    EXPECT_EQ(out.company, "kept");
    EXPECT_EQ(out.groupMembers, ",X,");
}

TEST_F(RecordFormatTest, OfEntryAndGroupTheLaterMarkCounts)
{
    const std::string entry = ".susg\r\n0\r\n.eusg\r\n";
    const std::string group = ".sgen\r\n,uAnne\r\n.egen\r\n";
    EXPECT_TRUE(parse(entry + group, "gTeam"));
    EXPECT_EQ(out.type, 2);
    ClearLegacyDBRecipientInfo(out);
    EXPECT_TRUE(parse(group + entry, "gTeam"));
    EXPECT_EQ(out.type, 1);
}

TEST_F(RecordFormatTest, ARepeatedMemberListAppends)
{
    EXPECT_TRUE(parse(".sgen\r\n,uAnne\r\n.egen\r\n.sgen\r\n,uBernard\r\n.egen\r\n", "gTeam"));
    EXPECT_EQ(out.groupMembers, ",Anne,Bernard,");
}

TEST_F(RecordFormatTest, AValueEndsAtTheFirstEndOfItsOwnTag)
{
    EXPECT_TRUE(parse(".snam\r\nA.enamB\r\n.enam\r\n"));
    EXPECT_EQ(out.name, "A");
    EXPECT_TRUE(parse(".scmp\r\nA.enamB.snam\r\n.ecmp\r\n"));
    EXPECT_EQ(out.company, "A.enamB.snam");
    EXPECT_EQ(out.name, "A");
}

TEST_F(RecordFormatTest, TheLastLetterOfAnEndTagStaysAtTheFrontOfTheRest)
{
    EXPECT_TRUE(parse(".sab.\r\nfoo\r\n.eab.snam\r\nAnne\r\n.enam\r\n"));
    EXPECT_EQ(out.name, "Anne");
}

TEST_F(RecordFormatTest, AGroupWhoseKeyIsEmptyHasNoName)
{
    EXPECT_TRUE(parse(".sgen\r\n,uAnne\r\n.egen\r\n", "g"));
    EXPECT_EQ(out.name, "");
    EXPECT_TRUE(parse(".sgen\r\n,uAnne\r\n.egen\r\n", ""));
    EXPECT_EQ(out.name, "");
}

TEST_F(RecordFormatTest, DamagedTextsComeToAnEnd)
{
    for (const char* data :
         {".s.e.e.", ".s.e", ".s.s.s.s", ".sabc.eab", ".s\r\n\r\n\r\n.e", ".snam.e.enam", ".eusg.susg"}) {
        ClearLegacyDBRecipientInfo(out);
        try {
            parse(data);
        } catch (const std::out_of_range&) {
            continue; // a value of white space only
        }
        EXPECT_EQ(out.type, 0) << data;
    }
}

TEST_F(RecordFormatTest, LongRecordsAreReadWhole)
{
    EXPECT_TRUE(parse(".snam\r\n" + longText(100000) + "\r\n.enam\r\n"));
    EXPECT_EQ(out.name, longText(100000));
}

TEST_F(RecordFormatTest, TheRecordIsOnlyRead)
{
    std::string key = "uAnne";
    std::string data = ".snam\r\nAnne\r\n.enam\r\n";
    LegacyDBRecord record{1, 2, 3, key.data(), data.data()};
    EXPECT_TRUE(ParseLegacyPBEntry(&record, out));
    EXPECT_EQ(key, "uAnne");
    EXPECT_EQ(data, ".snam\r\nAnne\r\n.enam\r\n");
    EXPECT_EQ(record.recordLength, 1);
    EXPECT_EQ(record.key, key.data());
    EXPECT_EQ(record.data, data.data());
}

// --- Member lists ----------------------------------------------------------------------------

struct MemberList {
    const char* name;
    const char* value;
    const char* members;
};

class MemberListTest : public RecordFormatTest, public testing::WithParamInterface<MemberList> {};

TEST_P(MemberListTest, IsDecodedAs) { EXPECT_EQ(members(GetParam().value), GetParam().members); }

INSTANTIATE_TEST_SUITE_P(
    Every, MemberListTest,
    testing::Values(MemberList{"AsWritten", ",uAnne,uBernard", ",Anne,Bernard,"},
                    MemberList{"ClosedByAComma", ",uAnne,uBernard,", ",Anne,Bernard,"},
                    MemberList{"WithoutALeadingComma", "uAnne,uBernard", ",Anne,Bernard,"},
                    MemberList{"WithAngles", ">A,>B", ",A,B,"},
                    MemberList{"AnAngleWinsOverAnEarlierU", "uA,>B", ",B,"},
                    MemberList{"AUAfterTheLastAngleCounts", ">A,uB", ",A,B,"},
                    MemberList{"EveryUAheadOfAnAngleIsSkipped", "uA,uB,>C,uD", ",C,D,"},
                    MemberList{"NamesMayHoldAU", ",uPaul,uLulu", ",Paul,Lulu,"},
                    MemberList{"NamesMayHoldBlanksAndColons", ",uAnne Marie,uB: C", ",Anne Marie,B: C,"},
                    MemberList{"NamesOfOtherScripts", ",u\xC3\x85sa", ",\xC3\x85sa,"},
                    MemberList{"AnEmptyNameIsKept", ",u,uB", ",,B,"},
                    MemberList{"WithoutAPrefixTheFirstUIsTakenForOne", ",Paul", ",l,"},
                    MemberList{"NoMember", "", ""}, MemberList{"NoPrefixAtAll", ",Anne,Bob", ""},
                    MemberList{"OnlyCommas", ",,,", ""}),
    [](const auto& test) { return test.param.name; });

TEST_F(RecordFormatTest, MembersAreAppendedToThoseThatStandThere)
{
    out.groupMembers = ",Anne,";
    EXPECT_EQ(members(",uBernard"), ",Anne,Bernard,");
}

TEST_F(RecordFormatTest, TheMemberTextItselfStaysAsItIs)
{
    std::string value = ",uAnne,uBernard";
    ParseGroupEntry(value, out);
    EXPECT_EQ(value, ",uAnne,uBernard");
}
