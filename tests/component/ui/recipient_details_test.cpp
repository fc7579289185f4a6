// Opening a recipient of the job for editing, and the properties of a pick.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_details.h"

#include "host/calls.h"
#include "tests/support/component_test.h"
#include "ui/recipient_dialog.h"

#include <utility>

namespace {

constexpr const char* jobList = "LanFax Recipient List";
constexpr const char* picksList = "Fax Cur Recipient List";
constexpr const char* recipientWindow = "LanFax Add Recipient Window";
constexpr const char* groupWindow = "LanFax Add Group Window";
constexpr const char* propertiesWindow = "LanFax Recipient Properties Window";

// The properties' fields in the order in which they are filled, with the recipient's fields.
constexpr std::pair<const char*, const char*> propertyFields[] = {
    {"RcptPropsNumber", "RecipientFaxNumber"},          {"RcptPropsName", "RecipientName"},
    {"RcptPropsOrganization", "RecipientOrganization"}, {"RcptPropsTelNumber", "RecipientPhone"},
    {"RcptPropsEmailAddr", "RecipientEmail"},           {"RcptPropsMailbox", "RecipientMailbox"},
};

using Names = std::vector<std::string>;

} // namespace

// --- "_Details..." ---------------------------------------------------------------------------

class DetailsTest : public StartedComponentTest {
protected:
    /// The job's recipients are in its list.
    void show()
    {
        job().updatePBEntryList(RECIPIENT_LIST);
        host.journal.clear();
    }

    Tarvik40FaxRecipient* addGroup(const std::string& name, const std::string& members)
    {
        Tarvik40FaxRecipient* group = addRecipient(name, "");
        group->setRecipientType(GROUP_RECIPIENT);
        group->setRecipientData("GroupMemberList", members.c_str());
        return group;
    }

    /// Selects a row and presses "_Details..."; the journal of the callback.
    std::string details(int row)
    {
        host.selectRows(jobList, {row});
        host.journal.clear();
        host.press("LanFax Details Button");
        return host.journal.calls();
    }
};

TEST_F(DetailsTest, OpensASingleRecipientInTheRecipientDialog)
{
    addRecipient("Anne", "1");
    Tarvik40FaxRecipient* bernard = addRecipient("Bernard", "2");
    bernard->setRecipientData("RecipientOrganization", "Acme");
    bernard->setRecipientData("RecipientPhone", "777");
    bernard->setRecipientData("RecipientEmail", "b@c");
    bernard->setRecipientData("RecipientMailbox", "12");
    show();
    EXPECT_EQ(
        details(1),
        lines({R"(get "LanFax Recipient List" Value -> 1)", R"(translate "Fax Recipient" -> none)",
               R"(set "LanFax Add Recipient Window" Title "Fax Recipient")",
               R"(set "RecipientNumber" WidgetText "2")", R"(set "RecipientName" WidgetText "Bernard")",
               R"(set "RecipientOrganization" WidgetText "Acme")",
               R"(set "RecipientTelNumber" WidgetText "777")", R"(set "RecipientEmailAddr" WidgetText "b@c")",
               R"(set "RecipientMailbox" WidgetText "12")",
               R"(set "LanFax Add Recipient Window" Visibility on)"}));
    EXPECT_EQ(editCurrentRecipient, 1);
}

TEST_F(DetailsTest, OkChangesTheRecipientInPlaceAndAddsNoRow)
{
    addRecipient("Anne", "1");
    Tarvik40FaxRecipient* bernard = addRecipient("Bernard", "2");
    show();
    details(1);
    host.type("RecipientName", "Bernd");
    host.press("LanFaxAddRcpt OK Button");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernd"}));
    EXPECT_EQ(job().getFaxRecipientN(1, RECIPIENT_LIST), bernard);
    EXPECT_EQ(host.names(jobList), (Names{"Anne", "Bernd"}));
    EXPECT_EQ(editCurrentRecipient, 0);
    EXPECT_FALSE(host.visible(recipientWindow));
}

TEST_F(DetailsTest, ItsTitlesAreTranslated)
{
    host.translations["Fax Recipient"] = "Destinataire";
    host.translations["Fax Group"] = "Groupe";
    addRecipient("Anne", "1");
    addGroup("Team", ",>Anne,");
    show();
    details(0);
    EXPECT_EQ(host.title(recipientWindow), "Destinataire");
    details(1);
    EXPECT_EQ(host.title(groupWindow), "Groupe");
}

