// Saving the job's recipients as a group, and one of them as an entry, in the personal phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/save_to_phonebook.h"

#include "tests/support/phonebook_test.h"
#include "ui/recipient_dialog.h"

#include <utility>

namespace {

constexpr const char* jobList = "LanFax Recipient List";
constexpr const char* memberList = "LanFaxAddGroup Group List";
constexpr const char* groupWindow = "LanFax Add Group Window";
constexpr const char* recipientWindow = "LanFax Add Recipient Window";
constexpr const char* phonebookBox = "AddtoPersonalPB";

const std::string groupWindowClosed = lines({
    R"(clearRows "LanFaxAddGroup Group List")",
    R"(set "LanFax Add Group Window" Visibility off)",
});

using Names = std::vector<std::string>;

} // namespace

class SaveToPhonebookTest : public PhonebookTest {
protected:
    /// The job's recipients are in its list.
    void show()
    {
        job().updatePBEntryList(RECIPIENT_LIST);
        host.journal.clear();
    }

    std::string press(const char* button)
    {
        host.journal.clear();
        host.press(button);
        return host.journal.calls();
    }

    std::vector<fake::Record>& records() { return host.disk.phonebooks[personalFile]; }
    bool errorShown() { return host.visible("LanFax Add Recipient Error Window"); }
};

// --- Groups ----------------------------------------------------------------------------------

class SaveGroupTest : public SaveToPhonebookTest {
protected:
    SaveGroupTest()
    {
        addRecipient("Anne", "1");
        addRecipient("Bernard", "2");
        show();
    }

    void open() { host.press("LanFax Save Group Button"); }

    std::string ok(const std::string& name)
    {
        host.type("LanFaxAddGroup Group Name", name);
        return press("LanFaxAddGroup Ok Button");
    }

    bool isOpen() { return host.visible(groupWindow); }
    int members() { return job().getRecipientListCount(GROUP_MEMBER_LIST); }
};

TEST_F(SaveGroupTest, OpensWithTheJobsRecipientsAsMembers)
{
    host.setText("LanFaxAddGroup Group Name", "left over");
    EXPECT_EQ(
        press("LanFax Save Group Button"),
        lines({R"(set "LanFaxAddGroup Group Name" Value "")", R"(clearRows "LanFaxAddGroup Group List")",
               R"(addRow "LanFaxAddGroup Group List" "Anne" "1" empty empty empty empty)",
               R"(addRow "LanFaxAddGroup Group List" "Bernard" "2" empty empty empty empty)",
               R"(set "LanFax Add Group Window" Visibility on)"}));
    EXPECT_EQ(members(), 2);
}

TEST_F(SaveGroupTest, OkWritesTheGroupRecordAndForgetsTheMembers)
{
    open();
    EXPECT_EQ(ok("Team"),
              lines({R"(get "LanFaxAddGroup Group Name" Value -> "Team")",
                     R"(validateName "Team" "- ." -> accepted)",
                     R"(saveRecord "gTeam" ".sgen\r\n,uAnne,uBernard\r\n.egen\r\n")", "serializeDatabase"}) +
                  groupWindowClosed);
    ASSERT_EQ(records().size(), 1U);
    EXPECT_EQ(records()[0].key, "gTeam");
    EXPECT_EQ(records()[0].data, ".sgen\r\n,uAnne,uBernard\r\n.egen\r\n");
    EXPECT_EQ(records()[0].recordLength, 36);
    EXPECT_EQ(members(), 0);
    EXPECT_FALSE(isOpen());
}

TEST_F(SaveGroupTest, MembersAreWrittenAsReferencesAndNotAsEntries)
{
    open();
    ok("Team");
    EXPECT_EQ(host.savedRecords.size(), 1U);
}

TEST_F(SaveGroupTest, TheJobKeepsItsRecipients)
{
    open();
    ok("Team");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
    open();
    host.press("LanFaxAddGroup Cancel Button");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
    EXPECT_EQ(field(job().getFaxRecipientN(1, RECIPIENT_LIST), "RecipientFaxNumber"), "2");
}

