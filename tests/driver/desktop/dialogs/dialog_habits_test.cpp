// Keys and names that the component's dialogs have on a screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/dialog_habits.h"

#include "driver/widgets/widget_tree.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"

#include <set>

namespace {

class DialogHabits : public DriverTest {
protected:
    DialogHabits() : DriverTest(build_paths::componentLibrary()) {}

    quelm::Widget& widget(const std::string& name) { return *driver().widgets().find(name); }

    static std::string nameOf(const quelm::Widget* found)
    {
        return found == nullptr ? "none" : found->name();
    }

    std::string preset(const std::string& window) { return nameOf(quelm::defaultButton(widget(window))); }

    std::string spoken(const std::string& control) { return quelm::accessibleName(widget(control)); }
};

/// Calls `look` for everything that stands in a widget.
template <class Look>
void forAll(const quelm::Widget& widget, Look look)
{
    for (const auto& child : widget.children()) {
        look(*child);
        forAll(*child, look);
    }
}

} // namespace

TEST_F(DialogHabits, EnterPressesOkOrTheOnlyButton)
{
    EXPECT_EQ(preset("Lan Fax Window"), "LanFax OK Button");
    EXPECT_EQ(preset("LanFax Add Recipient Window"), "LanFaxAddRcpt OK Button");
    EXPECT_EQ(preset("LanFax Recipient Properties Window"), "LanFaxRcptProps OK Button");
    EXPECT_EQ(preset("LanFax Add Recipient Error Window"), "LanFax Add Fax Rcpt Error Close Button");
    EXPECT_EQ(preset("Cover Sheet Setup Window"), "LanFaxCover OK Button");
    EXPECT_EQ(preset("Sender Information Window"), "LanFaxSender OK Button");
    EXPECT_EQ(preset("Add Rcpt From PB Window"), "LanFaxRcptPB OK Button");
    EXPECT_EQ(preset("LDAP Info Dialog"), "LDAP Info Close");
    EXPECT_EQ(preset("LanFax Add Group Window"), "LanFaxAddGroup Ok Button");
}

TEST_F(DialogHabits, EnterInTheSearchFieldPressesTheButtonBesideIt)
{
    EXPECT_EQ(nameOf(quelm::buttonBeside(widget("Search String"))), "Search Button");
    EXPECT_EQ(nameOf(quelm::buttonBeside(widget("RecipientMailbox"))), "none");
    EXPECT_EQ(nameOf(quelm::buttonBeside(widget("LanFax Personal PB Name"))), "none");
}

TEST_F(DialogHabits, ADoubleClickOpensOrAddsARow)
{
    EXPECT_EQ(nameOf(quelm::openingButton(widget("LanFax Recipient List"))), "LanFax Details Button");
    EXPECT_EQ(nameOf(quelm::openingButton(widget("Fax Cur Recipient List"))), "Cur Rcpt Prop Button");
    EXPECT_EQ(nameOf(quelm::openingButton(widget("LanFaxAddGroup Group List"))), "none");
    EXPECT_EQ(nameOf(quelm::openingButton(widget("Fax PB List"))), "Add Button");
    widget("Add Button").setVisible(false);
    widget("Add Button2").setVisible(true);
    EXPECT_EQ(nameOf(quelm::openingButton(widget("Fax PB List"))), "Add Button2");
}

TEST_F(DialogHabits, TheDeleteKeyRemovesWhereRowsCanBeRemoved)
{
    EXPECT_EQ(nameOf(quelm::removingButton(widget("LanFax Recipient List"))), "LanFax Remove Button");
    EXPECT_EQ(nameOf(quelm::removingButton(widget("Fax Cur Recipient List"))), "Cur Rcpt Remove Button");
    EXPECT_EQ(nameOf(quelm::removingButton(widget("Fax PB List"))), "none");
}

TEST_F(DialogHabits, AFieldIsCalledByItsLabel)
{
    EXPECT_EQ(spoken("RecipientName"), "Name");
    EXPECT_EQ(spoken("RecipientNumber"), "Fax Number");
    EXPECT_EQ(spoken("LDAP HostPort"), "Host Name and Port");
    EXPECT_EQ(spoken("LanFax Resolution"), "Fax Resolution");
    EXPECT_EQ(spoken("LanFax Default PB"), "Default Phonebook");
    EXPECT_EQ(spoken("Search String"), "Search");
    EXPECT_EQ(spoken("LanFax Recipient List"), "Fax Recipient List");
    EXPECT_EQ(spoken("Fax Cur Recipient List"), "Fax Recipients");
    EXPECT_EQ(spoken("LanFaxAddGroup Group List"), "Members");
    EXPECT_EQ(spoken("LanFaxAddGroup Group Name"), "Group Name");
}

TEST_F(DialogHabits, AFieldOfABoxIsCalledByTheBox)
{
    EXPECT_EQ(spoken("LanFax Dialing Prefix Info"), "Dialing Prefix");
    EXPECT_EQ(spoken("LanFax Credit Card Info"), "Credit Card");
    EXPECT_EQ(spoken("Cover Sheet Custom Text"), "Show Custom Text");
}

TEST_F(DialogHabits, WhatHasNoLabelHasANameOfItsOwn)
{
    EXPECT_EQ(spoken("SendAtHr"), "Hour");
    EXPECT_EQ(spoken("SendAtMin"), "Minute");
    EXPECT_EQ(spoken("SendAtAmPm"), "AM or PM");
    EXPECT_EQ(spoken("Fax PB List"), "Phonebook Entries");
}

TEST_F(DialogHabits, ButtonsAndWindowsAreCalledByTheirTexts)
{
    EXPECT_EQ(spoken("Add Button"), "Add >>");
    EXPECT_EQ(spoken("LanFax Print Conf Sheet"), "Print a Confirmation Sheet");
    EXPECT_EQ(spoken("Cover Sheet Setup Window"), "Cover Sheet Setup");
}

TEST_F(DialogHabits, EveryControlHasANameThatIsItsOwnWithinItsWindow)
{
    for (const auto& window : driver().widgets().windows()) {
        std::set<std::string> fields;
        forAll(*window, [&](const quelm::Widget& control) {
            const bool isControl = control.kind() == quelm::WidgetKind::textEntry ||
                                   control.kind() == quelm::WidgetKind::comboBoxMain ||
                                   control.kind() == quelm::WidgetKind::spinBox || control.isList();
            if (isControl) {
                const std::string name = quelm::accessibleName(control);
                EXPECT_NE(name, "") << control.name();
                EXPECT_TRUE(fields.insert(name).second)
                    << control.name() << " is called " << name << " as well";
            }
        });
    }
}

TEST_F(DialogHabits, OnlyThePersonalPhonebookMayBeANewFile)
{
    quelm::Widget& chooser = driver().widgets().addFileChooser(widget("Lan Fax Window"), "Load...");
    chooser.rename("SharedPBSelectFileDialog");
    EXPECT_FALSE(quelm::takesNewFiles(chooser));
    chooser.rename("PersonalPBSelectFileDialog");
    EXPECT_TRUE(quelm::takesNewFiles(chooser));
}
