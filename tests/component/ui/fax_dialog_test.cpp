// The main fax dialog: opening, OK, Cancel, and the preference boxes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/fax_dialog.h"

#include "directory/device_directory.h"
#include "host/device_session.h"
#include "tests/support/component_test.h"

namespace {

const std::string dialogOpened =
    lines({R"(set "Lan Fax Window" Visibility on)", R"(set "Lan Fax TabSet" Value 0)"});

const std::string dialogHidden = lines({R"(set "Lan Fax Window" Visibility off)"});

} // namespace

class FaxDialogTest : public StartedComponentTest {
protected:
    FaxDialogTest()
    {
        host.device.tables = {{{"ubqSvcMonServiceDetailTableLDAP", 0}, "ldap.example"},
                              {{"ubqSvcMonServiceDetailTableLDAP", 1}, "dc=example"}};
    }

    void open()
    {
        host.fire("T40InvokeFaxDialog");
        host.journal.clear();
    }

    void chooseCoverSheet(bool cover) { host.choose("LanFax Cover Sheet Option", cover ? 1 : 0); }
    void ok() { host.press("LanFax OK Button"); }

    void okAgain()
    {
        open();
        ok();
    }
};

TEST_F(FaxDialogTest, OpensOnItsFirstTab)
{
    host.close("Lan Fax Window");
    host.setNumber("Lan Fax TabSet", 2);
    host.journal.clear();
    host.fire("T40InvokeFaxDialog");
    EXPECT_EQ(host.journal.all(), dialogOpened);
    EXPECT_TRUE(host.visible("Lan Fax Window"));
    EXPECT_EQ(host.number("Lan Fax TabSet"), 0);
}

TEST_F(FaxDialogTest, WithoutADeviceTheDirectoryStaysAsItIs)
{
    host.setSensitive("LDAP PB Type", false);
    host.fire("T40InvokeFaxDialog");
    EXPECT_FALSE(host.sensitive("LDAP PB Type"));
    EXPECT_EQ(deviceInfoReady, 0);
    EXPECT_EQ(ldapSession, nullptr);
}

TEST_F(FaxDialogTest, WithADeviceTheDirectoryIsReadAndOpened)
{
    host.connectDevice();
    host.setSensitive("LDAP PB Type", false);
    host.fire("T40InvokeFaxDialog");
    EXPECT_EQ(host.journal.effects(),
              dialogOpened + lines({R"(set "LDAP PB Type" Sensitivity on)", "new directory session",
                                    R"(setServerIP "ldap.example")", R"(setBaseServerPath "dc=example")",
                                    "openSession", "bindAnonymousSession"}));
    EXPECT_TRUE(host.sensitive("LDAP PB Type"));
    EXPECT_EQ(deviceInfoReady, 1);
}

TEST_F(FaxDialogTest, ADeviceWithoutADirectorySwitchesTheChoiceOffAgain)
{
    host.connectDevice();
    host.device.tables.clear();
    host.fire("T40InvokeFaxDialog");
    EXPECT_FALSE(host.sensitive("LDAP PB Type"));
    EXPECT_EQ(deviceInfoReady, 1);
}

TEST_F(FaxDialogTest, TheDeviceFlagIsNeverTakenBack)
{
    host.connectDevice();
    host.fire("T40InvokeFaxDialog");
    pBiDi = nullptr; // the device is gone
    host.fire("T40InvokeFaxDialog");
    EXPECT_EQ(deviceInfoReady, 1);
}

TEST_F(FaxDialogTest, OpeningResetsNoWidget)
{
    host.setText("LanFax Cover Sheet Notes", "note");
    chooseCoverSheet(true);
    host.tick("LanFax Dialing Prefix");
    ok();
    open();
    EXPECT_EQ(host.text("LanFax Cover Sheet Notes"), "note");
    EXPECT_TRUE(host.ticked("LanFax Dialing Prefix"));
    EXPECT_EQ(host.number("LanFax Cover Sheet Option"), 1);
}

TEST_F(FaxDialogTest, OkReadsTheOptionsAndThenHidesTheDialog)
{
    chooseCoverSheet(true);
    host.tick("LanFax Dialing Prefix");
    host.tick("LanFax Credit Card");
    open();
    ok();
    EXPECT_EQ(
        host.journal.calls(),
        lines({R"(feature "LanFax Cover Sheet Option" -> 1)", R"(get "LanFax Cover Sheet Notes" Value -> "")",
               R"(get "LanFax Dialing Prefix" Value -> on)",
               R"(get "LanFax Dialing Prefix Info" Value -> "")", R"(get "LanFax Credit Card" Value -> on)",
               R"(get "LanFax Credit Card Info" Value -> "")"}) +
            dialogHidden);
}

