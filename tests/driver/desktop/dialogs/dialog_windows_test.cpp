// The dialogs on the screen and the widget tree follow each other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/dialog_windows.h"

#include "base/error.h"
#include "driver/core/callbacks.h"
#include "driver/core/user_actions.h"
#include "tests/driver/desktop/desktop_fixture.h"
#include "tests/support/log_capture.h"

#include <atkmm/object.h>
#include <gdk/gdkkeysyms.h>
#include <gmock/gmock.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>
#include <gtkmm/notebook.h>
#include <gtkmm/radiobutton.h>
#include <gtkmm/spinbutton.h>

#include <functional>

namespace {

class DialogWindowsTest : public DesktopTest {
protected:
    void openAddRecipient()
    {
        openFaxDialog();
        click("AddFaxRcpt");
        ASSERT_TRUE(opens("LanFax Add Recipient Window"));
    }

    void turnTo(int page)
    {
        screen<Gtk::Notebook>("Lan Fax TabSet").set_current_page(page);
        loopUntilIdle();
    }

    /// The name in the definition of what has the focus in a window.
    std::string focused(const std::string& window)
    {
        Gtk::Widget* focus = screen<Gtk::Window>(window).get_focus();
        // A combo box hands the focus to the button inside it.
        while (focus != nullptr && focus->get_accessible()->get_description().empty())
            focus = focus->get_parent();
        return focus == nullptr ? "" : std::string(focus->get_accessible()->get_description());
    }

    std::vector<std::string> tabOrder(const std::string& window, std::size_t count)
    {
        std::vector<std::string> order{focused(window)};
        while (order.size() < count) {
            press(screen<Gtk::Window>(window), GDK_KEY_Tab);
            order.push_back(focused(window));
        }
        return order;
    }
};

using Names = std::vector<std::string>;
using testing::Contains;

} // namespace

// --- Windows -------------------------------------------------------------------------------------

TEST_F(DialogWindowsTest, NothingIsOnTheScreenUntilTheComponentShowsIt)
{
    loopUntilIdle();
    EXPECT_EQ(dialogs->onScreen(tree("Lan Fax Window")), nullptr);
    EXPECT_EQ(&dialogs->topWindow(), &mainWindow);
}

TEST_F(DialogWindowsTest, AWindowThatIsVisibleAlreadyAppears)
{
    dialogs.reset();
    driver().call("T40InvokeFaxDialog");
    dialogs = std::make_unique<quelm::DialogWindows>(driver(), mainWindow);
    EXPECT_TRUE(opens("Lan Fax Window"));
}

TEST_F(DialogWindowsTest, TheFaxDialogStandsOverTheMainWindowAndOthersOverIt)
{
    openAddRecipient();
    Gtk::Window& fax = screen<Gtk::Window>("Lan Fax Window");
    Gtk::Window& recipient = screen<Gtk::Window>("LanFax Add Recipient Window");
    EXPECT_EQ(fax.get_transient_for(), &mainWindow);
    EXPECT_EQ(recipient.get_transient_for(), &fax);
    EXPECT_TRUE(fax.get_modal());
    EXPECT_TRUE(recipient.get_modal());
    EXPECT_EQ(&dialogs->topWindow(), &recipient);
    EXPECT_EQ(fax.get_title(), "Quelm LAN Fax Setup");
    EXPECT_EQ(recipient.get_title(), "Add Fax Recipient");
}

TEST_F(DialogWindowsTest, ClosingAWindowFromItsFrameFiresItsCallback)
{
    openAddRecipient();
    screen<Gtk::Window>("LanFax Add Recipient Window").close();
    ASSERT_TRUE(closes("LanFax Add Recipient Window"));
    EXPECT_FALSE(tree("LanFax Add Recipient Window").visible());
    EXPECT_TRUE(isOpen("Lan Fax Window"));
}

TEST_F(DialogWindowsTest, AWindowWithoutAFunctionBehindItsCloseCallbackIsHidden)
{
    openFaxDialog();
    dialogs->act([this] { tree("LanFax Recipient Properties Window").setVisible(true); });
    ASSERT_TRUE(opens("LanFax Recipient Properties Window"));
    screen<Gtk::Window>("LanFax Recipient Properties Window").close();
    EXPECT_TRUE(closes("LanFax Recipient Properties Window"));
}

TEST_F(DialogWindowsTest, EscapeClosesAsTheFrameDoes)
{
    openAddRecipient();
    press(screen<Gtk::Window>("LanFax Add Recipient Window"), GDK_KEY_Escape);
    EXPECT_TRUE(closes("LanFax Add Recipient Window"));
    EXPECT_TRUE(isOpen("Lan Fax Window"));
}

