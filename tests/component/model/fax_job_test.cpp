// The fax job: its defaults, the host's parameters, its three lists and who owns what in them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/fax_job.h"

#include "host/calls.h"
#include "tests/support/component_test.h"

class FaxJobTest : public StartedComponentTest {
protected:
    bool set(const char* key, const char* value)
    {
        return job().setFaxParameter(host::in(key), host::in(value));
    }
    bool get(const char* key, void* out) { return job().getFaxParameter(host::in(key), out); }

    bool isInList(std::string key) { return job().isFaxRecipientAlreadyInList(key); }

    /// A recipient that stands in the group member list alone.
    Tarvik40FaxRecipient* addMember(const std::string& name)
    {
        Tarvik40FaxRecipient* member = makeRecipient(name, "1").release();
        job().groupMemberList.addFaxRecipient(member);
        return member;
    }

    std::string memberText()
    {
        std::string out = "what was there before";
        EXPECT_TRUE(job().assembleGroupMemberListData(out));
        return out;
    }
};

TEST_F(FaxJobTest, StartsInDscModeWithNothingChosen)
{
    EXPECT_EQ(job().pdlMode, 1);
    EXPECT_EQ(job().attributePrefix, "%%");
    for (const std::string* text :
         {&job().coverRecipientText, &job().senderFaxNumber, &job().senderName, &job().senderOrganization,
          &job().senderPhone, &job().senderEmail, &job().coverNotes, &job().dialingPrefix, &job().creditCard,
          &job().customText})
        EXPECT_EQ(*text, "");
    for (bool flag : {job().faxCoverPage, job().showRecipientInfo, job().showSenderInfo, job().showCustomText,
                      job().promptOnDuplicates, job().promptOnRemoveOne, job().alwaysUseCurrentList,
                      job().alwaysUseCurrentCoverNotes})
        EXPECT_FALSE(flag);
    for (int list : {1, 2, 3, 4})
        EXPECT_EQ(job().getRecipientListCount(list), 0);
}

TEST_F(FaxJobTest, TheCoverPageParameterIsOneByte)
{
    unsigned char out[2] = {0xEE, 0xEE};
    EXPECT_TRUE(get("flFaxCoverPage", out));
    EXPECT_EQ(out[0], 0);
    EXPECT_EQ(out[1], 0xEE);

    job().faxCoverPage = true;
    EXPECT_TRUE(get("flFaxCoverPage", out));
    EXPECT_EQ(out[0], 1);
    EXPECT_EQ(out[1], 0xEE);
}

TEST_F(FaxJobTest, TheCurrentIndexIsTheSelectedRowOfThePhonebook)
{
    int out = 77;
    EXPECT_TRUE(get("CurrentFaxRecipientIndex", &out));
    EXPECT_EQ(out, -1);

    host.widget("Fax PB List").rows.resize(3);
    host.setSelection("Fax PB List", {2});
    EXPECT_TRUE(get("CurrentFaxRecipientIndex", &out));
    EXPECT_EQ(out, 2);
}

TEST_F(FaxJobTest, TheCurrentIndexIsTrueWhateverTheWidgetAnswers)
{
    host.faults.failOn(fake::Op::readProperty, "Fax PB List");
    int out = 77;
    EXPECT_TRUE(get("CurrentFaxRecipientIndex", &out));
}

TEST_F(FaxJobTest, OtherParametersCannotBeReadAndLeaveTheOutValue)
{
    for (const char* key : {"PDLMode", "Bogus", ""}) {
        int out = 77;
        EXPECT_FALSE(get(key, &out)) << key;
        EXPECT_EQ(out, 77) << key;
    }
}