TEST_F(FaxDialogTest, OkReadsNoFieldOfAnOptionThatIsOff)
{
    open();
    ok();
    EXPECT_EQ(host.journal.calls(), lines({R"(feature "LanFax Cover Sheet Option" -> 0)",
                                           R"(get "LanFax Dialing Prefix" Value -> off)",
                                           R"(get "LanFax Credit Card" Value -> off)"}) +
                                        dialogHidden);
}

TEST_F(FaxDialogTest, OnlyTheValueZeroMeansNoCoverSheet)
{
    const std::pair<int, bool> expected[] = {{0, false}, {1, true}, {2, true}, {-1, true}, {0, false}};
    for (auto [value, cover] : expected) {
        host.featureValues["LanFax Cover Sheet Option"] = value;
        okAgain();
        EXPECT_EQ(job().faxCoverPage, cover) << value;
    }
}

TEST_F(FaxDialogTest, NotesAreTakenAsOnePostScriptStringWithABlankOnEachSide)
{
    chooseCoverSheet(true);
    host.type("LanFax Cover Sheet Notes", "Call me");
    ok();
    EXPECT_EQ(job().coverNotes, " (Call me) ");
    EXPECT_TRUE(job().faxCoverPage);
}

TEST_F(FaxDialogTest, WithoutACoverSheetTheNotesOfTheLastOneStay)
{
    chooseCoverSheet(true);
    host.type("LanFax Cover Sheet Notes", "Call me");
    ok();
    open();
    host.type("LanFax Cover Sheet Notes", "Never mind");
    chooseCoverSheet(false);
    ok();
    EXPECT_FALSE(job().faxCoverPage);
    EXPECT_EQ(job().coverNotes, " (Call me) ");
}

TEST_F(FaxDialogTest, EmptyNotesAreAnEmptyString)
{
    chooseCoverSheet(true);
    ok();
    EXPECT_EQ(job().coverNotes, " () ");
}

TEST_F(FaxDialogTest, NotesThatCannotBeReadAreEmpty)
{
    chooseCoverSheet(true);
    host.setText("LanFax Cover Sheet Notes", "Call me");
    host.faults.failOn(fake::Op::readProperty, "LanFax Cover Sheet Notes");
    ok();
    EXPECT_EQ(job().coverNotes, " () ");
}

TEST_F(FaxDialogTest, LongNotesAreTakenAsTheHostHandsThemOver)
{
    chooseCoverSheet(true);
    host.setText("LanFax Cover Sheet Notes", longText(6000));
    ok();
    EXPECT_EQ(job().coverNotes, " (" + longText(4095) + ") ");
}

/// The dialing prefix and the credit card follow the same rule.
struct TypedOption {
    const char* name;
    const char* box;
    const char* entry;
    std::string Tarvik40Fax::*field;
};

class TypedOptionTest : public FaxDialogTest, public testing::WithParamInterface<TypedOption> {
protected:
    void tick(bool on) { host.tick(GetParam().box, on); }
    void type(const std::string& text) { host.type(GetParam().entry, text); }
    std::string& taken() { return job().*GetParam().field; }
};

TEST_P(TypedOptionTest, IsTakenWhenItsBoxIsTicked)
{
    tick(true);
    type("9");
    ok();
    EXPECT_EQ(taken(), "9");
}

TEST_P(TypedOptionTest, IsNotTakenWhenItsBoxIsNotTicked)
{
    tick(true);
    type("9");
    tick(false);
    ok();
    EXPECT_EQ(taken(), "");
}

TEST_P(TypedOptionTest, UntickingItsBoxKeepsItInTheJob)
{
    tick(true);
    type("9");
    ok();
    open();
    tick(false);
    ok();
    EXPECT_EQ(taken(), "9");
}

TEST_P(TypedOptionTest, ATickedBoxWithAnEmptyFieldTakesTheEmptyText)
{
    taken() = "9";
    tick(true);
    ok();
    EXPECT_EQ(taken(), "");
}

TEST_P(TypedOptionTest, ABoxThatCannotBeReadKeepsIt)
{
    taken() = "old";
    tick(true);
    type("9");
    host.faults.failOn(fake::Op::readProperty, GetParam().box);
    ok();
    EXPECT_EQ(taken(), "old");
    EXPECT_FALSE(host.visible("Lan Fax Window"));
}