TEST_F(DialogWindowsTest, AWindowComesBackToWhereItWas)
{
    openFaxDialog();
    Gtk::Window& window = screen<Gtk::Window>("Lan Fax Window");
    window.get_window()->move(321, 123); // as by its frame, which the toolkit only hears of
    const auto isAt = [&window](int left, int top) {
        int x = 0;
        int y = 0;
        window.get_position(x, y);
        return x == left && y == top;
    };
    ASSERT_TRUE(loopUntil([&] { return isAt(321, 123); }));
    click("LanFax Cancel Button");
    ASSERT_TRUE(closes("Lan Fax Window"));
    openFaxDialog();
    // While the window manager puts its frame around the window, it moves for a moment.
    bool cameBack = false;
    EXPECT_TRUE(loopUntil([&] { return cameBack = cameBack || isAt(321, 123); }));
}

TEST_F(DialogWindowsTest, ATitleThatTheComponentSetsIsShown)
{
    openFaxDialog();
    dialogs->act([this] { tree("Lan Fax Window").setText("Another title"); });
    loopUntilIdle();
    EXPECT_EQ(screen<Gtk::Window>("Lan Fax Window").get_title(), "Another title");
}

TEST_F(DialogWindowsTest, EndsWithWindowsOpenAndLeavesTheTreeAsItIs)
{
    openAddRecipient();
    typeInto("RecipientName", "Ann");
    dialogs.reset();
    loopUntilIdle();
    EXPECT_TRUE(tree("LanFax Add Recipient Window").visible());
    EXPECT_EQ(tree("RecipientName").text(), "Ann");
    driver().press("LanFaxAddRcpt Cancel Button");
    EXPECT_FALSE(tree("LanFax Add Recipient Window").visible());
}

TEST_F(DialogWindowsTest, TellsWhenAnActionIsDoneAndShown)
{
    std::string told;
    dialogs->setSettled([&] { told += isOpen("Lan Fax Window") ? "open;" : "closed;"; });
    openFaxDialog();
    click("LanFax OK Button");
    ASSERT_TRUE(closes("Lan Fax Window"));
    EXPECT_EQ(told, "open;closed;");
}

TEST_F(DialogWindowsTest, WindowsCarryTheProgramsIcon)
{
    EXPECT_EQ(Gtk::Window::get_default_icon_list().size(), 3U);
}

// --- What a person does --------------------------------------------------------------------------

TEST_F(DialogWindowsTest, APressIsCarriedOutBehindTheToolkitsSignal)
{
    openFaxDialog();
    click("AddFaxRcpt");
    EXPECT_FALSE(tree("LanFax Add Recipient Window").visible());
    EXPECT_TRUE(opens("LanFax Add Recipient Window"));
}

TEST_F(DialogWindowsTest, ARecipientIsAddedAsAPersonDoesIt)
{
    openFaxDialog();
    addRecipient("Ann", "555");
    EXPECT_EQ(shownNames("LanFax Recipient List"), (Names{"Ann"}));
}

TEST_F(DialogWindowsTest, WhatIsTypedReachesTheTree)
{
    openAddRecipient();
    typeInto("RecipientName", "Jörg");
    EXPECT_EQ(tree("RecipientName").text(), "Jörg");
}

TEST_F(DialogWindowsTest, AFieldTakesNoMoreCharactersThanItsMaximum)
{
    openAddRecipient();
    typeInto("RecipientMailbox", "12345");
    EXPECT_EQ(tree("RecipientMailbox").text(), "1234");
    EXPECT_EQ(screen<Gtk::Entry>("RecipientMailbox").get_text(), "1234");
}

TEST_F(DialogWindowsTest, PastedLineEndsBecomeBlanks)
{
    openAddRecipient();
    typeInto("RecipientName", "Ann\nExample\t2");
    EXPECT_EQ(tree("RecipientName").text(), "Ann Example 2");
    EXPECT_EQ(screen<Gtk::Entry>("RecipientName").get_text(), "Ann Example 2");
}

TEST_F(DialogWindowsTest, ALongerTextOfAPhonebookIsShownInFullAndCanBeShortened)
{
    openAddRecipient();
    dialogs->act([this] { tree("RecipientMailbox").setText("1234567"); });
    loopUntilIdle();
    EXPECT_EQ(screen<Gtk::Entry>("RecipientMailbox").get_text(), "1234567");
    typeInto("RecipientMailbox", "123456");
    EXPECT_EQ(screen<Gtk::Entry>("RecipientMailbox").get_text(), "123456");
    EXPECT_EQ(tree("RecipientMailbox").text(), "1234567");
    typeInto("RecipientMailbox", "1234");
    EXPECT_EQ(tree("RecipientMailbox").text(), "1234");
}