TEST_F(FaxJobTest, ParameterKeysAreLookedUpWithTheFlagAndModesWithout)
{
    int out = 0;
    get("CurrentFaxRecipientIndex", &out);
    set("PDLMode", "PJL");
    const std::string journal = host.journal.all();
    const std::string keys = R"( in ",flFaxCoverPage,CurrentFaxRecipientIndex,PDLMode," flag true -> )";
    EXPECT_NE(journal.find("token \"CurrentFaxRecipientIndex\"" + keys + "2"), std::string::npos) << journal;
    EXPECT_NE(journal.find("token \"PDLMode\"" + keys + "3"), std::string::npos) << journal;
    EXPECT_NE(journal.find(R"(token "PJL" in ",DSC,PJL," flag false -> 2)"), std::string::npos) << journal;
}

TEST_F(FaxJobTest, EveryModeButPjlIsDsc)
{
    for (const char* mode : {"DSC", "PCL", "pjl", "PJL ", ""}) {
        ASSERT_TRUE(set("PDLMode", "PJL"));
        EXPECT_EQ(job().pdlMode, 2);
        EXPECT_EQ(job().attributePrefix, "@PJL COMMENT ");

        EXPECT_TRUE(set("PDLMode", mode)) << mode;
        EXPECT_EQ(job().pdlMode, 1) << mode;
        EXPECT_EQ(job().attributePrefix, "%%") << mode;
    }
}

TEST_F(FaxJobTest, SettingAnUnknownParameterIsTrueAndChangesNothing)
{
    set("PDLMode", "PJL");
    for (const char* key : {"Bogus", "flFaxCoverPage", "CurrentFaxRecipientIndex", ""})
        EXPECT_TRUE(set(key, "DSC")) << key;
    EXPECT_EQ(job().pdlMode, 2);
    EXPECT_EQ(job().attributePrefix, "@PJL COMMENT ");
    EXPECT_FALSE(job().faxCoverPage);
}

TEST_F(FaxJobTest, AddsToTheJobOrToThePicks)
{
    auto* anne = addRecipient("Anne", "1");
    auto* bernard = addPick("Bernard", "2");
    EXPECT_EQ(job().getFaxRecipientN(0, RECIPIENT_LIST), anne);
    EXPECT_EQ(job().getFaxRecipientN(0, CUR_RECIPIENT_LIST), bernard);
    EXPECT_FALSE(job().addFaxRecipient(nullptr, false));
    EXPECT_FALSE(job().addFaxRecipient(nullptr, true));
    EXPECT_EQ(job().getRecipientListCount(RECIPIENT_LIST), 1);
    EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 1);
}

TEST_F(FaxJobTest, PositionsExistInTheJobAndThePicksOnly)
{
    auto* anne = addRecipient("Anne", "1");
    addRecipient("Bernard", "2");
    auto* carla = addPick("Carla", "3");
    job().setGroupRecipientList(false);

    EXPECT_EQ(job().getFaxRecipientN(-1, RECIPIENT_LIST), anne);
    EXPECT_EQ(job().getFaxRecipientN(2, RECIPIENT_LIST), nullptr);
    EXPECT_EQ(job().getFaxRecipientN(0, CUR_RECIPIENT_LIST), carla);
    for (int list : {0, 2, 4, 5, -1})
        EXPECT_EQ(job().getFaxRecipientN(0, list), nullptr) << list;
}

TEST_F(FaxJobTest, CountsOfThePhonebookRowsAreThoseOfTheJob)
{
    addRecipient("Anne", "1");
    addRecipient("Bernard", "2");
    addPick("Carla", "3");
    job().setGroupRecipientList(false);
    job().setGroupRecipientList(false);

    const std::pair<int, int> expected[] = {{1, 2}, {2, 2}, {3, 1}, {4, 4}, {0, 0}, {5, 0}, {-1, 0}};
    for (auto [list, count] : expected)
        EXPECT_EQ(job().getRecipientListCount(list), count) << list;
}

