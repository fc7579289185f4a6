// The phonebook dialog: choosing the kind of phonebook, opening, OK and Cancel.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/phonebook_dialog.h"

#include "common/module_state.h"
#include "directory/device_directory.h"
#include "tests/support/phonebook_test.h"

namespace {

constexpr const char* window = "Add Rcpt From PB Window";

const std::string listButtonsShown = lines({
    R"(set "Search String" Visibility off)",
    R"(set "Search Button" Visibility off)",
    R"(set "Search Label" Visibility off)",
    R"(set "Search Status" Visibility off)",
    R"(set "Add Button2" Visibility off)",
    R"(set "Add Button" Visibility on)",
});

const std::string searchWidgetsShown = lines({
    R"(set "Search String" Visibility on)",
    R"(set "Search Button" Visibility on)",
    R"(set "Search Label" Visibility on)",
    R"(set "Search Status" WidgetText "")",
    R"(set "Search Status" Visibility on)",
    R"(set "Add Button2" Visibility on)",
    R"(set "Add Button" Visibility off)",
});

const std::string directoryDisabled = lines({
    R"(set "Current PB Type" Value 0)",
    R"(set "LDAP PB Type" Sensitivity off)",
    R"(set "LDAP PB Status" WidgetText "Unavailable")",
    R"(set "LDAP More Info Button" Visibility off)",
});

const std::string dialogShown = lines({
    R"(set "Add Rcpt From PB Window" Visibility on)",
    R"(set "Cur Rcpt Remove Button" Sensitivity off)",
    R"(set "Cur Rcpt Prop Button" Sensitivity off)",
});

/// What OK and Cancel end with.
const std::string emptiedAndHidden = lines({
    R"(set "Search String" WidgetText "")",
    R"(set "Search Status" WidgetText "")",
    R"(clearRows "Fax PB List")",
    R"(set "Add Rcpt From PB Window" Visibility off)",
});

/// How every switch of the kind begins.
std::string switchedTo(int kind)
{
    return lines({R"(feature "Current PB Type" -> )" + std::to_string(kind), R"(clearRows "Fax PB List")",
                  R"(set "Search String" WidgetText "")"});
}

} // namespace

class PhonebookDialogTest : public PhonebookTest {
protected:
    /// Chooses a kind of phonebook in the open dialog; the journal of that.
    std::string chooseKind(int kind)
    {
        host.journal.clear();
        host.choose("Current PB Type", kind);
        return host.journal.calls();
    }

    bool isOpen() { return host.visible(window); }

    /// The device knows its directory.
    void connectDirectory()
    {
        host.connectDevice();
        host.device.tables = {{{"ubqSvcMonServiceDetailTableLDAP", 0}, "ldap.example:389"},
                              {{"ubqSvcMonServiceDetailTableLDAP", 1}, "o=example"}};
    }
};

// --- Choosing the kind -----------------------------------------------------------------------

TEST_F(PhonebookDialogTest, ThePersonalKindIsListedBehindTheListButtons)
{
    openDialog();
    keepPersonal({entry("Anne", "1")});
    EXPECT_EQ(chooseKind(0),
              switchedTo(0) +
                  lines({"reopenDatabase", "delete iterator", "new iterator", R"(clearRows "Fax PB List")",
                         "firstRecord", R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)",
                         "nextRecord"}) +
                  listButtonsShown);
    EXPECT_EQ(currentPBType, 0);
    EXPECT_EQ(shownPBType, 0);
}

TEST_F(PhonebookDialogTest, TheSharedKindIsListedBehindTheListButtons)
{
    keepShared({entry("Anne", "1")});
    openDialog();
    EXPECT_EQ(chooseKind(1),
              switchedTo(1) +
                  lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/office.xdb" "r")",
                         "reopenDatabase", "new iterator", R"(clearRows "Fax PB List")", "firstRecord",
                         R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)", "nextRecord"}) +
                  listButtonsShown);
    EXPECT_EQ(currentPBIterator, sharedPBIterator);
}