TEST_F(DialogWindowsTest, BytesThatAreNoTextAreShownAndNotLost)
{
    openAddRecipient();
    dialogs->act([this] { tree("RecipientName").setText("J\xF6rg"); });
    loopUntilIdle();
    EXPECT_EQ(screen<Gtk::Entry>("RecipientName").get_text(), "J\xEF\xBF\xBDrg");
    EXPECT_EQ(tree("RecipientName").text(), "J\xF6rg");
}

TEST_F(DialogWindowsTest, ReadOnlyFieldsCannotBeEdited)
{
    openFaxDialog();
    EXPECT_FALSE(screen<Gtk::Entry>("LanFax Personal PB Name").get_editable());
    EXPECT_TRUE(screen<Gtk::Entry>("LanFax Cover Sheet Notes").get_editable());
}

TEST_F(DialogWindowsTest, ChoicesReachTheTreeAndItsBindingsTheScreen)
{
    openFaxDialog();
    turnTo(1);
    EXPECT_EQ(tree("Lan Fax TabSet").number(), 1);
    EXPECT_FALSE(screen("LanFax Setup Cover Sheet Button").get_sensitive());
    screen<Gtk::RadioButton>("LanFax Cover Sheet").clicked();
    screen<Gtk::ComboBox>("LanFax Resolution").set_active(2);
    screen<Gtk::CheckButton>("LanFax Dialing Prefix").clicked();
    screen<Gtk::RadioButton>("LanFax Send At").clicked();
    screen<Gtk::SpinButton>("SendAtMin").set_value(5);
    loopUntilIdle();
    EXPECT_EQ(tree("LanFax Cover Sheet Option").number(), 1);
    EXPECT_TRUE(screen("LanFax Setup Cover Sheet Button").get_sensitive());
    EXPECT_EQ(tree("LanFax Resolution").number(), 2);
    EXPECT_TRUE(tree("LanFax Dialing Prefix").flag());
    EXPECT_TRUE(screen("LanFax Dialing Prefix Info").get_sensitive());
    EXPECT_EQ(tree("SendAtMin").number(), 5);
    EXPECT_EQ(screen<Gtk::SpinButton>("SendAtMin").get_text(), "5");
}

TEST_F(DialogWindowsTest, DefaultsAreShownAtOnce)
{
    openFaxDialog();
    turnTo(1);
    screen<Gtk::ComboBox>("LanFax Send Speed").set_active(0);
    screen<Gtk::RadioButton>("LanFax No Conf Sheet").clicked();
    loopUntilIdle();
    ASSERT_EQ(tree("LanFax Send Speed").number(), 0);
    dialogs->act([this] { driver().call("LanFaxOptionsTabDefaults"); });
    loopUntilIdle();
    EXPECT_EQ(screen<Gtk::ComboBox>("LanFax Send Speed").get_active_row_number(), 2);
    EXPECT_TRUE(screen<Gtk::RadioButton>("LanFax Print Conf Sheet").get_active());
}

TEST_F(DialogWindowsTest, OfTwoButtonsOfOneNameTheOneThatIsPressedCounts)
{
    openFaxDialog();
    turnTo(2);
    screen<Gtk::CheckButton>("LanFax Pref Duplicates").clicked();
    loopUntilIdle();
    ASSERT_FALSE(tree("LanFax Pref Duplicates").flag());
    const auto& page = *tree("LanFax Default PB").parent();
    const auto defaults = std::find_if(page.children().begin(), page.children().end(),
                                       [](const auto& child) { return child->name() == "Defaults Button"; });
    dynamic_cast<Gtk::Button&>(*dialogs->onScreen(**defaults)).clicked();
    loopUntilIdle();
    EXPECT_TRUE(tree("LanFax Pref Duplicates").flag());
    EXPECT_TRUE(screen<Gtk::CheckButton>("LanFax Pref Duplicates").get_active());
}

TEST_F(DialogWindowsTest, ItemsThatAreInsensitiveStaySo)
{
    openFaxDialog();
    click("AddPBFaxRcpt");
    ASSERT_TRUE(opens("Add Rcpt From PB Window"));
    const auto sensitive = [this](int item) {
        bool value = false;
        screen<Gtk::ComboBox>("Current PB Type")
            .get_model()
            ->children()[static_cast<unsigned>(item)]
            .get_value(1, value);
        return value;
    };
    dialogs->act([this] { tree("LDAP PB Type").setSensitive(false); });
    loopUntilIdle();
    EXPECT_TRUE(sensitive(0));
    EXPECT_FALSE(sensitive(2));
    dialogs->act([this] { tree("LDAP PB Type").setSensitive(true); });
    loopUntilIdle();
    EXPECT_TRUE(sensitive(2));
}