TEST_F(FaxJobTest, TheCurrentRecipientIsTheSelectedOne)
{
    addRecipient("Anne", "1");
    auto* bernard = addRecipient("Bernard", "2");
    auto* carla = addPick("Carla", "3");
    job().updatePBEntryList(RECIPIENT_LIST);
    job().updatePBEntryList(CUR_RECIPIENT_LIST);
    host.setSelection("LanFax Recipient List", {1});
    host.setSelection("Fax Cur Recipient List", {0});

    EXPECT_EQ(job().getCurrentFaxRecipient(RECIPIENT_LIST), bernard);
    EXPECT_EQ(job().getCurrentFaxRecipient(CUR_RECIPIENT_LIST), carla);
    for (int list : {0, 2, 4, 5, -1})
        EXPECT_EQ(job().getCurrentFaxRecipient(list), nullptr) << list;
}

TEST_F(FaxJobTest, WithoutASelectionThereIsNoCurrentRecipient)
{
    addRecipient("Anne", "1");
    addPick("Carla", "3");
    EXPECT_EQ(job().getCurrentFaxRecipient(RECIPIENT_LIST), nullptr);
    EXPECT_EQ(job().getCurrentFaxRecipient(CUR_RECIPIENT_LIST), nullptr);
}

TEST_F(FaxJobTest, AListThatCannotBeReadHasNoCurrentRecipient)
{
    addRecipient("Anne", "1");
    addPick("Carla", "3");
    for (int list : {RECIPIENT_LIST, CUR_RECIPIENT_LIST})
        job().updatePBEntryList(list);
    host.setSelection("LanFax Recipient List", {0});
    host.setSelection("Fax Cur Recipient List", {0});
    host.faults.fail(fake::Op::readProperty);
    for (int list : {RECIPIENT_LIST, CUR_RECIPIENT_LIST})
        EXPECT_EQ(job().getCurrentFaxRecipient(list), nullptr) << list;
}

TEST_F(FaxJobTest, ASelectedRowBeyondTheListHasNoRecipient)
{
    host.widget("LanFax Recipient List").rows.resize(1);
    host.setSelection("LanFax Recipient List", {0});
    EXPECT_EQ(job().getCurrentFaxRecipient(RECIPIENT_LIST), nullptr);
}

TEST_F(FaxJobTest, RemovesFromTheChosenListOnly)
{
    auto* anne = addRecipient("Anne", "1");
    auto* bernard = addPick("Bernard", "2");

    EXPECT_FALSE(job().removeFaxRecipient(anne, true));
    EXPECT_FALSE(job().removeFaxRecipient(bernard, false));
    EXPECT_FALSE(job().removeFaxRecipient(nullptr, false));
    EXPECT_EQ(field(anne, "RecipientName"), "Anne");

    EXPECT_TRUE(job().removeFaxRecipient(anne, false));
    EXPECT_TRUE(job().removeFaxRecipient(bernard, true));
    EXPECT_EQ(job().getRecipientListCount(RECIPIENT_LIST), 0);
    EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 0);
}

TEST_F(FaxJobTest, RemovesByPosition)
{
    addRecipient("Anne", "1");
    addRecipient("Bernard", "2");
    addPick("Carla", "3");
    addPick("Dora", "4");

    EXPECT_TRUE(job().removeFaxRecipientN(1, false));
    EXPECT_TRUE(job().removeFaxRecipientN(0, true));

    EXPECT_EQ(jobNames(), std::vector<std::string>{"Anne"});
    EXPECT_EQ(field(job().getFaxRecipientN(0, CUR_RECIPIENT_LIST), "RecipientName"), "Dora");
}

TEST_F(FaxJobTest, RemovingAPositionBeyondTheListIsFalse)
{
    addRecipient("Anne", "1");
    EXPECT_FALSE(job().removeFaxRecipientN(1, false));
    EXPECT_FALSE(job().removeFaxRecipientN(0, true));
    EXPECT_EQ(jobNames(), std::vector<std::string>{"Anne"});
}