TEST_F(PhonebookDialogTest, TheDirectoryKindShowsTheSearchAndConnects)
{
    connectDirectory();
    openDialog();
    EXPECT_EQ(chooseKind(2),
              switchedTo(2) + searchWidgetsShown +
                  lines({R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 0)",
                         R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 1)", "new directory session",
                         R"(setServerIP "ldap.example:389")", R"(setBaseServerPath "o=example")",
                         "openSession", "bindAnonymousSession"}));
    EXPECT_EQ(currentPBType, 2);
    EXPECT_TRUE(host.visible("Search String"));
    EXPECT_TRUE(host.visible("Add Button2"));
    EXPECT_FALSE(host.visible("Add Button"));
}

TEST_F(PhonebookDialogTest, TheDirectoryKindReadsNoPhonebookFileAndKeepsTheCurrentOne)
{
    connectDirectory();
    keepPersonal({entry("Anne", "1")});
    openDialog();
    QuelmLegacyDatabaseIterator* iterator = currentPBIterator;
    EXPECT_EQ(chooseKind(2).find("Database"), std::string::npos);
    EXPECT_TRUE(rowNames().empty());
    EXPECT_EQ(currentPBIterator, iterator);
}

TEST_F(PhonebookDialogTest, WithoutADeviceTheDirectoryKindFallsBackToThePersonalOne)
{
    openDialog();
    EXPECT_EQ(chooseKind(2), switchedTo(2) + searchWidgetsShown + directoryDisabled);
    EXPECT_EQ(currentPBType, 0);
    EXPECT_EQ(host.number("Current PB Type"), 0);
    EXPECT_EQ(host.text("LDAP PB Status"), "Unavailable");
}

TEST_F(PhonebookDialogTest, AfterAFallbackThePersonalKindIsLoadedWhenItIsChosen)
{
    openDialog();
    chooseKind(2);
    EXPECT_EQ(shownPBType, 2);
    keepPersonal({entry("Anne", "1")});
    EXPECT_TRUE(chooseKind(0).ends_with(listButtonsShown));
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Anne"});
}

TEST_F(PhonebookDialogTest, TheSearchWidgetsGoWhenAPhonebookIsChosenAgain)
{
    connectDirectory();
    openDialog();
    chooseKind(2);
    host.type("Search String", "Smi");
    chooseKind(1);
    for (const char* name :
         {"Search String", "Search Button", "Search Label", "Search Status", "Add Button2"})
        EXPECT_FALSE(host.visible(name)) << name;
    EXPECT_TRUE(host.visible("Add Button"));
    EXPECT_EQ(host.text("Search String"), "");
}

TEST_F(PhonebookDialogTest, TheSameKindASecondTimeReloadsNothing)
{
    openDialog();
    for (int kind : {0, 1, 2}) {
        connectDirectory();
        chooseKind(kind);
        EXPECT_EQ(chooseKind(kind), lines({R"(feature "Current PB Type" -> )" + std::to_string(kind)}));
    }
}

TEST_F(PhonebookDialogTest, OpeningTheDialogDoesNotCountAsALoadedKind)
{
    openDialog();
    EXPECT_EQ(shownPBType, -1);
    EXPECT_TRUE(chooseKind(0).ends_with(listButtonsShown));
}

TEST_F(PhonebookDialogTest, WithoutTheListTheKindIsOnlyRead)
{
    openDialog();
    pbListWidget = nullptr;
    EXPECT_EQ(chooseKind(1), lines({R"(feature "Current PB Type" -> 1)"}));
    EXPECT_EQ(currentPBType, 1);
    EXPECT_EQ(shownPBType, -1);
}

TEST_F(PhonebookDialogTest, AnUnknownFeatureLeavesTheKind)
{
    keepShared({entry("Anne", "1")});
    openDialog();
    chooseKind(1);
    host.unknownFeatures.insert("Current PB Type");
    EXPECT_EQ(chooseKind(0), lines({R"(feature "Current PB Type" -> unknown)"}));
    EXPECT_EQ(currentPBType, 1);
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Anne"});
}