TEST_F(DialogWindowsTest, AnActionThatIsRefusedIsExplainedAndTakenBack)
{
    const LogCapture log;
    openFaxDialog();
    turnTo(2);
    // Behind the person's back, between two turns of the main loop.
    tree("LanFax Pref Duplicates").setSensitive(false);
    screen<Gtk::CheckButton>("LanFax Pref Duplicates").clicked();
    loopUntilIdle();
    EXPECT_TRUE(screen<Gtk::CheckButton>("LanFax Pref Duplicates").get_active());
    EXPECT_TRUE(tree("LanFax Pref Duplicates").flag());
    Gtk::Label* message = nullptr;
    const std::function<void(Gtk::Widget&)> look = [&](Gtk::Widget& widget) {
        if (widget.get_accessible()->get_description() == "Dialog Message")
            message = dynamic_cast<Gtk::Label*>(&widget);
        else if (auto* container = dynamic_cast<Gtk::Container*>(&widget))
            container->foreach (look);
    };
    look(screen("Lan Fax Window"));
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(loopUntil([&] { return message->get_mapped(); }));
    EXPECT_NE(message->get_text().raw().find("cannot be used now"), std::string::npos) << message->get_text();
    screen<Gtk::CheckButton>("LanFax Pref Remove One").clicked();
    EXPECT_TRUE(loopUntil([&] { return !message->get_mapped(); }));
}

TEST_F(DialogWindowsTest, WithoutADialogAnErrorGoesToTheMainWindow)
{
    std::string told;
    dialogs->setTrouble([&told](const std::string& message) { told = message; });
    dialogs->act([] { throw quelm::Error("nothing to do"); });
    loopUntilIdle();
    EXPECT_EQ(told, "nothing to do");
}

TEST_F(DialogWindowsTest, TheFaxDialogOpensOnItsFirstPage)
{
    openFaxDialog();
    EXPECT_EQ(screen<Gtk::Notebook>("Lan Fax TabSet").get_current_page(), 0);
    turnTo(2);
    click("LanFax OK Button");
    ASSERT_TRUE(closes("Lan Fax Window"));
    openFaxDialog();
    EXPECT_EQ(screen<Gtk::Notebook>("Lan Fax TabSet").get_current_page(), 0);
}

// --- Keys ----------------------------------------------------------------------------------------

TEST_F(DialogWindowsTest, AFormOpensInItsFirstField)
{
    openAddRecipient();
    EXPECT_EQ(focused("LanFax Add Recipient Window"), "RecipientName");
    screen("LanFaxAddRcpt Cancel Button").grab_focus();
    click("LanFaxAddRcpt Cancel Button");
    ASSERT_TRUE(closes("LanFax Add Recipient Window"));
    click("AddFaxRcpt");
    ASSERT_TRUE(opens("LanFax Add Recipient Window"));
    EXPECT_EQ(focused("LanFax Add Recipient Window"), "RecipientName");
}

TEST_F(DialogWindowsTest, TheTabKeyVisitsAFormInItsOrder)
{
    openAddRecipient();
    EXPECT_EQ(tabOrder("LanFax Add Recipient Window", 10),
              (Names{"RecipientName", "RecipientNumber", "RecipientOrganization", "RecipientTelNumber",
                     "RecipientEmailAddr", "RecipientMailbox", "AddtoPersonalPB", "LanFaxAddRcpt OK Button",
                     "LanFaxAddRcpt Cancel Button", "Help Button"}));
    EXPECT_EQ(tabOrder("LanFax Add Recipient Window", 2), (Names{"Help Button", "RecipientName"}));
    press(screen<Gtk::Window>("LanFax Add Recipient Window"), GDK_KEY_ISO_Left_Tab, GDK_SHIFT_MASK);
    EXPECT_EQ(focused("LanFax Add Recipient Window"), "Help Button");
}