TEST_P(TypedOptionTest, AFieldThatCannotBeReadKeepsIt)
{
    taken() = "old";
    tick(true);
    type("9");
    host.faults.failOn(fake::Op::readProperty, GetParam().entry);
    ok();
    EXPECT_EQ(taken(), "old");
    EXPECT_FALSE(host.visible("Lan Fax Window"));
}

TEST_P(TypedOptionTest, ALongTextIsTakenAsTheHostHandsItOver)
{
    tick(true);
    host.setText(GetParam().entry, longText(6000));
    ok();
    EXPECT_EQ(taken(), longText(4095));
}

INSTANTIATE_TEST_SUITE_P(Every, TypedOptionTest,
                         testing::Values(TypedOption{"DialingPrefix", "LanFax Dialing Prefix",
                                                     "LanFax Dialing Prefix Info",
                                                     &Tarvik40Fax::dialingPrefix},
                                         TypedOption{"CreditCard", "LanFax Credit Card",
                                                     "LanFax Credit Card Info", &Tarvik40Fax::creditCard}),
                         [](const auto& test) { return test.param.name; });

TEST_F(FaxDialogTest, OkDoesNotAskForRecipients)
{
    ok();
    EXPECT_FALSE(host.visible("Lan Fax Window"));
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(FaxDialogTest, CancelOnlyHidesTheDialog)
{
    addRecipient("Ann", "1");
    chooseCoverSheet(true);
    host.tick("LanFax Dialing Prefix");
    host.type("LanFax Dialing Prefix Info", "9");
    open();
    host.press("LanFax Cancel Button");
    EXPECT_EQ(host.journal.all(), dialogHidden);
    EXPECT_EQ(host.number("LanFax Cover Sheet Option"), 1);
    EXPECT_TRUE(host.ticked("LanFax Dialing Prefix"));
    EXPECT_EQ(job().dialingPrefix, "");
    EXPECT_FALSE(job().faxCoverPage);
    EXPECT_EQ(jobNames(), std::vector<std::string>{"Ann"});
}

TEST_F(FaxDialogTest, ClosingTheWindowCancels)
{
    open();
    host.close("Lan Fax Window");
    EXPECT_EQ(host.journal.all(), dialogHidden);
}

struct PreferenceBox {
    const char* name;
    bool Tarvik40Fax::*field;
};

class PreferenceBoxTest : public FaxDialogTest, public testing::WithParamInterface<PreferenceBox> {
protected:
    /// Toggles the box as a user does; two of the boxes are hidden, and a host may show them.
    void toggle(bool on)
    {
        fake::Widget& box = host.widget(GetParam().name);
        box.state.ticked = on;
        ASSERT_EQ(box.callback, "T40LanFaxPreferencesCB");
        host.fire(box.callback, &box);
    }

    bool& preference() { return job().*GetParam().field; }
};

TEST_P(PreferenceBoxTest, IsRecordedInItsOwnField)
{
    toggle(true);
    EXPECT_TRUE(preference());
    EXPECT_EQ(job().promptOnDuplicates + job().promptOnRemoveOne + job().alwaysUseCurrentList +
                  job().alwaysUseCurrentCoverNotes,
              1);
    toggle(false);
    EXPECT_FALSE(preference());
}

TEST_P(PreferenceBoxTest, ABoxThatCannotBeReadLeavesItsField)
{
    for (bool kept : {true, false}) {
        preference() = kept;
        host.faults.failOn(fake::Op::readProperty, GetParam().name);
        toggle(!kept);
        EXPECT_EQ(preference(), kept);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Every, PreferenceBoxTest,
    testing::Values(PreferenceBox{"LanFax Pref Duplicates", &Tarvik40Fax::promptOnDuplicates},
                    PreferenceBox{"LanFax Pref Remove One", &Tarvik40Fax::promptOnRemoveOne},
                    PreferenceBox{"LanFax Pref Current List", &Tarvik40Fax::alwaysUseCurrentList},
                    PreferenceBox{"LanFax Pref Current Cover Notes",
                                  &Tarvik40Fax::alwaysUseCurrentCoverNotes}));

TEST_F(FaxDialogTest, AnotherBoxIsNoPreference)
{
    fake::Widget& box = host.widget("LanFax Dialing Prefix");
    box.state.ticked = true;
    host.fire("T40LanFaxPreferencesCB", &box);
    EXPECT_FALSE(job().promptOnDuplicates || job().promptOnRemoveOne || job().alwaysUseCurrentList ||
                 job().alwaysUseCurrentCoverNotes);
    EXPECT_EQ(host.journal.effects(), "");
}