TEST_F(PhonebookDialogTest, AKindThatNobodyKnowsOnlyEmptiesTheList)
{
    keepPersonal({entry("Anne", "1")});
    openDialog();
    QuelmLegacyDatabase* database = currentPBDatabase;
    host.featureValues["Current PB Type"] = 7;
    EXPECT_EQ(chooseKind(0), switchedTo(7));
    EXPECT_EQ(currentPBDatabase, database);
}

TEST_F(PhonebookDialogTest, AKindWithoutAFileShowsAnEmptyList)
{
    keepPersonal({entry("Anne", "1")});
    openDialog();
    EXPECT_EQ(chooseKind(1), switchedTo(1) + listButtonsShown);
    EXPECT_TRUE(rowNames().empty());
    EXPECT_EQ(currentPBDatabase, nullptr);
    EXPECT_EQ(currentPBIterator, nullptr);
}

TEST_F(PhonebookDialogTest, ASharedFileThatCannotBeOpenedIsTriedAtEveryListingAndNeverCreated)
{
    chooseShared(sharedFile);
    openDialog();
    chooseKind(1);
    EXPECT_TRUE(rowNames().empty());
    chooseKind(0);
    chooseKind(1);
    EXPECT_EQ(host.journal.count("openDatabase"), 1);
    openDialog();
    EXPECT_EQ(host.journal.count("openDatabase"), 2);
    EXPECT_EQ(host.journal.count("createDatabase"), 0);
    EXPECT_FALSE(host.disk.phonebooks.contains(sharedFile));
}

// --- Opening ---------------------------------------------------------------------------------