TEST_F(DetailsTest, ItsTitlesAreEnglishOnBothKindsOfHost)
{
    addRecipient("Anne", "1");
    addGroup("Team", ",>Anne,");
    show();
    for (bool copies : {false, true}) {
        host.copiesUntranslated = copies;
        details(0);
        EXPECT_EQ(host.title(recipientWindow), "Fax Recipient");
        details(1);
        EXPECT_EQ(host.title(groupWindow), "Fax Group");
    }
}

TEST_F(DetailsTest, OpensAGroupByNameInTheGroupDialog)
{
    addGroup("Team", ",>Anne,>Bernard,");
    show();
    EXPECT_EQ(details(0),
              lines({R"(get "LanFax Recipient List" Value -> 0)", R"(translate "Fax Group" -> none)",
                     R"(set "LanFax Add Group Window" Title "Fax Group")",
                     R"(set "LanFaxAddGroup Group Name" WidgetText "Team")",
                     R"(set "LanFax Add Group Window" Visibility on)"}));
    EXPECT_FALSE(host.visible(recipientWindow));
}

TEST_F(DetailsTest, TheGroupDialogShowsTheMembersItHeldBefore)
{
    addGroup("Team", ",>Anne,>Bernard,");
    show();
    details(0);
    EXPECT_TRUE(host.rows("LanFaxAddGroup Group List").empty());

    host.selectRows(jobList, {});
    host.press("LanFax Save Group Button");
    details(0);
    EXPECT_EQ(host.names("LanFaxAddGroup Group List"), Names{"Team"});
}

TEST_F(DetailsTest, OkOfAGroupShownForDetailsSavesNothing)
{
    addGroup("Team", ",>Anne,");
    show();
    details(0);
    host.press("LanFaxAddGroup Ok Button");
    EXPECT_TRUE(host.savedRecords.empty());
    EXPECT_TRUE(host.visible(groupWindow));
}

TEST_F(DetailsTest, MemberTextsOfAnyFormAreHarmless)
{
    for (const char* members : {"", "Anne", ",uAnne,uBernard", ",>Anne", ">", ",", ",>,>,", ">>>,,,"}) {
        auto group = makeRecipient("Team", "");
        group->setRecipientType(GROUP_RECIPIENT);
        group->setRecipientData("GroupMemberList", members);
        EXPECT_TRUE(job().invokeGroupInfoUI(group.get())) << members;
    }
    EXPECT_TRUE(host.visible(groupWindow));
}

TEST_F(DetailsTest, NoGroupIsNotShown)
{
    EXPECT_FALSE(job().invokeGroupInfoUI(nullptr));
    EXPECT_EQ(host.journal.all(), "");
}

TEST_F(DetailsTest, AGroupWithoutANameEmptiesTheName)
{
    auto group = makeRecipient("", "");
    group->setRecipientType(GROUP_RECIPIENT);
    EXPECT_TRUE(job().invokeGroupInfoUI(group.get()));
    EXPECT_EQ(host.journal.effects(), lines({R"(set "LanFaxAddGroup Group Name" WidgetText "")",
                                             R"(set "LanFax Add Group Window" Visibility on)"}));
}

TEST_F(DetailsTest, ARecipientOfNoTypeShowsNothingAndSetsTheEditFlag)
{
    addRecipient("Anne", "1")->setRecipientType(0);
    show();
    EXPECT_EQ(details(0), lines({R"(get "LanFax Recipient List" Value -> 0)"}));
    EXPECT_EQ(editCurrentRecipient, 1);
}

TEST_F(DetailsTest, WithoutASelectionNothingChangesTheEditFlagIncluded)
{
    addRecipient("Anne", "1");
    show();
    T40EditFaxRecipient();
    EXPECT_EQ(host.journal.all(), lines({R"(get "LanFax Recipient List" Value -> -1)"}));
    EXPECT_EQ(editCurrentRecipient, 0);
}

TEST_F(DetailsTest, ASelectionThatCannotBeReadIsNone)
{
    addRecipient("Anne", "1");
    show();
    host.faults.failOn(fake::Op::readProperty, jobList);
    T40EditFaxRecipient();
    EXPECT_EQ(host.journal.effects(), "");
    EXPECT_EQ(editCurrentRecipient, 0);
}