TEST_F(FaxJobTest, KnowsWhoIsInTheJobOrAmongThePicks)
{
    addRecipient("Anne", "555-1");
    addPick("Bernard", "(2)");
    EXPECT_TRUE(isInList("Anne555-1"));
    EXPECT_TRUE(isInList("Bernard(2)"));
    EXPECT_FALSE(isInList("anne555-1"));
    EXPECT_FALSE(isInList("Anne5551"));
    EXPECT_FALSE(isInList("Carla3"));
}

TEST_F(FaxJobTest, AnEmptyKeyIsInNoListEvenWhenANamelessRecipientIs)
{
    addRecipient("", "");
    addPick("", "");
    EXPECT_FALSE(isInList(""));
}

TEST_F(FaxJobTest, GroupMembersAreNotSearchedForDuplicates)
{
    std::unique_ptr<Tarvik40FaxRecipient> member(addMember("Anne"));
    EXPECT_FALSE(isInList("Anne1"));
    job().clearAllFaxRecipients(GROUP_MEMBER_LIST);
}

TEST_F(FaxJobTest, RemovesAllOfOneListOnly)
{
    auto fill = [this] {
        addRecipient("Anne", "1");
        addPick("Bernard", "2");
        addMember("Carla");
    };
    fill();
    for (int list : {0, 2, 5, -1})
        EXPECT_FALSE(job().removeAllFaxRecipients(list)) << list;
    for (int list : {1, 3, 4})
        EXPECT_EQ(job().getRecipientListCount(list), 1) << list;

    EXPECT_TRUE(job().removeAllFaxRecipients(1));
    EXPECT_EQ(job().getRecipientListCount(1), 0);
    EXPECT_EQ(job().getRecipientListCount(3), 1);
    EXPECT_TRUE(job().removeAllFaxRecipients(3));
    EXPECT_EQ(job().getRecipientListCount(3), 0);
    EXPECT_EQ(job().getRecipientListCount(4), 1);
    EXPECT_TRUE(job().removeAllFaxRecipients(4));
    EXPECT_EQ(job().getRecipientListCount(4), 0);
}

TEST_F(FaxJobTest, ClearingForgetsOneListWithoutDestroying)
{
    std::unique_ptr<Tarvik40FaxRecipient> anne(addRecipient("Anne", "1"));
    std::unique_ptr<Tarvik40FaxRecipient> bernard(addPick("Bernard", "2"));
    std::unique_ptr<Tarvik40FaxRecipient> carla(addMember("Carla"));
    for (int list : {0, 2, 5, -1})
        job().clearAllFaxRecipients(list);
    for (int list : {1, 3, 4})
        EXPECT_EQ(job().getRecipientListCount(list), 1) << list;

    for (int list : {1, 3, 4}) {
        job().clearAllFaxRecipients(list);
        EXPECT_EQ(job().getRecipientListCount(list), 0) << list;
    }
    EXPECT_EQ(field(anne.get(), "RecipientName"), "Anne");
    EXPECT_EQ(field(bernard.get(), "RecipientName"), "Bernard");
    EXPECT_EQ(field(carla.get(), "RecipientName"), "Carla");
}

TEST_F(FaxJobTest, AcceptedPicksBelongToTheJob)
{
    auto* anne = addRecipient("Anne", "1");
    auto* bernard = addPick("Bernard", "2");
    auto* carla = addPick("Carla", "3");

    job().appendTmpFaxRecipientList();

    EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 0);
    EXPECT_EQ(job().getFaxRecipientN(0, RECIPIENT_LIST), anne);
    EXPECT_EQ(job().getFaxRecipientN(1, RECIPIENT_LIST), bernard);
    EXPECT_EQ(job().getFaxRecipientN(2, RECIPIENT_LIST), carla);
    EXPECT_TRUE(job().removeFaxRecipient(bernard, false));
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Carla"}));
}