TEST_F(PhonebookDialogTest, OpensWithThePersonalPhonebookListed)
{
    keepPersonal({entry("Anne", "1")});
    openDialog();
    EXPECT_EQ(host.journal.calls(),
              dialogShown +
                  lines({"reopenDatabase", "new iterator", R"(clearRows "Fax PB List")", "firstRecord",
                         R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)", "nextRecord"}));
}

TEST_F(PhonebookDialogTest, OpensWithTheSharedPhonebookListed)
{
    keepShared({entry("Anne", "1")});
    openDialog();
    chooseKind(1);
    host.press("LanFaxRcptPB OK Button");
    host.journal.clear();
    openDialog();
    EXPECT_EQ(host.journal.calls(),
              dialogShown +
                  lines({"reopenDatabase", "delete iterator", "new iterator", R"(clearRows "Fax PB List")",
                         "firstRecord", R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)",
                         "nextRecord"}));
    EXPECT_EQ(currentPBIterator, sharedPBIterator);
}

TEST_F(PhonebookDialogTest, OpensEmptyForTheDirectory)
{
    connectDirectory();
    openDialog();
    chooseKind(2);
    host.press("LanFaxRcptPB Cancel Button");
    host.journal.clear();
    openDialog();
    EXPECT_EQ(host.journal.calls(), dialogShown);
}

TEST_F(PhonebookDialogTest, OpeningKeepsTheRowsWhenThePhonebookCannotBeListed)
{
    keepPersonal({entry("Anne", "1")});
    openDialog();
    host.faults.fail(fake::Op::createDatabase);
    choosePersonal(otherPersonalFile);
    openDialog();
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Anne"});
    EXPECT_EQ(currentPBDatabase, nullptr);
}

TEST_F(PhonebookDialogTest, PickingANewPersonalFileShowsAnEmptyPhonebookAtTheNextOpening)
{
    keepPersonal({entry("Anne", "1")});
    openDialog();
    host.press("LanFaxRcptPB OK Button");
    choosePersonal(otherPersonalFile);
    openDialog();
    EXPECT_TRUE(rowNames().empty());
    EXPECT_TRUE(host.disk.phonebooks.contains(otherPersonalFile));
}

// --- OK --------------------------------------------------------------------------------------

TEST_F(PhonebookDialogTest, OkMovesThePicksToTheJob)
{
    addRecipient("Anne", "1");
    openDialog();
    Tarvik40FaxRecipient* bernard = addPick("Bernard", "2");
    addPick("Carla", "3");
    host.journal.clear();
    host.press("LanFaxRcptPB OK Button");
    EXPECT_EQ(
        host.journal.calls(),
        lines({R"(get "LanFax Recipient List" Value -> -1)", R"(set "LanFax Details Button" Sensitivity off)",
               R"(set "LanFax Save Entry Button" Sensitivity off)",
               R"(set "LanFax Remove Button" Sensitivity off)",
               R"(set "LanFax Save Group Button" Sensitivity on)", R"(clearRows "LanFax Recipient List")",
               R"(addRow "LanFax Recipient List" "Anne" "1" empty empty empty empty)",
               R"(addRow "LanFax Recipient List" "Bernard" "2" empty empty empty empty)",
               R"(addRow "LanFax Recipient List" "Carla" "3" empty empty empty empty)",
               R"(clearRows "Fax Cur Recipient List")"}) +
            emptiedAndHidden);
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Bernard", "Carla"}));
    EXPECT_EQ(job().getFaxRecipientN(1, RECIPIENT_LIST), bernard);
    EXPECT_TRUE(pickNames().empty());
    EXPECT_FALSE(isOpen());
}

TEST_F(PhonebookDialogTest, OkWithoutPicksLeavesTheJobsListAlone)
{
    openDialog();
    host.journal.clear();
    host.press("LanFaxRcptPB OK Button");
    EXPECT_EQ(host.journal.calls(), lines({R"(clearRows "Fax Cur Recipient List")"}) + emptiedAndHidden);
}

TEST_F(PhonebookDialogTest, OkMakesNoDuplicateTest)
{
    addRecipient("Anne", "1");
    openDialog();
    addPick("Anne", "1");
    host.press("LanFaxRcptPB OK Button");
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Anne"}));
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(PhonebookDialogTest, WhatOkMovedBelongsToTheJob)
{
    openDialog();
    addPick("Anne", "1");
    host.press("LanFaxRcptPB OK Button");
    openDialog();
    host.press("LanFaxRcptPB Cancel Button");
    EXPECT_EQ(jobNames(), std::vector<std::string>{"Anne"});
    host.fire("T40RemoveAllFaxRecipients");
    EXPECT_TRUE(jobNames().empty());
}

TEST_F(PhonebookDialogTest, AfterOkTheSameKindIsListedByReopeningOnly)
{
    keepPersonal({entry("Anne", "1")});
    openDialog();
    chooseKind(0);
    host.press("LanFaxRcptPB OK Button");
    EXPECT_TRUE(rowNames().empty());
    openDialog();
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Anne"});
    EXPECT_EQ(chooseKind(0), lines({R"(feature "Current PB Type" -> 0)"}));
}

// --- Cancel ----------------------------------------------------------------------------------

TEST_F(PhonebookDialogTest, CancelDestroysThePicks)
{
    addRecipient("Anne", "1");
    for (bool fromFrame : {false, true}) {
        openDialog();
        addPick("Bernard", "2");
        addPick("Carla", "3");
        host.journal.clear();
        if (fromFrame)
            host.close(window);
        else
            host.press("LanFaxRcptPB Cancel Button");
        EXPECT_EQ(host.journal.calls(), lines({R"(clearRows "Fax Cur Recipient List")"}) + emptiedAndHidden);
        EXPECT_TRUE(pickNames().empty());
        EXPECT_EQ(jobNames(), std::vector<std::string>{"Anne"});
        EXPECT_FALSE(isOpen());
    }
}

TEST_F(PhonebookDialogTest, ClosingEmptiesTheSearch)
{
    connectDirectory();
    for (const char* button : {"LanFaxRcptPB OK Button", "LanFaxRcptPB Cancel Button"}) {
        openDialog();
        chooseKind(2);
        host.type("Search String", "Smi");
        host.setText("Search Status", "1 Record Found");
        host.press(button);
        EXPECT_EQ(host.text("Search String"), "");
        EXPECT_EQ(host.text("Search Status"), "");
    }
}