TEST_F(DialogWindowsTest, TheTabKeyVisitsTheOptionsInTheirOrder)
{
    openFaxDialog();
    turnTo(1);
    screen<Gtk::RadioButton>("LanFax Send At").clicked();
    screen<Gtk::CheckButton>("LanFax Dialing Prefix").clicked();
    screen<Gtk::RadioButton>("LanFax Cover Sheet").clicked();
    loopUntilIdle();
    screen("LanFax Print Conf Sheet").grab_focus();
    // Of a radio group the chosen item is visited; the arrow keys go on from there.
    EXPECT_EQ(
        tabOrder("Lan Fax Window", 16),
        (Names{"LanFax Print Conf Sheet", "LanFax Cover Sheet", "LanFax Setup Cover Sheet Button",
               "LanFax Send Speed", "LanFax Resolution", "LanFax Cover Sheet Notes", "LanFax Send At",
               "SendAtHr", "SendAtMin", "SendAtAmPm", "LanFax Dialing Prefix", "LanFax Dialing Prefix Info",
               "LanFax Credit Card", "LanFax Help Button", "Defaults Button", "LanFax OK Button"}));
}

TEST_F(DialogWindowsTest, EnterInAFieldPressesOk)
{
    openAddRecipient();
    typeInto("RecipientName", "Ann");
    typeInto("RecipientNumber", "555");
    press(screen<Gtk::Window>("LanFax Add Recipient Window"), GDK_KEY_Return);
    ASSERT_TRUE(closes("LanFax Add Recipient Window"));
    EXPECT_EQ(shownNames("LanFax Recipient List"), (Names{"Ann"}));
}

TEST_F(DialogWindowsTest, AMnemonicPressesItsButton)
{
    openAddRecipient();
    press(screen<Gtk::Window>("LanFax Add Recipient Window"), GDK_KEY_c, GDK_MOD1_MASK);
    EXPECT_TRUE(closes("LanFax Add Recipient Window"));
}

TEST_F(DialogWindowsTest, ANumberBeingTypedIsTakenOverBeforeAButtonIsPressed)
{
    openFaxDialog();
    turnTo(1);
    screen<Gtk::RadioButton>("LanFax Send At").clicked();
    loopUntilIdle();
    auto& minute = screen<Gtk::SpinButton>("SendAtMin");
    minute.grab_focus();
    minute.set_text("42");
    ASSERT_EQ(tree("SendAtMin").number(), 0);
    press(screen<Gtk::Window>("Lan Fax Window"), GDK_KEY_o, GDK_MOD1_MASK);
    ASSERT_TRUE(closes("Lan Fax Window"));
    EXPECT_EQ(tree("SendAtMin").number(), 42);
}

// --- Names ---------------------------------------------------------------------------------------

TEST_F(DialogWindowsTest, ControlsHaveNamesAndRolesForAssistiveTools)
{
    openAddRecipient();
    const auto accessible = [this](const std::string& name) { return screen(name).get_accessible(); };
    EXPECT_EQ(accessible("RecipientNumber")->get_name(), "Fax Number");
    EXPECT_EQ(accessible("RecipientNumber")->get_description(), "RecipientNumber");
    EXPECT_EQ(accessible("RecipientNumber")->get_role(), Atk::ROLE_TEXT);
    EXPECT_EQ(accessible("LanFaxAddRcpt OK Button")->get_name(), "Ok");
    EXPECT_EQ(accessible("LanFaxAddRcpt OK Button")->get_description(), "LanFaxAddRcpt OK Button");
    EXPECT_EQ(accessible("Recipient Name Label")->get_name(), "Name:");
    EXPECT_EQ(accessible("LanFax Add Recipient Window")->get_name(), "Add Fax Recipient");
    EXPECT_EQ(accessible("LanFax Add Recipient Window")->get_role(), Atk::ROLE_DIALOG);
    EXPECT_EQ(accessible("LanFax Recipient List")->get_name(), "Fax Recipient List");
    EXPECT_EQ(accessible("LanFax Recipient List")->get_description(), "LanFax Recipient List");
}

TEST_F(DialogWindowsTest, F1AsksForHelpWhereOneIs)
{
    const auto placesOfHelp = [this](const std::string& window) {
        press(screen<Gtk::Window>(window), GDK_KEY_F1);
        Names places;
        for (const quelm::Widget* place = driver().callbacks().helpButton(); place != nullptr;
             place = place->parent())
            places.push_back(place->name());
        return places;
    };
    openFaxDialog();
    EXPECT_THAT(placesOfHelp("Lan Fax Window"), Contains("LanFax Recipients Tab"));
    turnTo(1);
    EXPECT_THAT(placesOfHelp("Lan Fax Window"), Contains("LanFax Options Tab"));
    EXPECT_EQ(driver().helpTopic(), "LanFax");
    turnTo(0);
    click("AddFaxRcpt");
    ASSERT_TRUE(opens("LanFax Add Recipient Window"));
    EXPECT_THAT(placesOfHelp("LanFax Add Recipient Window"), Contains("LanFax Add Recipient Window"));
}
