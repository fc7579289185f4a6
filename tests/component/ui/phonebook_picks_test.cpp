// Picking entries and groups of a phonebook, with the questions about duplicates.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/phonebook_picks.h"

#include "tests/support/phonebook_test.h"

#include <stdexcept>

namespace {

const std::string duplicateOf(const std::string& name, const std::string& faxNumber)
{
    return "Name:   " + name + "\r\nFax Number:   " + faxNumber +
           "\r\n\nThis Recipient already exists in your Recipient List.\r\n"
           "Do you want to add a duplicate of this Recipient?";
}

/// A redrawn list of picks.
std::string redrawn(std::initializer_list<std::pair<const char*, const char*>> picks)
{
    std::string result = "clearRows \"Fax Cur Recipient List\"\n";
    for (auto [name, faxNumber] : picks)
        result += "addRow \"Fax Cur Recipient List\" " + fake::quoted(name) + " " + fake::quoted(faxNumber) +
                  " empty empty empty empty\n";
    return result;
}

using Names = std::vector<std::string>;

} // namespace

class PhonebookPicksTest : public PhonebookTest {
protected:
    PhonebookPicksTest() { host.copiesUntranslated = true; }

    /// Opens the dialog on these personal records.
    void open(std::vector<fake::Record> records)
    {
        keepPersonal(std::move(records));
        openDialog();
        host.journal.clear();
    }

    /// Presses "_Add >>" on a row; the journal of that.
    std::string add(int row)
    {
        host.selectRows("Fax PB List", {row});
        host.journal.clear();
        host.press("Add Button");
        return host.journal.calls();
    }

    std::vector<std::string> questions() { return host.openQuestions(); }

    void answer(bool yes)
    {
        host.journal.clear();
        host.answer(yes);
    }
};

// --- Entries ---------------------------------------------------------------------------------

TEST_F(PhonebookPicksTest, AnEntryIsPicked)
{
    open({entry("Anne", "1"), entry("Bernard", "2")});
    EXPECT_EQ(add(1), lines({R"(get "Fax PB List" Value -> 1)", "numberOfRecords", "recordNumber 2",
                             R"(get "Fax PB List" Value -> 1)", "recordNumber 2"}) +
                          redrawn({{"Bernard", "2"}}));
    EXPECT_EQ(pickNames(), Names{"Bernard"});
    EXPECT_TRUE(jobNames().empty());
}

TEST_F(PhonebookPicksTest, EveryFieldOfAnEntryReachesThePick)
{
    open({entry("Anne", "(555) 12-34",
                tagged("cmp", "Acme") + tagged("von", "777") + tagged("eml", "a@b") + tagged("fxm", "12") +
                    tagged("blc", "kept"))});
    add(0);
    ASSERT_EQ(pickNames().size(), 1U);
    EXPECT_EQ(pick(0)->getRecipientType(), 1);
    EXPECT_EQ(field(pick(0), "RecipientName"), "Anne");
    EXPECT_EQ(field(pick(0), "RecipientFaxNumber"), "(555) 12-34");
    EXPECT_EQ(field(pick(0), "RecipientOrganization"), "Acme");
    EXPECT_EQ(field(pick(0), "RecipientPhone"), "777");
    EXPECT_EQ(field(pick(0), "RecipientEmail"), "a@b");
    EXPECT_EQ(field(pick(0), "RecipientMailbox"), "12");
    EXPECT_EQ(dialledNumber(pick(0)), "5551234");
    EXPECT_EQ(host.rows("Fax Cur Recipient List"),
              (std::vector<std::vector<std::string>>{{"Anne", "(555) 12-34", "Acme", "777", "a@b", "12"}}));
}

TEST_F(PhonebookPicksTest, AnEntryOfTheSharedPhonebookIsPicked)
{
    keepShared({entry("Carla", "3")});
    open({entry("Anne", "1")});
    host.choose("Current PB Type", 1);
    add(0);
    EXPECT_EQ(pickNames(), Names{"Carla"});
}

