// Recipients and groups as the records that a phonebook gets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/record_database.h"
#include "phonebook/phonebook_state.h"
#include "tests/support/component_test.h"

#include <cstddef>

class RecordWriterTest : public StartedComponentTest {
protected:
    RecordWriterTest() { recipient.setRecipientType(SINGLE_RECIPIENT); }

    void set(const char* key, const std::string& value) { recipient.setRecipientData(key, value.c_str()); }
    bool save() { return recipient.serializeRecipientToDatabase(personalPBDatabase); }

    const fake::Record& saved()
    {
        EXPECT_EQ(host.savedRecords.size(), 1U);
        return host.savedRecords.at(0);
    }

    const std::vector<fake::Record>& file()
    {
        return host.disk.phonebooks["/opt/quelm/db/phonebook/user/ann.xdb"];
    }

    Tarvik40FaxRecipient recipient;
};

TEST_F(RecordWriterTest, ARecordsLayoutIsThatOfTheHost)
{
    EXPECT_EQ(offsetof(LegacyDBRecord, recordLength), 0U);
    EXPECT_EQ(offsetof(LegacyDBRecord, keyLength), 2U);
    EXPECT_EQ(offsetof(LegacyDBRecord, dataLength), 4U);
    EXPECT_EQ(offsetof(LegacyDBRecord, key), 8U);
    EXPECT_EQ(offsetof(LegacyDBRecord, data), 8U + sizeof(void*)) << "12 for 32-bit hosts";
}

TEST_F(RecordWriterTest, APersonWithNameAndNumberHasThreeFields)
{
    set("RecipientName", "Anne");
    set("RecipientFaxNumber", "5551234");
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().key, "uAnne");
    EXPECT_EQ(saved().data, ".susg\r\n0\r\n.eusg\r\n.snam\r\nAnne\r\n.enam\r\n.sfxn\r\n5551234\r\n.efxn\r\n");
    EXPECT_EQ(saved().keyLength, 5);
    EXPECT_EQ(saved().dataLength, 60);
    EXPECT_EQ(saved().recordLength, 65);
}

TEST_F(RecordWriterTest, FurtherFieldsFollowInAFixedOrderAndTheMailboxIsLost)
{
    set("RecipientMailbox", "12");
    set("RecipientEmail", "a@b");
    set("RecipientPhone", "777");
    set("RecipientOrganization", "Acme");
    set("RecipientFaxNumber", "(555) 1");
    set("RecipientName", "Anne");
    set("SenderName", "Sue");
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().data, ".susg\r\n0\r\n.eusg\r\n"
                            ".snam\r\nAnne\r\n.enam\r\n"
                            ".sfxn\r\n(555) 1\r\n.efxn\r\n"
                            ".scmp\r\nAcme\r\n.ecmp\r\n"
                            ".svon\r\n777\r\n.evon\r\n"
                            ".seml\r\na@b\r\n.eeml\r\n");
}

TEST_F(RecordWriterTest, NameAndNumberAreWrittenEvenWhenEmpty)
{
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().key, "u");
    EXPECT_EQ(saved().data, ".susg\r\n0\r\n.eusg\r\n.snam\r\n\r\n.enam\r\n.sfxn\r\n\r\n.efxn\r\n");
}

TEST_F(RecordWriterTest, EachFurtherFieldIsWrittenOnlyWhenItHoldsSomething)
{
    const std::pair<const char*, const char*> fields[] = {
        {"RecipientOrganization", "cmp"}, {"RecipientPhone", "von"}, {"RecipientEmail", "eml"}};
    for (auto [key, tag] : fields) {
        host.savedRecords.clear();
        set(key, "x");
        save();
        const std::string written = std::string(".s") + tag + "\r\nx\r\n.e" + tag + "\r\n";
        EXPECT_TRUE(saved().data.ends_with(written)) << saved().data;
        set(key, "");
    }
}

TEST_F(RecordWriterTest, AGroupHoldsItsMemberTextAndNothingElse)
{
    recipient.setRecipientType(GROUP_RECIPIENT);
    set("RecipientName", "Team");
    set("RecipientFaxNumber", "1");
    set("RecipientEmail", "a@b");
    set("GroupMemberList", ",uAnne,uBernard");
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().key, "gTeam");
    EXPECT_EQ(saved().data, ".sgen\r\n,uAnne,uBernard\r\n.egen\r\n");
    EXPECT_EQ(saved().keyLength, 5);
    EXPECT_EQ(saved().dataLength, 31);
    EXPECT_EQ(saved().recordLength, 36);
}

