// How a list of recipients is shown in its widget, and the buttons beside the job's list.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/list_refresh.h"

#include "model/fax_job.h"
#include "tests/support/component_test.h"

class ListRefreshTest : public StartedComponentTest {};

namespace {

// What showing an empty job list does, ahead of its rows.
const std::string emptyJobList = lines({
    R"(set "LanFax Details Button" Sensitivity off)",
    R"(set "LanFax Save Entry Button" Sensitivity off)",
    R"(set "LanFax Remove Button" Sensitivity off)",
    R"(set "LanFax Save Group Button" Sensitivity off)",
    R"(set "LanFax Save Entry Button" Sensitivity off)",
    R"(clearRows "LanFax Recipient List")",
});

// The same for a job list with recipients.
const std::string filledJobList = lines({
    R"(set "LanFax Details Button" Sensitivity off)",
    R"(set "LanFax Save Entry Button" Sensitivity off)",
    R"(set "LanFax Remove Button" Sensitivity off)",
    R"(set "LanFax Save Group Button" Sensitivity on)",
    R"(clearRows "LanFax Recipient List")",
});

} // namespace

TEST_F(ListRefreshTest, AnEmptyJobListSwitchesEveryButtonOff)
{
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.journal.effects(), emptyJobList);
    EXPECT_TRUE(host.rows("LanFax Recipient List").empty());
}

TEST_F(ListRefreshTest, AFilledJobListCanBeSavedAsAGroup)
{
    addRecipient("Ann", "555");
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.journal.effects(),
              filledJobList +
                  lines({R"(addRow "LanFax Recipient List" "Ann" "555" empty empty empty empty)"}));
}

TEST_F(ListRefreshTest, TheRowsComeThroughOneObjectThatIsKept)
{
    addRecipient("Ann", "555");
    addRecipient("Bob", "556");
    job().updatePBEntryList(RECIPIENT_LIST);
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.rowFactories, std::set<const GTKObject*>{listItemFactory});
}

TEST_F(ListRefreshTest, TheJobsSelectionIsReadFirst)
{
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.journal.calls().substr(0, host.journal.calls().find('\n')),
              R"(get "LanFax Recipient List" Value -> -1)");
}

TEST_F(ListRefreshTest, SelectorsWithoutAListShowTheJob)
{
    for (int list : {0, 5, -1, 1000}) {
        host.journal.clear();
        job().updatePBEntryList(list);
        EXPECT_EQ(host.journal.effects(), emptyJobList) << list;
    }
}

TEST_F(ListRefreshTest, ThePhonebookRowsAreNobodysBusinessHere)
{
    addRecipient("Ann", "555");
    host.journal.clear();
    job().updatePBEntryList(PB_ENTRY_LIST);
    EXPECT_EQ(host.journal.all(), "");
}

TEST_F(ListRefreshTest, PicksAreShownWithoutAButton)
{
    addPick("Ann", "555");
    job().updatePBEntryList(CUR_RECIPIENT_LIST);
    EXPECT_EQ(host.journal.effects(),
              lines({R"(clearRows "Fax Cur Recipient List")",
                     R"(addRow "Fax Cur Recipient List" "Ann" "555" empty empty empty empty)"}));
}

TEST_F(ListRefreshTest, GroupMembersAreShownWithoutAButton)
{
    addRecipient("Ann", "555");
    job().groupMemberList.appendRecipientList(&job().recipientList);
    job().updatePBEntryList(GROUP_MEMBER_LIST);
    EXPECT_EQ(host.journal.effects(),
              lines({R"(clearRows "LanFaxAddGroup Group List")",
                     R"(addRow "LanFaxAddGroup Group List" "Ann" "555" empty empty empty empty)"}));
}

TEST_F(ListRefreshTest, ARowHoldsSixFieldsInTheOrderOfTheColumns)
{
    auto* ann = addRecipient("Ann", "555-1");
    ann->setRecipientData("RecipientMailbox", "12");
    ann->setRecipientData("RecipientEmail", "a@b");
    ann->setRecipientData("RecipientPhone", "777");
    ann->setRecipientData("RecipientOrganization", "Acme");
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.rows("LanFax Recipient List"),
              (std::vector<std::vector<std::string>>{{"Ann", "555-1", "Acme", "777", "a@b", "12"}}));
}

