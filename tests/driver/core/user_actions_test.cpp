// What a user can do, what it fires, and what is refused with which words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/user_actions.h"

#include "driver/widgets/widget_label.h"
#include "driver/widgets/widget_tree.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

#include <algorithm>
#include <iterator>

namespace {

class UserActionsTest : public DriverTest {
protected:
    UserActionsTest() { driver().actions().nameWidgets(); }

    std::string pressing(const char* name)
    {
        return refusal([&] { driver().press(name); });
    }
    std::string typing(const char* name, const std::string& text)
    {
        return refusal([&] { driver().type(name, text); });
    }
    std::string choosing(const char* name, int value)
    {
        return refusal([&] { driver().choose(name, value); });
    }
    std::string selecting(const char* name, const std::vector<int>& rows)
    {
        return refusal([&] { driver().select(name, rows); });
    }
    std::string closing(const char* name)
    {
        return refusal([&] { driver().closeWindow(name); });
    }
};

TEST_F(UserActionsTest, PressingFiresButtonsAndToolbarItems)
{
    driver().press("Button");
    driver().press("Tool");
    EXPECT_EQ(journal(), "Button;Tool;");
}

TEST_F(UserActionsTest, WhatIsNotOnTheScreenOrInsensitiveCannotBePressed)
{
    EXPECT_EQ(pressing("No Such Button"), "there is no widget \"No Such Button\"");
    EXPECT_EQ(pressing("Insensitive Button"), "Button \"Insensitive Button\" is insensitive");
    EXPECT_EQ(pressing("Hidden Button"), "Button \"Hidden Button\" is not visible");
    EXPECT_EQ(
        pressing("Inner Button"),
        "Button \"Inner Button\" is insensitive: its FixedContainer \"Insensitive Area\" is insensitive");
    EXPECT_EQ(pressing("Covered Button"),
              "Button \"Covered Button\" is not visible: its FixedContainer \"Hidden Area\" is hidden");
    EXPECT_EQ(pressing("Journal"), "Label \"Journal\" cannot be pressed; it is no button");
    driver().closeWindow("Test Window");
    driver().widgets().find("Test Window")->setVisible(false);
    EXPECT_EQ(pressing("Button"),
              "Button \"Button\" is not visible: its DialogWindow \"Test Window\" is hidden");
    EXPECT_EQ(journal(), "Test Window;");
}

TEST_F(UserActionsTest, AWidgetThatSharesItsNameCanBeMeantItself)
{
    quelm::Widget* first = driver().widgets().find("Twin");
    const auto& siblings = first->parent()->children();
    const auto place =
        std::ranges::find_if(siblings, [first](const auto& sibling) { return sibling.get() == first; });
    quelm::Widget& second = **std::next(place);
    ASSERT_EQ(second.name(), "Twin");
    driver().actions().tick(second, true);
    EXPECT_TRUE(second.flag());
    EXPECT_FALSE(first->flag());
    driver().tick("Twin", true);
    EXPECT_TRUE(first->flag());
}

TEST_F(UserActionsTest, APageNeedNotBeTurnedToFirst)
{
    driver().press("Page Button");
    EXPECT_EQ(journal(), "Page Button;");
}

TEST_F(UserActionsTest, AButtonWhoseCallbackNobodyProvidesDoesNothing)
{
    EXPECT_EQ(pressing("Lonely Button"), "nothing");
    EXPECT_EQ(journal(), "");
}

TEST_F(UserActionsTest, TypingReplacesTheWholeText)
{
    driver().type("Field", "abc");
    driver().type("Field", "Zoë");
    EXPECT_EQ(driver().show("Field").text, "Zoë");
    EXPECT_EQ(journal(), "Field;Field;");
}

TEST_F(UserActionsTest, TheMaximumCountsCharactersAndNotBytes)
{
    EXPECT_EQ(typing("Field", "ëëëëë"), "nothing");
    EXPECT_EQ(typing("Field", "123456"),
              "the text for TextEntry \"Field\" has 6 characters; the field takes 5");
    EXPECT_EQ(driver().show("Field").text, "ëëëëë");
}

TEST_F(UserActionsTest, WhatNobodyCanTypeIsRefused)
{
    EXPECT_EQ(typing("Field", "a\nb"),
              "the text for TextEntry \"Field\" holds a line end or another control character");
    EXPECT_EQ(typing("Field", "\xff"), "the text for TextEntry \"Field\" is not UTF-8");
    EXPECT_EQ(typing("Field", std::string("a\0b", 3)), "the text for TextEntry \"Field\" is not UTF-8");
    EXPECT_EQ(typing("Read-only Field", "a"), "TextEntry \"Read-only Field\" is read-only");
    EXPECT_EQ(typing("Button", "a"), "Button \"Button\" takes no text");
    EXPECT_EQ(journal(), "");
}

TEST_F(UserActionsTest, TickingSetsTheBoxBeforeItsCallbackRuns)
{
    driver().tick("Box", true);
    EXPECT_EQ(driver().show("Box").ticked, true);
    driver().tick("Box", false);
    EXPECT_EQ(driver().show("Box").ticked, false);
    EXPECT_EQ(journal(), "Box;Box;");
}

TEST_F(UserActionsTest, TickingARadioItemChoosesItAndFiresItsGroup)
{
    driver().tick("Second Item", true);
    EXPECT_EQ(driver().show("Group").value, 1);
    EXPECT_EQ(journal(), "Group;");
    EXPECT_EQ(refusal([&] { driver().tick("Second Item", false); }),
              "RadioButtonItem \"Second Item\" cannot be unticked; choose another item of its group");
    EXPECT_EQ(refusal([&] { driver().tick("Third Item", true); }),
              "RadioButtonItem \"Third Item\" is insensitive");
    EXPECT_EQ(refusal([&] { driver().tick("Button", true); }),
              "Button \"Button\" cannot be ticked; it is no check box");
}

TEST_F(UserActionsTest, ChoosingSetsIndexNumberOrPage)
{
    driver().choose("Combo", 1);
    driver().choose("Group", 1);
    driver().choose("Hour", 3);
    driver().choose("Tabs", 1);
    EXPECT_EQ(driver().show("Combo").value, 1);
    EXPECT_EQ(driver().show("Group").value, 1);
    EXPECT_EQ(driver().show("Hour").value, 3);
    EXPECT_EQ(driver().show("Tabs").value, 1);
    EXPECT_EQ(journal(), "Combo;Group;Hour;Tabs;");
}

TEST_F(UserActionsTest, WhatIsNotOfferedCannotBeChosen)
{
    EXPECT_EQ(choosing("Combo", 3), "ComboBoxMain \"Combo\" has no 3; it goes from 0 to 2");
    EXPECT_EQ(choosing("Combo", -1), "ComboBoxMain \"Combo\" has no -1; it goes from 0 to 2");
    EXPECT_EQ(choosing("Combo", 2), "ComboBoxItem \"None\" is not visible");
    EXPECT_EQ(choosing("Group", 2), "RadioButtonItem \"Third Item\" is insensitive");
    EXPECT_EQ(choosing("Hour", 0), "SpinBox \"Hour\" has no 0; it goes from 1 to 12");
    EXPECT_EQ(choosing("Hour", 13), "SpinBox \"Hour\" has no 13; it goes from 1 to 12");
    EXPECT_EQ(choosing("Tabs", 2), "NotebookSet \"Tabs\" has no 2; it goes from 0 to 1");
    EXPECT_EQ(choosing("Empty Combo", 0), "ComboBoxMain \"Empty Combo\" has no 0; it is empty");
    EXPECT_EQ(choosing("Many", 0), "ListBox \"Many\" offers no choice");
    EXPECT_EQ(journal(), "");
}

TEST_F(UserActionsTest, SelectingReplacesTheSelection)
{
    driver().select("Many", {2, 0});
    EXPECT_EQ(driver().show("Many").selection, (std::vector{0, 2}));
    driver().select("Many", {});
    EXPECT_EQ(driver().show("Many").selection, std::vector<int>());
    EXPECT_EQ(driver().show("Many").value, -1);
    driver().select("One", {1});
    EXPECT_EQ(driver().show("One").value, 1);
    EXPECT_EQ(journal(), "Many;Many;One;");
}

TEST_F(UserActionsTest, RowsThatCannotBeSelectedAreRefused)
{
    driver().select("Many", {1});
    EXPECT_EQ(selecting("Many", {3}), "ListBox \"Many\" has no row 3; it has 3 rows, counted from 0");
    EXPECT_EQ(selecting("Many", {-1}), "ListBox \"Many\" has no row -1; it has 3 rows, counted from 0");
    EXPECT_EQ(selecting("Many", {0, 0}), "row 0 of ListBox \"Many\" is named twice");
    EXPECT_EQ(selecting("One", {0, 1}), "only one row of ListBox \"One\" can be selected");
    EXPECT_EQ(selecting("Combo", {0}), "ComboBoxMain \"Combo\" has no rows; it is no list");
    EXPECT_EQ(driver().show("Many").selection, (std::vector{1}));
    EXPECT_EQ(journal(), "Many;");
}

TEST_F(UserActionsTest, ClosingAWindowFiresItsCallback)
{
    driver().closeWindow("Test Window");
    EXPECT_EQ(journal(), "Test Window;");
    EXPECT_EQ(driver().windows(), (std::vector<std::string>{"Test Window"}));
}

TEST_F(UserActionsTest, AWindowWhoseCallbackNobodyProvidesIsHidden)
{
    driver().widgets().find("Self-closing Window")->setVisible(true);
    driver().closeWindow("Self-closing Window");
    EXPECT_EQ(driver().windows(), (std::vector<std::string>{"Test Window"}));
}

TEST_F(UserActionsTest, OnlyAnOpenWindowCanBeClosed)
{
    EXPECT_EQ(closing("Self-closing Window"), "DialogWindow \"Self-closing Window\" is not open");
    EXPECT_EQ(closing("Button"), "Button \"Button\" is no window");
    EXPECT_EQ(closing("Main Driver Window"), "MainWindow \"Main Driver Window\" is no window");
    EXPECT_EQ(closing("Nothing"), "there is no widget \"Nothing\"");
}

TEST_F(UserActionsTest, AQuestionMustBeAnsweredBeforeAnythingElse)
{
    driver().press("Asking Button");
    const std::string wait = "a question is waiting for an answer; answer it first";
    EXPECT_EQ(pressing("Button"), wait);
    EXPECT_EQ(typing("Field", "a"), wait);
    EXPECT_EQ(choosing("Combo", 1), wait);
    EXPECT_EQ(selecting("Many", {1}), wait);
    EXPECT_EQ(closing("Test Window"), wait);
    EXPECT_EQ(refusal([&] { driver().tick("Box", true); }), wait);
    EXPECT_EQ(refusal([&] { driver().call("Fired"); }), wait);
    EXPECT_EQ(driver().pendingQuestion()->text, "First?");
    driver().answer(true);
    EXPECT_FALSE(driver().pendingQuestion());
    EXPECT_EQ(pressing("Button"), "nothing");
    EXPECT_EQ(journal(), "answer -8;Button;");
}

TEST_F(UserActionsTest, AnAnswerCanRaiseTheNextQuestion)
{
    driver().press("Twice Asking Button");
    driver().answer(false);
    ASSERT_TRUE(driver().pendingQuestion());
    EXPECT_EQ(driver().pendingQuestion()->text, "Second?");
    driver().answer(false);
    EXPECT_FALSE(driver().pendingQuestion());
    EXPECT_EQ(journal(), "answer -9;");
}

TEST_F(UserActionsTest, WithoutAQuestionThereIsNothingToAnswer)
{
    EXPECT_EQ(refusal([&] { driver().answer(true); }), "no question is waiting for an answer");
}

TEST_F(UserActionsTest, CallingReachesTheExportListAlone)
{
    driver().call("Fired");
    EXPECT_EQ(journal(), "called;");
    EXPECT_EQ(refusal([&] { driver().call("abort"); }),
              "the component's export list has no function \"abort\"");
    EXPECT_EQ(refusal([&] { driver().call("BoxFired"); }),
              "BoxFired cannot be called by itself; tick one of its check boxes");
    driver().tick("Box", true);
    EXPECT_EQ(journal(), "called;Box;");
}

TEST_F(UserActionsTest, AChooserTakesAPathAndItsOkButton)
{
    driver().press("Chooser Button");
    EXPECT_EQ(driver().windows(), (std::vector<std::string>{"Test Window", "Chooser"}));
    EXPECT_EQ(pressing("Chooser"), "no file is chosen in FileSelection \"Chooser\"; type its path first");
    driver().type("Chooser", "/books/ann.xdb");
    driver().press("Chooser");
    EXPECT_EQ(journal(), "ok /books/ann.xdb;");
    EXPECT_EQ(driver().windows(), (std::vector<std::string>{"Test Window"}));
    EXPECT_EQ(pressing("Chooser"), "FileSelection \"Chooser\" is not visible");
}

TEST_F(UserActionsTest, ClosingAChooserTellsTheComponent)
{
    driver().press("Chooser Button");
    driver().closeWindow("Chooser");
    EXPECT_EQ(journal(), "closed;");
    EXPECT_EQ(driver().windows(), (std::vector<std::string>{"Test Window"}));
}

TEST_F(UserActionsTest, AFailedCallbackIsCountedAndTheDriverLivesOn)
{
    const LogCapture log;
    driver().press("Throwing Button");
    EXPECT_EQ(driver().failedCallbacks(), 1);
    EXPECT_EQ(log.messages.size(), 1U);
    driver().press("Button");
    EXPECT_EQ(journal(), "Button;");
}

TEST_F(UserActionsTest, AnOptionBringsItsFieldToLife)
{
    EXPECT_EQ(typing("LanFax Dialing Prefix Info", "9"),
              "TextEntry \"LanFax Dialing Prefix Info\" is insensitive");
    driver().tick("LanFax Dialing Prefix", true);
    EXPECT_EQ(typing("LanFax Dialing Prefix Info", "9"), "nothing");
}

using quelm::labelText;

class ActionsOfPeopleTest : public DriverTest {
protected:
    void expectLabel(const std::string& line, const std::string& name, const std::string& label)
    {
        EXPECT_EQ(line.find(name), std::string::npos) << line;
        EXPECT_NE(line.find('"' + label + '"'), std::string::npos) << line;
    }
};

TEST_F(ActionsOfPeopleTest, RefusalsCallAWidgetWhatPeopleSee)
{
    expectLabel(refusal([&] { driver().press("Hidden Button"); }), "Hidden Button",
                labelText(*driver().widgets().find("Hidden Button")));
    expectLabel(refusal([&] { driver().press("Insensitive Button"); }), "Insensitive Button",
                labelText(*driver().widgets().find("Insensitive Button")));
    expectLabel(refusal([&] { driver().type("Field", "123456"); }), "\"Field\"",
                labelText(*driver().widgets().find("Field")));
    EXPECT_THROW(driver().type("Field", "123456"), quelm::UnsuitableValue);
    EXPECT_THROW(driver().choose("Combo", 7), quelm::UnsuitableValue);
    const auto missing = refusal([&] { driver().press("No Such Button"); });
    EXPECT_EQ(missing.find("No Such Button"), std::string::npos) << missing;
}

} // namespace