/// Details of a group were shown, and the group's row is still selected.
class EditFlagAfterAGroupTest : public DetailsTest {
protected:
    EditFlagAfterAGroupTest()
    {
        addRecipient("Anne", "1");
        addGroup("Team", ",>Anne,");
        show();
        details(1);
    }

    void addDialog(const std::string& name, const std::string& faxNumber)
    {
        host.press("AddFaxRcpt");
        host.type("RecipientName", name);
        host.type("RecipientNumber", faxNumber);
        host.press("LanFaxAddRcpt OK Button");
    }
};

TEST_F(EditFlagAfterAGroupTest, TheNextAddDialogsOkChangesTheSelectedRecipientWithoutAQuestion)
{
    addDialog("Anne", "1");
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_EQ(jobNames(), (Names{"Anne", "Anne"}));
    EXPECT_EQ(job().getFaxRecipientN(1, RECIPIENT_LIST)->getRecipientType(), 1);
    EXPECT_EQ(editCurrentRecipient, 0);
}

TEST_F(EditFlagAfterAGroupTest, TheOneAfterAddsAgain)
{
    addDialog("Bernard", "2");
    addDialog("Carla", "3");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard", "Carla"}));
}

TEST_F(EditFlagAfterAGroupTest, ItIsTheRecipientSelectedThenThatIsChanged)
{
    host.selectRows(jobList, {0});
    addDialog("Bernard", "2");
    EXPECT_EQ(jobNames(), (Names{"Bernard", "Team"}));
}

TEST_F(EditFlagAfterAGroupTest, TheGroupDialogsButtonsLeaveTheFlag)
{
    host.press("LanFaxAddGroup Cancel Button");
    EXPECT_EQ(editCurrentRecipient, 1);
    host.press("LanFax Details Button");
    host.close(groupWindow);
    EXPECT_EQ(editCurrentRecipient, 1);
    host.setSelection(jobList, {});
    host.fire("T40SaveGroup");
    host.type("LanFaxAddGroup Group Name", "All");
    host.press("LanFaxAddGroup Ok Button");
    EXPECT_EQ(host.savedRecords.size(), 1U);
    EXPECT_EQ(editCurrentRecipient, 1);
}

TEST_F(EditFlagAfterAGroupTest, CancellingTheRecipientDialogClearsTheFlag)
{
    host.press("AddFaxRcpt");
    host.press("LanFaxAddRcpt Cancel Button");
    EXPECT_EQ(editCurrentRecipient, 0);
    addDialog("Bernard", "2");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Team", "Bernard"}));
}

// --- The properties of a pick ----------------------------------------------------------------

class PropertiesTest : public StartedComponentTest {
protected:
    PropertiesTest()
    {
        addRecipient("Dora", "4");
        host.press("AddPBFaxRcpt");
        addPick("Anne", "1");
        bernard = addPick("Bernard", "(0) 2-3");
        bernard->setRecipientData("RecipientOrganization", "Acme");
        bernard->setRecipientData("RecipientPhone", "777");
        bernard->setRecipientData("RecipientEmail", "b@c");
        bernard->setRecipientData("RecipientMailbox", "12");
        job().updatePBEntryList(CUR_RECIPIENT_LIST);
        host.selectRows(picksList, {1});
        host.journal.clear();
    }

    std::string view()
    {
        host.journal.clear();
        host.press("Cur Rcpt Prop Button");
        return host.journal.calls();
    }

    std::string ok()
    {
        host.journal.clear();
        host.press("LanFaxRcptProps OK Button");
        return host.journal.calls();
    }

    bool isOpen() { return host.visible(propertiesWindow); }

    Tarvik40FaxRecipient* bernard;
};

TEST_F(PropertiesTest, ShowThePickInAFixedOrder)
{
    EXPECT_EQ(
        view(),
        lines({R"(get "Fax Cur Recipient List" Value -> 1)", R"(set "RcptPropsNumber" WidgetText "(0) 2-3")",
               R"(set "RcptPropsName" WidgetText "Bernard")",
               R"(set "RcptPropsOrganization" WidgetText "Acme")",
               R"(set "RcptPropsTelNumber" WidgetText "777")", R"(set "RcptPropsEmailAddr" WidgetText "b@c")",
               R"(set "RcptPropsMailbox" WidgetText "12")",
               R"(set "LanFax Recipient Properties Window" Visibility on)"}));
}