TEST_F(PhonebookPicksTest, WithoutASelectionRecordZeroIsAskedForAndNothingAdded)
{
    open({entry("Anne", "1")});
    host.press("Add Button");
    EXPECT_EQ(host.journal.calls(),
              lines({R"(get "Fax PB List" Value -> -1)", "numberOfRecords", "recordNumber 0"}));
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(PhonebookPicksTest, ASelectionThatCannotBeReadAddsNothing)
{
    open({entry("Anne", "1")});
    host.setSelection("Fax PB List", {0});
    host.faults.failOn(fake::Op::readProperty, "Fax PB List");
    host.press("Add Button");
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(PhonebookPicksTest, ARowEqualToTheRecordCountPassesTheTest)
{
    open({entry("Anne", "1"), entry("Bernard", "2")});
    keepPersonal({entry("Anne", "1")});
    host.setSelection("Fax PB List", {1});
    personalPBDatabase->reopenDatabase();
    EXPECT_EQ(add(1), lines({R"(get "Fax PB List" Value -> 1)", "numberOfRecords", "recordNumber 2"}));
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(PhonebookPicksTest, ARowBeyondTheRecordCountIsRefused)
{
    open({entry("Anne", "1"), entry("Bernard", "2"), entry("Carla", "3")});
    keepPersonal({entry("Anne", "1")});
    personalPBDatabase->reopenDatabase();
    EXPECT_EQ(add(2), lines({R"(get "Fax PB List" Value -> 2)", "numberOfRecords"}));
}

TEST_F(PhonebookPicksTest, RecordsThatCannotBeCountedAreNotPicked)
{
    open({entry("Anne", "1")});
    host.faults.fail(fake::Op::countRecords);
    EXPECT_EQ(add(0), lines({R"(get "Fax PB List" Value -> 0)", "numberOfRecords"}));
}

TEST_F(PhonebookPicksTest, WithoutACurrentPhonebookOnlyTheRowIsRead)
{
    openDialog();
    SetCurrentPBInfo(1);
    host.journal.clear();
    host.press("Add Button");
    EXPECT_EQ(host.journal.all(), lines({R"(get "Fax PB List" Value -> -1)"}));
    T40AddFaxRecipientFromPB();
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(PhonebookPicksTest, NothingIsPickedFromAPhonebookThatAnotherFileReplaced)
{
    open({entry("Anne", "1")});
    host.faults.fail(fake::Op::createDatabase);
    choosePersonal(otherPersonalFile);
    openDialog();
    add(0);
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(PhonebookPicksTest, RowsAndRecordNumbersDriftApartAfterARecordThatDoesNotDecode)
{
    open({entry("Anne", "1"), brokenEntry("Bernard"), entry("Carla", "3"), entry("Dora", "4")});
    ASSERT_EQ(rowNames(), (Names{"Anne", "Carla", "Dora"}));
    EXPECT_EQ(add(1), lines({R"(get "Fax PB List" Value -> 1)", "numberOfRecords", "recordNumber 2"}));
    EXPECT_TRUE(pickNames().empty());
    add(2);
    EXPECT_EQ(pickNames(), Names{"Carla"});
}

TEST_F(PhonebookPicksTest, ARecordOfNeitherKindAddsNothingAndRedraws)
{
    open({entry("Anne", "1"), recordOfNeitherKind("Bernard")});
    EXPECT_EQ(add(1), lines({R"(get "Fax PB List" Value -> 1)", "numberOfRecords", "recordNumber 2",
                             R"(get "Fax PB List" Value -> 1)", "recordNumber 2"}) +
                          redrawn({}));
}

TEST_F(PhonebookPicksTest, AValueOfNothingButWhiteSpaceLetsAnExceptionLeaveTheCallback)
{
    open({entry("Anne", "1")});
    keepPersonal({entry(" ", "1")});
    personalPBDatabase->reopenDatabase();
    EXPECT_THROW(add(0), std::out_of_range);
    EXPECT_TRUE(pickNames().empty());
}

// --- Duplicates of entries -------------------------------------------------------------------

class DuplicateEntryTest : public PhonebookPicksTest {
protected:
    DuplicateEntryTest()
    {
        addRecipient("Anne", "1");
        open({entry("Anne", "1"), entry("Bernard", "2")});
    }
};

TEST_F(DuplicateEntryTest, IsAskedAboutAndNothingElseDone)
{
    const std::string journal = add(0);
    EXPECT_EQ(questions(), Names{duplicateOf("Anne", "1")});
    EXPECT_TRUE(pickNames().empty());
    EXPECT_TRUE(journal.starts_with(lines({R"(get "Fax PB List" Value -> 0)", "numberOfRecords",
                                           "recordNumber 1", R"(feature "LanFax Pref Duplicates" -> 1)"})));
    EXPECT_TRUE(journal.ends_with("ask 3 " + fake::quoted(duplicateOf("Anne", "1")) + "\n"));
}

TEST_F(DuplicateEntryTest, IsPickedOnYesAndTheQuestionClosed)
{
    add(0);
    answer(true);
    EXPECT_EQ(host.journal.calls(), lines({R"(get "Fax PB List" Value -> 0)", "recordNumber 1"}) +
                                        redrawn({{"Anne", "1"}}) + lines({"closeQuestion"}));
    EXPECT_EQ(pickNames(), Names{"Anne"});
    EXPECT_TRUE(questions().empty());
}

TEST_F(DuplicateEntryTest, IsNotPickedOnNo)
{
    add(0);
    answer(false);
    EXPECT_EQ(host.journal.all(), lines({"closeQuestion"}));
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(DuplicateEntryTest, OnlyMinusEightIsAYes)
{
    host.setSelection("Fax PB List", {0});
    for (int response : {-9, -7, -4, 0, 1, 8})
        DupAddPBRcptResponseCB(nullptr, response);
    EXPECT_TRUE(pickNames().empty());
    DupAddPBRcptResponseCB(nullptr, -8);
    EXPECT_EQ(pickNames(), Names{"Anne"});
}

TEST_F(DuplicateEntryTest, AYesReadsTheRowOfThatMoment)
{
    add(0);
    host.selectRows("Fax PB List", {1});
    answer(true);
    EXPECT_EQ(pickNames(), Names{"Bernard"});
}

TEST_F(DuplicateEntryTest, IsPickedWithoutAQuestionWhenThePreferenceIsOff)
{
    host.tick("LanFax Pref Duplicates", false);
    add(0);
    EXPECT_TRUE(questions().empty());
    EXPECT_EQ(pickNames(), Names{"Anne"});
}

TEST_F(DuplicateEntryTest, MayBeAmongThePicks)
{
    add(1);
    add(1);
    EXPECT_EQ(questions(), Names{duplicateOf("Bernard", "2")});
    EXPECT_EQ(pickNames(), Names{"Bernard"});
}

// --- Groups ----------------------------------------------------------------------------------

class GroupPicksTest : public PhonebookPicksTest {
protected:
    /// The dialog on Ann, Bob, Cid and a group with these members, in row 3.
    void openWithGroup(const std::string& members)
    {
        open({entry("Ann", "1"), entry("Bob", "2"), entry("Cid", "3"), group("Team", members)});
    }

    std::string addGroup() { return add(3); }
};

TEST_F(GroupPicksTest, EveryMemberIsLookedUpAndPickedAndShownAtOnce)
{
    openWithGroup(",uAnn,uBob");
    EXPECT_EQ(addGroup(), lines({R"(get "Fax PB List" Value -> 3)", "numberOfRecords", "recordNumber 4",
                                 R"(get "Fax PB List" Value -> 3)", "recordNumber 4", R"(recordOf "uAnn")"}) +
                              redrawn({{"Ann", "1"}}) + lines({R"(recordOf "uBob")"}) +
                              redrawn({{"Ann", "1"}, {"Bob", "2"}}) + redrawn({{"Ann", "1"}, {"Bob", "2"}}));
    EXPECT_EQ(pickNames(), (Names{"Ann", "Bob"}));
    EXPECT_TRUE(groupExpansionStart);
}

TEST_F(GroupPicksTest, MembersAreSingleRecipientsAndTheGroupItselfIsNotAdded)
{
    openWithGroup(",uAnn,uBob");
    addGroup();
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(pick(i)->getRecipientType(), 1) << i;
    EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 2);
}

TEST_F(GroupPicksTest, EveryFieldOfAMemberReachesThePick)
{
    open({entry("Ann", "(555) 12-34",
                tagged("cmp", "Acme") + tagged("von", "777") + tagged("eml", "a@b") + tagged("fxm", "12")),
          group("Team", ",uAnn")});
    add(1);
    ASSERT_EQ(pickNames().size(), 1U);
    EXPECT_EQ(field(pick(0), "RecipientFaxNumber"), "(555) 12-34");
    EXPECT_EQ(field(pick(0), "RecipientOrganization"), "Acme");
    EXPECT_EQ(field(pick(0), "RecipientPhone"), "777");
    EXPECT_EQ(field(pick(0), "RecipientEmail"), "a@b");
    EXPECT_EQ(field(pick(0), "RecipientMailbox"), "12");
    EXPECT_EQ(dialledNumber(pick(0)), "5551234");
}

TEST_F(GroupPicksTest, FieldsThatAMemberLacksAreNotThoseOfTheMemberBefore)
{
    open({entry("Ann", "1", tagged("cmp", "Acme")), entry("Bob", "2"), group("Team", ",uAnn,uBob")});
    add(2);
    ASSERT_EQ(pickNames().size(), 2U);
    EXPECT_EQ(pick(1)->getRecipientData("RecipientOrganization"), nullptr);
}

TEST_F(GroupPicksTest, AMissingMemberIsPassedOver)
{
    openWithGroup(",uAnn,uNobody,uBob");
    EXPECT_EQ(addGroup(), lines({R"(get "Fax PB List" Value -> 3)", "numberOfRecords", "recordNumber 4",
                                 R"(get "Fax PB List" Value -> 3)", "recordNumber 4", R"(recordOf "uAnn")"}) +
                              redrawn({{"Ann", "1"}}) + lines({R"(recordOf "uNobody")"}) +
                              redrawn({{"Ann", "1"}}) + lines({R"(recordOf "uBob")"}) +
                              redrawn({{"Ann", "1"}, {"Bob", "2"}}) + redrawn({{"Ann", "1"}, {"Bob", "2"}}));
}

TEST_F(GroupPicksTest, AMemberThatDoesNotDecodeIsPassedOver)
{
    open({brokenEntry("Ann"), entry("Bob", "2"), group("Team", ",uAnn,uBob")});
    host.setSelection("Fax PB List", {1}); // the broken record has no row
    keepPersonal({brokenEntry("Ann"), group("Team", ",uAnn,uBob"), entry("Bob", "2")});
    personalPBDatabase->reopenDatabase();
    host.press("Add Button");
    EXPECT_EQ(pickNames(), Names{"Bob"});
}

TEST_F(GroupPicksTest, AGroupOfMembersThatDoNotExistAddsNothing)
{
    openWithGroup(",uNobody,uNoOne");
    addGroup();
    EXPECT_TRUE(pickNames().empty());
    EXPECT_TRUE(groupExpansionStart);
}

TEST_F(GroupPicksTest, ALastNameWithoutAClosingCommaIsNotAdded)
{
    openWithGroup(",uAnn");
    LegacyDBRecipient team;
    ClearLegacyDBRecipientInfo(team);
    team.groupMembers = ",Ann,Bob";
    ProcessGroupMemberList(team);
    EXPECT_EQ(pickNames(), Names{"Ann"});
    EXPECT_EQ(host.journal.count("recordOf"), 1);
    EXPECT_TRUE(groupExpansionStart);
}

TEST_F(GroupPicksTest, AnEmptyOrCommalessMemberTextEndsAtOnce)
{
    openDialog();
    for (const char* members : {"", ",", "Ann", ","}) {
        host.journal.clear();
        LegacyDBRecipient team;
        ClearLegacyDBRecipientInfo(team);
        team.groupMembers = members;
        ProcessGroupMemberList(team);
        EXPECT_EQ(host.journal.all(), "") << members;
        EXPECT_TRUE(groupExpansionStart);
    }
}

TEST_F(GroupPicksTest, AnEmptyNameIsLookedUpAsAnyOther)
{
    openWithGroup(",uAnn");
    LegacyDBRecipient team;
    ClearLegacyDBRecipientInfo(team);
    team.groupMembers = ",,Bob,";
    ProcessGroupMemberList(team);
    EXPECT_EQ(host.journal.count("recordOf \"u\""), 1);
    EXPECT_EQ(pickNames(), Names{"Bob"});
}

TEST_F(GroupPicksTest, AMemberNamedTwiceIsAskedAboutOnce)
{
    openWithGroup(",uAnn,uAnn");
    addGroup();
    EXPECT_EQ(questions(), Names{duplicateOf("Ann", "1")});
}

TEST_F(GroupPicksTest, AGroupWithinAGroupIsLookedUpAsAnEntryOnly)
{
    open({entry("Ann", "1"), group("Inner", ",uAnn"), group("Outer", ",uInner,uAnn")});
    add(2);
    EXPECT_EQ(pickNames(), Names{"Ann"});
}

TEST_F(GroupPicksTest, LargeGroupsAreExpandedWhole)
{
    std::vector<fake::Record> records;
    std::string members;
    for (int i = 0; i < 200; ++i) {
        records.push_back(entry("Member" + std::to_string(i), std::to_string(i)));
        members += ",uMember" + std::to_string(i);
    }
    records.push_back(group("All", members));
    open(std::move(records));
    add(200);
    EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 200);
}

// --- Duplicates in groups --------------------------------------------------------------------

class DuplicateMemberTest : public GroupPicksTest {
protected:
    DuplicateMemberTest()
    {
        addRecipient("Bob", "2");
        openWithGroup(",uAnn,uBob,uCid");
        addGroup();
    }
};

TEST_F(DuplicateMemberTest, SuspendsTheExpansionWithAQuestion)
{
    EXPECT_EQ(questions(), Names{duplicateOf("Bob", "2")});
    EXPECT_EQ(pickNames(), Names{"Ann"});
    EXPECT_FALSE(groupExpansionStart);
    EXPECT_EQ(pendingGroupText, "Bob,Cid,");
    EXPECT_EQ(pendingGroupCursor, 3);
    EXPECT_EQ(pendingGroupRecord.name, "Bob");
}

TEST_F(DuplicateMemberTest, IsAddedOnYesAndTheExpansionGoesOn)
{
    answer(true);
    EXPECT_EQ(host.journal.calls(), lines({"closeQuestion"}) + redrawn({{"Ann", "1"}, {"Bob", "2"}}) +
                                        lines({R"(recordOf "uCid")"}) +
                                        redrawn({{"Ann", "1"}, {"Bob", "2"}, {"Cid", "3"}}));
    EXPECT_EQ(pickNames(), (Names{"Ann", "Bob", "Cid"}));
    EXPECT_TRUE(groupExpansionStart);
    EXPECT_TRUE(questions().empty());
}

TEST_F(DuplicateMemberTest, IsPassedOverOnNoAndTheExpansionGoesOn)
{
    answer(false);
    EXPECT_EQ(host.journal.calls(), lines({"closeQuestion"}) + redrawn({{"Ann", "1"}}) +
                                        lines({R"(recordOf "uCid")"}) +
                                        redrawn({{"Ann", "1"}, {"Cid", "3"}}));
    EXPECT_EQ(pickNames(), (Names{"Ann", "Cid"}));
    EXPECT_TRUE(groupExpansionStart);
}

TEST_F(DuplicateMemberTest, IsAddedWithoutAQuestionWhenThePreferenceIsOff)
{
    host.answer(false);
    host.fire("T40AddRcptFromPBDialogCancel");
    host.tick("LanFax Pref Duplicates", false);
    openDialog();
    addGroup();
    EXPECT_TRUE(questions().empty());
    EXPECT_EQ(pickNames(), (Names{"Ann", "Bob", "Cid"}));
}

TEST_F(DuplicateMemberTest, ANewAddGivesUpTheExpansionThatWaits)
{
    add(2);
    EXPECT_TRUE(groupExpansionStart);
    EXPECT_EQ(pickNames(), (Names{"Ann", "Cid"}));
    answer(false);
    EXPECT_EQ(pickNames(), (Names{"Ann", "Cid"}));
    EXPECT_EQ(host.journal.count("recordOf"), 0);
    EXPECT_TRUE(questions().empty());
}

TEST_F(DuplicateMemberTest, AYesToAnExpansionThatWasGivenUpAddsTheMemberItAskedAbout)
{
    add(2);
    answer(true);
    EXPECT_EQ(pickNames(), (Names{"Ann", "Cid", "Bob"}));
    EXPECT_EQ(host.journal.count("recordOf"), 0);
}

TEST_F(DuplicateMemberTest, AddingTheGroupAgainStartsItAfresh)
{
    addGroup();
    EXPECT_EQ(pendingGroupText, "Ann,Bob,Cid,");
    EXPECT_EQ(questions(), (Names{duplicateOf("Bob", "2"), duplicateOf("Ann", "1")}));
}

TEST_F(DuplicateMemberTest, CancellingTheDialogDestroysThePicksOfTheSuspendedGroup)
{
    host.press("LanFaxRcptPB Cancel Button");
    EXPECT_TRUE(pickNames().empty());
    EXPECT_EQ(jobNames(), Names{"Bob"});
}

TEST_F(GroupPicksTest, EachDuplicateMemberCostsOneQuestion)
{
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    addRecipient("Cid", "3");
    openWithGroup(",uAnn,uBob,uCid");
    addGroup();
    EXPECT_EQ(questions(), Names{duplicateOf("Ann", "1")});
    host.answer(false);
    EXPECT_EQ(questions(), Names{duplicateOf("Bob", "2")});
    host.answer(true);
    EXPECT_EQ(questions(), Names{duplicateOf("Cid", "3")});
    host.answer(false);
    EXPECT_TRUE(questions().empty());
    EXPECT_EQ(pickNames(), Names{"Bob"});
    EXPECT_TRUE(groupExpansionStart);
}

TEST_F(GroupPicksTest, OnlyMinusEightAddsTheMember)
{
    addRecipient("Ann", "1");
    for (int response : {-9, -7, -4, 0, 1, 8, -8}) {
        openWithGroup(",uAnn");
        addGroup();
        DupAddPBGroupResponseCB(nullptr, response);
        EXPECT_EQ(pickNames().size(), response == -8 ? 1U : 0U) << response;
        EXPECT_TRUE(groupExpansionStart) << response;
    }
}

TEST_F(GroupPicksTest, AGroupWhoseNameIsADuplicateIsAskedAboutBeforeItsMembers)
{
    addRecipient("Team", "");
    addRecipient("Ann", "1");
    openWithGroup(",uAnn,uBob");
    addGroup();
    EXPECT_EQ(questions(), Names{duplicateOf("Team", "")});

    host.answer(true);
    EXPECT_EQ(questions(), Names{duplicateOf("Ann", "1")});
    EXPECT_TRUE(pickNames().empty());

    host.answer(false);
    EXPECT_TRUE(questions().empty());
    EXPECT_EQ(pickNames(), Names{"Bob"});
}

TEST_F(GroupPicksTest, CancelDestroysMembersToo)
{
    openWithGroup(",uAnn,uBob");
    addGroup();
    add(2);
    host.press("LanFaxRcptPB Cancel Button");
    EXPECT_TRUE(pickNames().empty());
    EXPECT_TRUE(host.rows("Fax Cur Recipient List").empty());
}

TEST_F(GroupPicksTest, MembersJoinTheJobOnOk)
{
    openWithGroup(",uAnn,uBob");
    addGroup();
    host.press("LanFaxRcptPB OK Button");
    EXPECT_EQ(jobNames(), (Names{"Ann", "Bob"}));
}
