// Tests of the summary in the main window, over the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/summary_panel.h"

#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SummaryPanelTest : public MainWindowTest {
protected:
    static std::string summary() { return shownText("Main Job Summary"); }

    template <class Matcher>
    static bool comesToSay(Matcher matcher)
    {
        return loopUntil([&] { return testing::Value(summary(), matcher); });
    }

    /// Makes the fax go out with a cover sheet at five past four in the morning.
    void chooseCoverSheetAndTime()
    {
        driver->call("T40InvokeFaxDialog");
        driver->choose("LanFax Cover Sheet Option", 1);
        driver->press("LanFax OK Button");
        sendAt(4, 5, false);
    }
};

TEST_F(SummaryPanelTest, WhatIsMissingIsSaid)
{
    EXPECT_THAT(summary(), StartsWith("Open the document that is to be faxed.\nAdd a recipient in the fax "
                                      "setup.\nName the file that the fax job is to be written to."));
    openDocument();
    EXPECT_THAT(summary(), AllOf(Not(HasSubstr("Open the")), HasSubstr("2 pages of letter.ps")));
    fillFax({"Ann"});
    EXPECT_TRUE(comesToSay(Not(HasSubstr("Add a recipient"))));
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_TRUE(comesToSay(Not(HasSubstr("Name the file"))));
}

TEST_F(SummaryPanelTest, RecipientsPagesAndDestinationAreSummedUp)
{
    openDocument();
    fillFax({"Ann", "Bob", "Cid", "Dan"}, true);
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_TRUE(comesToSay(AllOf(
        HasSubstr("4 recipients: Ann (555-1231), Bob (555-1232), Cid (555-1233), ..."),
        HasSubstr("A cover sheet and 2 pages of letter.ps"), HasSubstr((folder / "fax.job") + " at once"))))
        << summary();
}

TEST_F(SummaryPanelTest, TheDestinationIsFollowedAsItIsTyped)
{
    chooseItem("Main Destination Kind", deviceItem);
    EXPECT_TRUE(comesToSay(HasSubstr("Name the device")));
    enterText("Main Destination Device", "fax.example:");
    EXPECT_TRUE(comesToSay(HasSubstr("\"fax.example:\" is no address")));
    enterText("Main Destination Device", "fax.example:9101");
    EXPECT_TRUE(comesToSay(HasSubstr("device fax.example:9101")));
}

TEST_F(SummaryPanelTest, TheTimeIsSaidOnThe24HourClock)
{
    openDocument();
    fillFax({"Ann"});
    sendAt(4, 5, true);
    EXPECT_TRUE(comesToSay(HasSubstr("today at 16:05"))) << summary();
    sendAt(12, 5, false);
    EXPECT_TRUE(comesToSay(HasSubstr("tomorrow at 00:05"))) << summary();
    // The clock stands at this very minute.
    sendAt(2, 7, true);
    EXPECT_TRUE(comesToSay(Not(HasSubstr("tomorrow")))) << summary();
}

TEST_F(SummaryPanelTest, WhatMustNotGoOutSaysWhy)
{
    openDocument();
    fillFax({"Ann"});
    addBadRecipient();
    EXPECT_THAT(summary(), StartsWith("Mal (1) cannot be sent a fax: "));
}

TEST_F(SummaryPanelTest, WhileADialogIsOpenNothingIsDecided)
{
    openDocument();
    fillFax({"Ann"});
    const auto before = summary();
    driver->call("T40InvokeFaxDialog");
    driver->choose("LanFax Cover Sheet Option", 1);
    settle();
    EXPECT_EQ(summary(), before);
    driver->press("LanFax Cancel Button");
    settle();
    EXPECT_THAT(summary(),
                AllOf(StartsWith("The fax goes out without a cover page, though "), EndsWith(before)));
}

TEST_F(SummaryPanelTest, WhileADialogIsOpenTheClockAndTheFieldsChangeNothing)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_TRUE(comesToSay(HasSubstr("fax.job at once")));
    const auto before = summary();
    driver->call("T40InvokeFaxDialog");
    driver->tick("LanFax Dialing Prefix", true);
    driver->type("LanFax Dialing Prefix Info", "9");
    enterText("Main Destination File", folder / "other.job");
    settle();
    EXPECT_EQ(summary(), before);
    driver->press("LanFax OK Button");
    settle();
    EXPECT_THAT(summary(), AllOf(HasSubstr("The dialing prefix 9 is dialled"), HasSubstr("other.job")));
}