TEST_F(RecordWriterTest, AGroupWithoutMembersIsWrittenEmpty)
{
    recipient.setRecipientType(GROUP_RECIPIENT);
    set("RecipientName", "Team");
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().data, ".sgen\r\n\r\n.egen\r\n");
}

TEST_F(RecordWriterTest, LengthsAreAddedIn16BitsAndTheTextsStayWhole)
{
    set("RecipientName", longText(40000));
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().key, "u" + longText(40000));
    EXPECT_GT(saved().data.size(), 40000U);
    EXPECT_EQ(saved().keyLength, 40001);
    EXPECT_EQ(saved().dataLength, saved().data.size());
    EXPECT_EQ(saved().recordLength, (40001 + saved().data.size()) % 65536);
}

TEST_F(RecordWriterTest, ALengthBeyond16BitsWrapsAround)
{
    set("RecipientName", longText(70000));
    EXPECT_TRUE(save());
    EXPECT_EQ(saved().keyLength, 70001 % 65536);
    EXPECT_EQ(saved().key.size(), 70001U);
}

TEST_F(RecordWriterTest, EverySavedRecordGoesToTheFileAtOnce)
{
    set("RecipientName", "Anne");
    EXPECT_TRUE(save());
    EXPECT_EQ(
        host.journal.effects(),
        lines({"saveRecord \"uAnne\" " +
                   fake::quoted(".susg\r\n0\r\n.eusg\r\n.snam\r\nAnne\r\n.enam\r\n.sfxn\r\n\r\n.efxn\r\n"),
               "serializeDatabase"}));
    ASSERT_EQ(file().size(), 1U);
    EXPECT_EQ(file()[0].key, "uAnne");
}

TEST_F(RecordWriterTest, NullAndOtherTypesTouchNoDatabase)
{
    EXPECT_FALSE(recipient.serializeRecipientToDatabase(nullptr));
    EXPECT_FALSE(recipient.serializeUserToDatabase(nullptr));
    EXPECT_FALSE(recipient.serializeGroupToDatabase(nullptr));
    recipient.setRecipientType(GROUP_RECIPIENT);
    EXPECT_FALSE(recipient.serializeRecipientToDatabase(nullptr));
    for (int type : {0, 3, -1}) {
        recipient.setRecipientType(type);
        EXPECT_FALSE(save()) << type;
    }
    EXPECT_EQ(host.journal.effects(), "");
}

TEST_F(RecordWriterTest, BothKindsCanBeWrittenWhateverTheType)
{
    recipient.setRecipientType(0);
    set("RecipientName", "X");
    EXPECT_TRUE(recipient.serializeUserToDatabase(personalPBDatabase));
    EXPECT_TRUE(recipient.serializeGroupToDatabase(personalPBDatabase));
    ASSERT_EQ(host.savedRecords.size(), 2U);
    EXPECT_EQ(host.savedRecords[0].key, "uX");
    EXPECT_EQ(host.savedRecords[1].key, "gX");
}

class FailingWriterTest : public RecordWriterTest, public testing::WithParamInterface<int> {};

TEST_P(FailingWriterTest, ARecordThatIsRefusedIsNotWrittenToTheFile)
{
    recipient.setRecipientType(GetParam());
    host.faults.fail(fake::Op::saveRecord);
    EXPECT_FALSE(save());
    EXPECT_EQ(host.journal.count("serializeDatabase"), 0);
}

TEST_P(FailingWriterTest, AFileThatCannotBeWrittenIsAFailureAlthoughTheRecordIsInMemory)
{
    recipient.setRecipientType(GetParam());
    host.faults.fail(fake::Op::serializeDatabase);
    EXPECT_FALSE(save());
    EXPECT_TRUE(file().empty());
    int count = 0;
    personalPBDatabase->getNumberOfRecords(count);
    EXPECT_EQ(count, 1);
}

INSTANTIATE_TEST_SUITE_P(EntriesAndGroups, FailingWriterTest,
                         testing::Values(SINGLE_RECIPIENT, GROUP_RECIPIENT));