TEST_F(ListRefreshTest, AGroupIsListedWithItsNameOnly)
{
    auto* team = addRecipient("Team", "555");
    team->setRecipientType(GROUP_RECIPIENT);
    team->setRecipientData("RecipientEmail", "a@b");
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.journal.effects(),
              filledJobList +
                  lines({R"(addRow "LanFax Recipient List" "Team" empty empty empty empty empty)"}));
}

TEST_F(ListRefreshTest, ARecipientWithoutATypeIsListedLikeASingleOne)
{
    addRecipient("Ann", "555")->setRecipientType(0);
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.rows("LanFax Recipient List").front(),
              (std::vector<std::string>{"Ann", "555", "", "", "", ""}));
}

TEST_F(ListRefreshTest, BothKindsOfHostSeeTheSameRow)
{
    auto* ann = addRecipient("", "");
    ann->setRecipientData("RecipientEmail", "a@b");
    for (bool byColumnCount : {true, false}) {
        host.readsRowsByColumnCount = byColumnCount;
        host.journal.clear();
        job().updatePBEntryList(RECIPIENT_LIST);
        EXPECT_EQ(host.journal.effects(),
                  filledJobList +
                      lines({R"(addRow "LanFax Recipient List" empty empty empty empty "a@b" empty)"}));
        EXPECT_EQ(host.rows("LanFax Recipient List"),
                  (std::vector<std::vector<std::string>>{{"", "", "", "", "a@b", ""}}));
    }
}

TEST_F(ListRefreshTest, RowsReplaceWhatWasShown)
{
    auto* ann = addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    job().updatePBEntryList(RECIPIENT_LIST);
    job().removeFaxRecipient(ann, false);
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.names("LanFax Recipient List"), std::vector<std::string>{"Bob"});
}

TEST_F(ListRefreshTest, StopsAtTheFirstRowThatTheHostRefuses)
{
    for (const char* name : {"Ann", "Bob", "Carla"})
        addRecipient(name, "1");
    host.faults.failNth(fake::Op::createRow, 2);
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.names("LanFax Recipient List"), std::vector<std::string>{"Ann"});
    EXPECT_EQ(host.journal.count("addRow"), 2);
}

TEST_F(ListRefreshTest, AMemberWhoWasRemovedFromTheJobIsPassedOver)
{
    for (const char* name : {"Ann", "Bob", "Carla"})
        addRecipient(name, "1");
    job().groupMemberList.appendRecipientList(&job().recipientList);
    job().removeFaxRecipientN(0, false);
    job().updatePBEntryList(GROUP_MEMBER_LIST);
    EXPECT_EQ(host.names("LanFaxAddGroup Group List"), (std::vector<std::string>{"Bob", "Carla"}));
}

// Rows of the job's list and of the picks stand for positions: passing one over would shift all behind it.
TEST_F(ListRefreshTest, StopsAtAPlaceOfTheJobOrThePicksThatTheHostLeftEmpty)
{
    addRecipient("Ann", "1");
    addPick("Bob", "2");
    job().recipientList.getListObject().push_front(nullptr);
    job().tmpRecipientList.getListObject().push_back(nullptr);
    addPick("Carla", "3");
    job().updatePBEntryList(RECIPIENT_LIST);
    job().updatePBEntryList(CUR_RECIPIENT_LIST);
    EXPECT_TRUE(host.names("LanFax Recipient List").empty());
    EXPECT_EQ(host.names("Fax Cur Recipient List"), std::vector<std::string>{"Bob"});
}

TEST_F(ListRefreshTest, LongTextsReachTheRowWhole)
{
    addRecipient(longText(6000), "1");
    job().updatePBEntryList(RECIPIENT_LIST);
    EXPECT_EQ(host.names("LanFax Recipient List"), std::vector<std::string>{longText(6000)});
}

TEST_F(ListRefreshTest, ShowsThousandsOfRecipients)
{
    for (int i = 0; i < 2000; ++i)
        addRecipient("r" + std::to_string(i), "1");
    job().updatePBEntryList(RECIPIENT_LIST);
    const auto names = host.names("LanFax Recipient List");
    ASSERT_EQ(names.size(), 2000U);
    EXPECT_EQ(names.back(), "r1999");
}