TEST_F(SummaryPanelTest, WhatIsKeptAndCannotGoOutSaysWhy)
{
    restartWith("[features]\nLanFax Dialing Prefix=1\nLanFax Dialing Prefix Info=ab\n");
    EXPECT_THAT(summary(), StartsWith("The dialing prefix holds something else than digits"));
}

TEST_F(SummaryPanelTest, WhatTheDialogShowsAndTheJobDoesNotHoldIsSaidAheadOfTheSending)
{
    openDocument();
    fillFax({"Ann"});
    driver->call("T40InvokeFaxDialog");
    driver->choose("LanFax Cover Sheet Option", 1);
    driver->press("LanFax Cancel Button");
    settle();
    const auto warnings = lookAtHandover(*driver).warnings;
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_THAT(summary(), HasSubstr(warnings.front().substr(1))) << "its first letter is a capital there";
}

TEST_F(SummaryPanelTest, AKeptOptionThatCouldNotBeTakenOverIsNamedUntilItIsSet)
{
    const auto named = HasSubstr("The value \"7\" of \"Cover Sheet Options\" in ");
    restartWith("[features]\nLanFax Cover Sheet Option=7\nLanFax Pref Duplicates=7\n");
    EXPECT_THAT(summary(), AllOf(named, Not(HasSubstr("Adding Duplicate Recipients"))));
    openDocument();
    EXPECT_THAT(summary(), named);
    fillFax({"Ann"});
    EXPECT_TRUE(comesToSay(HasSubstr("Ann"))) << summary();
    EXPECT_THAT(summary(), named) << "it was not set";
    driver->call("T40InvokeFaxDialog");
    driver->choose("LanFax Cover Sheet Option", 1);
    driver->press("LanFax OK Button");
    settle();
    EXPECT_THAT(summary(), Not(named));
}

TEST_F(SummaryPanelTest, KeptOptionsThatCannotBeReadAreNamed)
{
    restartWith("rubbish");
    openDocument();
    EXPECT_THAT(summary(), HasSubstr("ann.ini"));
}

TEST_F(SummaryPanelTest, ItShowsThatItGoesOn)
{
    openDocument();
    fillFax({"Ann", "Bob", "Cid", "Dan"}, true);
    sendAt(4, 5, false);
    window->resize(window->get_allocated_width(), 1);
    GtkScrolledWindow* area = GTK_SCROLLED_WINDOW(onScreen("Main Job Summary Area"));
    GtkAdjustment* scrolled = gtk_scrolled_window_get_vadjustment(area);
    ASSERT_TRUE(loopUntil(
        [&] { return gtk_adjustment_get_upper(scrolled) > gtk_adjustment_get_page_size(scrolled); }));
    GtkWidget* bar = gtk_scrolled_window_get_vscrollbar(area);
    EXPECT_TRUE(loopUntil([bar] {
        // Beside the text, not over it and only while the mouse is there.
        return gtk_widget_get_mapped(bar) && gtk_widget_get_allocated_width(bar) > 1;
    }));
    EXPECT_FALSE(gtk_scrolled_window_get_overlay_scrolling(area));
}

TEST_F(SummaryPanelTest, WhatWasKeptIsShownAfterAStartAndNotTakenOver)
{
    chooseCoverSheetAndTime();
    restart();
    EXPECT_THAT(summary(), HasSubstr("tomorrow at 04:05"));
    openDocument();
    EXPECT_THAT(summary(), HasSubstr("A cover sheet and 2 pages of letter.ps"));
    EXPECT_FALSE(driver->faxSession().coverPageChosen());
}

TEST_F(SummaryPanelTest, ItIsReadAloudByItsText)
{
    EXPECT_EQ(spokenNameOf(onScreen("Main Job Summary")), summary());
}

} // namespace
} // namespace quelm