TEST_F(SaveGroupTest, AMissingNameIsAskedForAndTheWindowStays)
{
    open();
    EXPECT_EQ(press("LanFaxAddGroup Ok Button"),
              lines({R"(get "LanFaxAddGroup Group Name" Value -> "")",
                     R"(set "LanFax Add Fax Rcpt Error Label" WidgetText "")",
                     R"(translate "The Name is a required field&#10;Please enter a Name." -> none)",
                     R"(set "LanFax Add Fax Rcpt Error Label" WidgetText )"
                     R"("The Name is a required field&#10;Please enter a Name.")",
                     R"(set "LanFax Add Recipient Error Window" Visibility on)"}));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(members(), 2);
    EXPECT_TRUE(host.savedRecords.empty());
}

TEST_F(SaveGroupTest, ARejectedNameShowsTheHostsTextAndTheWindowStays)
{
    open();
    ok("Team/1");
    EXPECT_TRUE(errorShown());
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"), "A Name must not contain the character /");
    EXPECT_EQ(host.text("LanFaxAddGroup Group Name"), "");
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(host.savedRecords.empty());
}

TEST_F(SaveGroupTest, AFailedWriteGoesUnreported)
{
    for (fake::Op failing : {fake::Op::saveRecord, fake::Op::serializeDatabase}) {
        open();
        host.faults.fail(failing);
        EXPECT_TRUE(ok("Team").ends_with(groupWindowClosed));
        host.faults.clear();
        EXPECT_FALSE(errorShown());
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(members(), 0);
        EXPECT_TRUE(records().empty());
    }
}

TEST_F(SaveGroupTest, AMissingPhonebookGoesUnreported)
{
    delete std::exchange(personalPBDatabase, nullptr);
    open();
    EXPECT_EQ(ok("Team"), lines({R"(get "LanFaxAddGroup Group Name" Value -> "Team")",
                                 R"(validateName "Team" "- ." -> accepted)"}) +
                              groupWindowClosed);
    EXPECT_FALSE(errorShown());
}

TEST_F(SaveGroupTest, GoesIntoThePersonalPhonebookWhateverTheDialogShows)
{
    keepShared({});
    openDialog();
    host.choose("Current PB Type", 1);
    open();
    ok("Team");
    EXPECT_EQ(records().size(), 1U);
    EXPECT_TRUE(host.disk.phonebooks[sharedFile].empty());
}