TEST_F(PropertiesTest, EmptyFieldsAreShownEmpty)
{
    for (auto [widget, key] : propertyFields)
        host.setText(widget, "left over");
    host.selectRows(picksList, {0});
    view();
    for (const char* widget :
         {"RcptPropsOrganization", "RcptPropsTelNumber", "RcptPropsEmailAddr", "RcptPropsMailbox"})
        EXPECT_EQ(host.text(widget), "") << widget;
}

TEST_F(PropertiesTest, AreNotShownWithoutASelection)
{
    host.setSelection(picksList, {});
    T40ViewPBRcptProperties();
    EXPECT_EQ(host.journal.all(), lines({R"(get "Fax Cur Recipient List" Value -> -1)"}));
    EXPECT_FALSE(isOpen());
}

TEST_F(PropertiesTest, OkCallsTheHostInThisOrder)
{
    view();
    EXPECT_EQ(
        ok(),
        lines({R"(get "RcptPropsName" Value -> "Bernard")", R"(validateName "Bernard" "- ." -> accepted)",
               R"(get "RcptPropsNumber" Value -> "(0) 2-3")",
               R"(validatePhoneNumber "(0) 2-3" "- ( ) /" -> accepted)",
               R"(get "Fax Cur Recipient List" Value -> 1)", R"(get "RcptPropsOrganization" Value -> "Acme")",
               R"(get "RcptPropsTelNumber" Value -> "777")",
               R"(validatePhoneNumber "777" "- ( ) /" -> accepted)",
               R"(get "RcptPropsEmailAddr" Value -> "b@c")", R"(get "RcptPropsMailbox" Value -> "12")",
               R"(clearRows "Fax Cur Recipient List")",
               R"(addRow "Fax Cur Recipient List" "Anne" "1" empty empty empty empty)",
               R"(addRow "Fax Cur Recipient List" "Bernard" "(0) 2-3" "Acme" "777" "b@c" "12")",
               R"(set "LanFax Recipient Properties Window" Visibility off)"}));
}

TEST_F(PropertiesTest, OkChangesThePickAndItsRowAndNotTheJob)
{
    view();
    host.type("RcptPropsName", "Bernd");
    host.type("RcptPropsNumber", "(0) 5-6");
    host.type("RcptPropsOrganization", "New");
    host.type("RcptPropsTelNumber", "888");
    host.type("RcptPropsEmailAddr", "d@e");
    host.type("RcptPropsMailbox", "34");
    ok();
    EXPECT_EQ(host.rows(picksList)[1],
              (std::vector<std::string>{"Bernd", "(0) 5-6", "New", "888", "d@e", "34"}));
    EXPECT_EQ(field(bernard, "RecipientName"), "Bernd");
    EXPECT_EQ(jobNames(), Names{"Dora"});
    EXPECT_EQ(host.journal.count("clearRows \"LanFax Recipient List\""), 0);
    EXPECT_FALSE(isOpen());
}

TEST_F(PropertiesTest, TheDialledNumberFollowsTheTypedOne)
{
    view();
    host.type("RcptPropsNumber", "(0) 5-6");
    ok();
    EXPECT_EQ(dialledNumber(bernard), "056");
}

TEST_F(PropertiesTest, APickBecomesASingleRecipient)
{
    bernard->setRecipientType(GROUP_RECIPIENT);
    view();
    ok();
    EXPECT_EQ(bernard->getRecipientType(), 1);
}

TEST_F(PropertiesTest, ClearedFieldsKeepTheirOldValues)
{
    view();
    for (const char* widget :
         {"RcptPropsOrganization", "RcptPropsTelNumber", "RcptPropsEmailAddr", "RcptPropsMailbox"})
        host.type(widget, "");
    ok();
    EXPECT_EQ(field(bernard, "RecipientOrganization"), "Acme");
    EXPECT_EQ(field(bernard, "RecipientPhone"), "777");
    EXPECT_EQ(field(bernard, "RecipientEmail"), "b@c");
    EXPECT_EQ(field(bernard, "RecipientMailbox"), "12");
}