TEST_F(FaxJobTest, AcceptingPicksShowsTheJobAndThenEmptiesThePicks)
{
    addPick("Bernard", "2");
    job().appendTmpFaxRecipientList();
    EXPECT_EQ(
        host.journal.effects(),
        lines({R"(set "LanFax Details Button" Sensitivity off)",
               R"(set "LanFax Save Entry Button" Sensitivity off)",
               R"(set "LanFax Remove Button" Sensitivity off)",
               R"(set "LanFax Save Group Button" Sensitivity on)", R"(clearRows "LanFax Recipient List")",
               R"(addRow "LanFax Recipient List" "Bernard" "2" empty empty empty empty)",
               R"(clearRows "Fax Cur Recipient List")"}));
}

TEST_F(FaxJobTest, AcceptingNoPicksOnlyShowsTheEmptyPicks)
{
    addRecipient("Anne", "1");
    job().appendTmpFaxRecipientList();
    EXPECT_EQ(host.journal.effects(), lines({R"(clearRows "Fax Cur Recipient List")"}));
    EXPECT_EQ(jobNames(), std::vector<std::string>{"Anne"});
}

TEST_F(FaxJobTest, AcceptingPicksMakesNoDuplicateTest)
{
    addRecipient("Anne", "1");
    addPick("Anne", "1");
    job().appendTmpFaxRecipientList();
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Anne"}));
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(FaxJobTest, TheMemberTextNamesEveryMemberWithoutATrailingComma)
{
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    job().setGroupRecipientList(false);
    EXPECT_EQ(memberText(), ",uAnn,uBob");
}

TEST_F(FaxJobTest, TheMemberTextSkipsMembersWithoutAName)
{
    addRecipient("Ann", "1");
    addRecipient("", "2");
    addRecipient("Bob", "3");
    job().setGroupRecipientList(false);
    EXPECT_EQ(memberText(), ",uAnn,uBob");
}

TEST_F(FaxJobTest, MembersWithoutAnyNameGiveAnEmptyMemberText)
{
    addRecipient("", "2");
    job().setGroupRecipientList(false);
    EXPECT_EQ(memberText(), "");
}

TEST_F(FaxJobTest, WithoutMembersThereIsNoMemberText)
{
    addRecipient("Ann", "1");
    std::string out = "what was there before";
    EXPECT_FALSE(job().assembleGroupMemberListData(out));
    EXPECT_EQ(out, "");
}

TEST_F(FaxJobTest, GroupMembersAreTheJobsRecipientsThemselves)
{
    auto* ann = addRecipient("Ann", "1");
    job().setGroupRecipientList(false);
    EXPECT_EQ(job().groupMemberList.getFaxRecipientN(0), ann);
}

TEST_F(FaxJobTest, ForgettingTheGroupMembersLeavesTheJobIntact)
{
    addRecipient("Ann", "1");
    addRecipient("Bob", "2");
    job().setGroupRecipientList(false);
    job().setGroupRecipientList(true);
    EXPECT_EQ(job().getRecipientListCount(GROUP_MEMBER_LIST), 0);
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Ann", "Bob"}));
}

TEST_F(FaxJobTest, FillingTheGroupMembersTwiceListsThemTwice)
{
    addRecipient("Ann", "1");
    job().setGroupRecipientList(false);
    job().setGroupRecipientList(false);
    EXPECT_EQ(memberText(), ",uAnn,uAnn");
}

TEST_F(FaxJobTest, EveryChangeOfTheGroupMembersShowsThem)
{
    addRecipient("Ann", "1");
    job().setGroupRecipientList(false);
    job().setGroupRecipientList(true);
    EXPECT_EQ(host.journal.effects(),
              lines({R"(clearRows "LanFaxAddGroup Group List")",
                     R"(addRow "LanFaxAddGroup Group List" "Ann" "1" empty empty empty empty)",
                     R"(clearRows "LanFaxAddGroup Group List")"}));
}