TEST_F(SaveGroupTest, ANameThatIsTakenIsSavedAgainWithoutAQuestion)
{
    for (int time = 0; time < 2; ++time) {
        open();
        ok("Team");
    }
    EXPECT_EQ(host.savedRecords.size(), 2U);
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(SaveGroupTest, MembersWithoutANameAreLeftOut)
{
    addRecipient("", "3");
    addRecipient("Dora", "4");
    show();
    open();
    ok("Team");
    EXPECT_EQ(host.savedRecords[0].data, ".sgen\r\n,uAnne,uBernard,uDora\r\n.egen\r\n");
}

TEST_F(SaveGroupTest, CancelForgetsTheMembersAndSavesNothing)
{
    for (bool fromFrame : {false, true}) {
        open();
        host.journal.clear();
        if (fromFrame)
            host.close(groupWindow);
        else
            host.press("LanFaxAddGroup Cancel Button");
        EXPECT_EQ(host.journal.calls(), groupWindowClosed);
        EXPECT_EQ(members(), 0);
        EXPECT_TRUE(host.savedRecords.empty());
    }
}

TEST_F(SaveGroupTest, OpeningItTwiceAppendsTheRecipientsTwice)
{
    open();
    open();
    EXPECT_EQ(host.names(memberList), (Names{"Anne", "Bernard", "Anne", "Bernard"}));
    ok("Team");
    EXPECT_EQ(host.savedRecords[0].data, ".sgen\r\n,uAnne,uBernard,uAnne,uBernard\r\n.egen\r\n");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
}

TEST_F(SaveGroupTest, ASavedGroupCanBePickedAgain)
{
    records() = {entry("Anne", "1"), entry("Bernard", "2")};
    personalPBDatabase->reopenDatabase();
    open();
    ok("Team");
    host.fire("T40RemoveAllFaxRecipients");
    openDialog();
    EXPECT_EQ(rowNames(), (Names{"Anne", "Bernard", "[Team]"}));
    host.selectRows("Fax PB List", {2});
    host.press("Add Button");
    EXPECT_EQ(pickNames(), (Names{"Anne", "Bernard"}));
}

TEST_F(SaveToPhonebookTest, AnEmptyJobOpensAnEmptyGroupWhoseOkDoesNothing)
{
    host.fire("T40SaveGroup");
    EXPECT_TRUE(host.visible(groupWindow));
    EXPECT_TRUE(host.rows(memberList).empty());
    host.type("LanFaxAddGroup Group Name", "Team");
    EXPECT_EQ(press("LanFaxAddGroup Ok Button"), lines({R"(get "LanFaxAddGroup Group Name" Value -> "Team")",
                                                        R"(validateName "Team" "- ." -> accepted)"}));
    EXPECT_TRUE(host.visible(groupWindow));
    EXPECT_FALSE(errorShown());
}

TEST_F(SaveToPhonebookTest, ALongGroupNameIsTakenAsTheHostHandsItOver)
{
    addRecipient("Anne", "1");
    host.fire("T40SaveGroup");
    host.setText("LanFaxAddGroup Group Name", longText(6000));
    host.press("LanFaxAddGroup Ok Button");
    ASSERT_EQ(host.savedRecords.size(), 1U);
    EXPECT_EQ(host.savedRecords[0].key, "g" + longText(4095));
}

// --- Entries ---------------------------------------------------------------------------------

class SaveEntryTest : public SaveToPhonebookTest {
protected:
    SaveEntryTest()
    {
        addRecipient("Anne", "1");
        addRecipient("Bernard", "2");
        show();
        host.selectRows(jobList, {1});
    }

    std::string saveEntry() { return press("LanFax Save Entry Button"); }
    void ok() { host.press("LanFaxAddRcpt OK Button"); }
    void cancel() { host.press("LanFaxAddRcpt Cancel Button"); }

    void addRecipientByDialog(const std::string& name, const std::string& faxNumber)
    {
        host.press("AddFaxRcpt");
        host.type("RecipientName", name);
        host.type("RecipientNumber", faxNumber);
        ok();
    }

    Names savedKeys()
    {
        Names keys;
        for (const fake::Record& saved : host.savedRecords)
            keys.push_back(saved.key);
        return keys;
    }
};

TEST_F(SaveEntryTest, OpensTheRecipientDialogWithTheBoxTickedOutOfSight)
{
    EXPECT_EQ(
        saveEntry(),
        lines({R"(get "LanFax Recipient List" Value -> 1)", R"(set "AddtoPersonalPB" Value on)",
               R"(set "AddtoPersonalPB" Visibility off)", R"(set "AddtoPersonalPB" Sensitivity off)",
               R"(translate "Save to Personal Phonebook" -> none)",
               R"(set "LanFax Add Recipient Window" Title "Save to Personal Phonebook")",
               R"(set "RecipientNumber" WidgetText "2")", R"(set "RecipientName" WidgetText "Bernard")",
               R"(set "RecipientOrganization" WidgetText "")", R"(set "RecipientTelNumber" WidgetText "")",
               R"(set "RecipientEmailAddr" WidgetText "")", R"(set "RecipientMailbox" WidgetText "")",
               R"(set "LanFax Add Recipient Window" Visibility on)"}));
    EXPECT_EQ(editCurrentRecipient, 1);
    EXPECT_TRUE(host.savedRecords.empty());
}

TEST_F(SaveEntryTest, ItsTitleIsTranslated)
{
    host.translations["Save to Personal Phonebook"] = "Enregistrer";
    saveEntry();
    EXPECT_EQ(host.title(recipientWindow), "Enregistrer");
}

TEST_F(SaveEntryTest, ItsTitleIsEnglishOnAHostThatCopiesUntranslatedTexts)
{
    host.copiesUntranslated = true;
    saveEntry();
    EXPECT_EQ(host.title(recipientWindow), "Save to Personal Phonebook");
}

TEST_F(SaveEntryTest, OkWritesTheEntryAndChangesTheRecipient)
{
    saveEntry();
    host.type("RecipientName", "Bernd");
    host.journal.clear();
    ok();
    EXPECT_EQ(savedKeys(), Names{"uBernd"});
    ASSERT_EQ(records().size(), 1U);
    EXPECT_EQ(records()[0].data, entryData("Bernd", "2"));
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernd"}));
    EXPECT_EQ(host.names(jobList), (Names{"Anne", "Bernd"}));
    EXPECT_TRUE(host.journal.effects().ends_with(lines(
        {"serializeDatabase", R"(set "AddtoPersonalPB" Value off)", R"(set "AddtoPersonalPB" Sensitivity on)",
         R"(set "AddtoPersonalPB" Visibility on)", R"(set "LanFax Add Recipient Window" Visibility off)"})));
    EXPECT_EQ(editCurrentRecipient, 0);
}

TEST_F(SaveEntryTest, NoDuplicateQuestionIsAsked)
{
    saveEntry();
    host.type("RecipientName", "Anne");
    host.type("RecipientNumber", "1");
    ok();
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_EQ(savedKeys(), Names{"uAnne"});
}

TEST_F(SaveEntryTest, AFailedWriteGoesUnreported)
{
    host.faults.fail(fake::Op::saveRecord);
    saveEntry();
    ok();
    EXPECT_FALSE(errorShown());
    EXPECT_FALSE(host.visible(recipientWindow));
    EXPECT_FALSE(host.ticked(phonebookBox));
}

TEST_F(SaveEntryTest, CancelLeavesTheBoxTickedAndOutOfSight)
{
    saveEntry();
    host.journal.clear();
    cancel();
    EXPECT_EQ(host.journal.all(), lines({R"(set "LanFax Add Recipient Window" Visibility off)"}));
    EXPECT_EQ(editCurrentRecipient, 0);
    EXPECT_TRUE(host.ticked(phonebookBox));
    EXPECT_FALSE(host.visible(phonebookBox));
    EXPECT_FALSE(host.sensitive(phonebookBox));
    EXPECT_TRUE(host.savedRecords.empty());
}

TEST_F(SaveEntryTest, AfterACancelTheNextNewRecipientIsWrittenTooAndTheBoxIsBack)
{
    saveEntry();
    cancel();
    addRecipientByDialog("Carla", "3");
    EXPECT_EQ(host.title(recipientWindow), "Add Fax Recipient");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard", "Carla"}));
    EXPECT_EQ(savedKeys(), Names{"uCarla"});
    EXPECT_FALSE(host.ticked(phonebookBox));
    EXPECT_TRUE(host.visible(phonebookBox));
    EXPECT_TRUE(host.sensitive(phonebookBox));

    addRecipientByDialog("Dora", "4");
    EXPECT_EQ(savedKeys(), Names{"uCarla"});
}

TEST_F(SaveEntryTest, AfterACancelTheNextEditedRecipientIsWrittenToo)
{
    saveEntry();
    cancel();
    host.press("LanFax Details Button");
    ok();
    EXPECT_EQ(savedKeys(), Names{"uBernard"});
}

TEST_F(SaveEntryTest, ARefusedFieldKeepsTheDialogOpenToSave)
{
    saveEntry();
    host.type("RecipientNumber", "");
    ok();
    EXPECT_TRUE(errorShown());
    EXPECT_TRUE(host.savedRecords.empty());
    host.type("RecipientNumber", "5");
    ok();
    EXPECT_EQ(host.savedRecords.size(), 1U);
    EXPECT_EQ(host.savedRecords[0].data, entryData("Bernard", "5"));
}

TEST_F(SaveEntryTest, AGroupIsNotSavedAsAnEntry)
{
    job().getFaxRecipientN(1, RECIPIENT_LIST)->setRecipientType(GROUP_RECIPIENT);
    EXPECT_EQ(saveEntry(), lines({R"(get "LanFax Recipient List" Value -> 1)"}));
    EXPECT_EQ(editCurrentRecipient, 0);
}

TEST_F(SaveEntryTest, WithoutASelectionNothingHappens)
{
    host.setSelection(jobList, {});
    host.journal.clear();
    T40SaveEntry();
    EXPECT_EQ(host.journal.all(), lines({R"(get "LanFax Recipient List" Value -> -1)"}));
    EXPECT_EQ(editCurrentRecipient, 0);
    EXPECT_FALSE(host.ticked(phonebookBox));
}