TEST_F(PropertiesTest, ARejectedPhoneNumberIsSilentlyDroppedAndItsFieldEmptied)
{
    view();
    host.type("RcptPropsTelNumber", "call me");
    host.type("RcptPropsMailbox", "34");
    ok();
    EXPECT_EQ(field(bernard, "RecipientPhone"), "777");
    EXPECT_EQ(field(bernard, "RecipientMailbox"), "34");
    EXPECT_EQ(host.text("RcptPropsTelNumber"), "");
    EXPECT_FALSE(host.visible("LanFax Add Recipient Error Window"));
    EXPECT_FALSE(isOpen());
}

TEST_F(PropertiesTest, ARefusedNameOrNumberKeepsTheWindowOpen)
{
    for (const char* widget : {"RcptPropsName", "RcptPropsNumber"}) {
        view();
        host.type(widget, "");
        host.type("RcptPropsMailbox", "34");
        ok();
        EXPECT_TRUE(isOpen());
        EXPECT_TRUE(host.visible("LanFax Add Recipient Error Window"));
        EXPECT_EQ(field(bernard, "RecipientMailbox"), "12");
        host.press("LanFax Add Fax Rcpt Error Close Button");
    }
}

TEST_F(PropertiesTest, OkWithoutASelectionStoresNothingAndKeepsTheWindowOpen)
{
    view();
    host.type("RcptPropsName", "Bernd");
    host.setSelection(picksList, {});
    host.journal.clear();
    ok();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(host.journal.effects(), "");
    EXPECT_EQ(host.names(picksList), (Names{"Anne", "Bernard"}));
}

TEST_F(PropertiesTest, OkChangesThePickSelectedAtThatMoment)
{
    view();
    host.selectRows(picksList, {0});
    ok();
    EXPECT_EQ(host.names(picksList), (Names{"Bernard", "Bernard"}));
}

TEST_F(PropertiesTest, NoDuplicateQuestionIsAsked)
{
    view();
    host.type("RcptPropsName", "Dora");
    host.type("RcptPropsNumber", "4");
    ok();
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_EQ(host.names(picksList), (Names{"Anne", "Dora"}));
}

TEST_F(PropertiesTest, CancelStoresNothing)
{
    view();
    host.type("RcptPropsName", "Bernd");
    host.journal.clear();
    host.press("LanFaxRcptProps Cancel Button");
    EXPECT_EQ(host.journal.all(), lines({R"(set "LanFax Recipient Properties Window" Visibility off)"}));
    EXPECT_EQ(field(bernard, "RecipientName"), "Bernard");
}

TEST_F(PropertiesTest, ClosingTheWindowFromItsFrameCallsNothing)
{
    EXPECT_FALSE(host.callbacks.contains(host.widget(propertiesWindow).callback));
    view();
    host.journal.clear();
    host.close(propertiesWindow);
    EXPECT_EQ(host.journal.all(), "");
    EXPECT_EQ(field(bernard, "RecipientName"), "Bernard");
}

// --- Which recipient is the current one ------------------------------------------------------

TEST_F(PropertiesTest, WithoutASelectionThereIsNoCurrentPick)
{
    host.setSelection(picksList, {});
    EXPECT_EQ(job().getCurrentFaxRecipient(CUR_RECIPIENT_LIST), nullptr);
    EXPECT_EQ(field(job().getFaxRecipientN(-1, CUR_RECIPIENT_LIST), "RecipientName"), "Anne");
}

TEST_F(PropertiesTest, ASelectedPickThatCannotBeReadIsNeitherShownNorChanged)
{
    host.faults.failOn(fake::Op::readProperty, picksList);
    host.fire("T40ViewPBRcptProperties");
    EXPECT_FALSE(isOpen());
    host.faults.clear();
    view();
    host.type("RcptPropsName", "Bernd");
    host.faults.failOn(fake::Op::readProperty, picksList);
    ok();
    EXPECT_TRUE(isOpen());
    host.faults.clear();
    EXPECT_EQ(host.names(picksList), (Names{"Anne", "Bernard"}));
    EXPECT_EQ(field(bernard, "RecipientName"), "Bernard");
}

TEST_F(DetailsTest, WithoutASelectionThereIsNoCurrentRecipient)
{
    addRecipient("Anne", "1");
    show();
    EXPECT_EQ(job().getCurrentFaxRecipient(RECIPIENT_LIST), nullptr);
    EXPECT_EQ(field(job().getFaxRecipientN(-1, RECIPIENT_LIST), "RecipientName"), "Anne");
}
