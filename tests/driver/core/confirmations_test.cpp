// Dialogs that nobody confirmed since the start: the job takes over what they show, and nothing is seen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/confirmations.h"

#include "driver/config/installation.h"
#include "driver/widgets/widget_tree.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A user who starts with kept choices.
class ConfirmationsTest : public DriverTest {
protected:
    ConfirmationsTest() : DriverTest(build_paths::componentLibrary()) { keep(everything); }

    static constexpr const char* everything =
        "LanFax Cover Sheet Option=1\nLanFax Cover Sheet Notes=Call me\nShow Rcpt Info Checkbox=1\n"
        "Show Rcpt Info=1\nCover Sheet Custom Text=All of you\nShow Sender Info Checkbox=1\n"
        "Sender Fax Number=555\nSender Fax Name=Ann\nSender Fax Organization=Acme\n"
        "Sender Fax Tel Number=556\nSender Fax Email Addr=ann@acme.example\n"
        "LanFax Dialing Prefix=1\nLanFax Dialing Prefix Info=9\n"
        "LanFax Credit Card=1\nLanFax Credit Card Info=4111\n";

    /// Starts anew with these choices.
    void keep(const std::string& choices)
    {
        options.saveFeatures = false;
        const auto kept = featureFilePath(options.configDirectory, options.user);
        std::filesystem::create_directories(std::filesystem::path(kept).parent_path());
        writeFile(kept, "[features]\n" + choices);
        start();
    }

    JobTexts texts() { return driver().faxSession().texts(); }

    void openSetUp()
    {
        driver().call("T40InvokeFaxDialog");
        driver().press("LanFax Setup Cover Sheet Button");
    }
};

const JobTexts shown{"9",    "4111", " (Call me) ",      "All of you", "Ann", "555",
                     "Acme", "556",  "ann@acme.example", true,         true,  true};

TEST_F(ConfirmationsTest, AtTheStartTheJobHoldsNothingAndTheDriverSaysWhatWillGo)
{
    EXPECT_EQ(texts(), JobTexts());
    EXPECT_FALSE(driver().faxSession().coverPageChosen());
    EXPECT_TRUE(driver().coverPageWillGo());
    EXPECT_EQ(driver().dialingPrefixToUse(), "9");
    EXPECT_EQ(driver().creditCardToCharge(), "4111");
}

TEST_F(ConfirmationsTest, TakeOverAllThatTheDialogsShow)
{
    driver().takeOverShownChoices();
    EXPECT_EQ(texts(), shown);
    EXPECT_TRUE(driver().faxSession().coverPageChosen());
    EXPECT_EQ(driver().dialingPrefixToUse(), "9");
}

TEST_F(ConfirmationsTest, LeaveOutPrefixAndCardWhoseBoxesAreNotTicked)
{
    keep("LanFax Dialing Prefix=0\nLanFax Dialing Prefix Info=9\nLanFax Credit Card Info=4111\n");
    EXPECT_EQ(driver().dialingPrefixToUse(), "");
    EXPECT_EQ(driver().creditCardToCharge(), "");
    driver().takeOverShownChoices();
    EXPECT_EQ(texts(), JobTexts());
    EXPECT_FALSE(driver().coverPageWillGo());
}

TEST_F(ConfirmationsTest, AreDoneOnceAndWhatIsNotConfirmedLaterStaysOutOfTheJob)
{
    driver().takeOverShownChoices();
    driver().call("T40InvokeFaxDialog");
    driver().type("LanFax Cover Sheet Notes", "Changed");
    driver().press("LanFax Cancel Button");
    driver().takeOverShownChoices();
    EXPECT_EQ(texts().note, " (Call me) ");
}

TEST_F(ConfirmationsTest, WhatTheUserConfirmedByWhateverWayIsNotConfirmedAgain)
{
    openSetUp();
    driver().press("LanFaxCover OK Button");
    driver().call("T40LanFaxDialogOk");
    driver().call("T40InvokeFaxDialog");
    driver().type("LanFax Cover Sheet Notes", "Changed");
    driver().takeOverShownChoices();
    EXPECT_EQ(texts().note, " (Call me) ");
    EXPECT_THAT(driver().windows(), ElementsAre("Lan Fax Window"));
}

TEST_F(ConfirmationsTest, ADialogThatWasCancelledWasNotConfirmed)
{
    openSetUp();
    driver().press("LanFaxCover Cancel Button");
    driver().closeWindow("Lan Fax Window");
    driver().takeOverShownChoices();
    EXPECT_EQ(texts(), shown);
}

TEST_F(ConfirmationsTest, AJobThatAStartedAgainComponentMadeHoldsWhatIsShown)
{
    driver().takeOverShownChoices();
    driver().call("InitializeFaxComponent");
    EXPECT_EQ(texts(), JobTexts());
    driver().takeOverShownChoices();
    EXPECT_EQ(texts(), shown);
}

/// Everything that a front end would put on the screen.
class Screen : public WidgetObserver {
public:
    explicit Screen(WidgetTree& widgetTree) : tree_(widgetTree) { tree_.addObserver(*this); }
    ~Screen() override { tree_.removeObserver(*this); }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void changed(Widget& widget, WidgetChange what) override
    {
        if (widget.isWindow() && what == WidgetChange::visibility)
            moved.push_back(widget.name());
    }

    std::vector<std::string> moved;

private:
    WidgetTree& tree_;
};

TEST_F(ConfirmationsTest, MoveNoWindowAndChangeNothingThatACancelReturnsTo)
{
    openSetUp();
    driver().press("Sender Properties Button");
    driver().type("Sender Fax Name", "Bob");
    driver().choose("Show Rcpt Info", 0);
    const auto open = driver().windows();
    const Screen screen(driver().widgets());
    driver().takeOverShownChoices();
    EXPECT_THAT(screen.moved, IsEmpty());
    EXPECT_EQ(driver().windows(), open);
    EXPECT_EQ(texts().senderName, "Bob") << "scripts write jobs with dialogs open";
    driver().press("LanFaxSender Cancel Button");
    EXPECT_EQ(driver().show("Sender Fax Name").text, "Ann");
    driver().press("LanFaxCover Cancel Button");
    EXPECT_EQ(driver().show("Show Rcpt Info").value, 1);
}

TEST_F(ConfirmationsTest, LeaveInsensitiveWhatTheOptionsMakeInsensitive)
{
    keep("Show Sender Info Checkbox=0\nSender Fax Name=Ann\n");
    driver().takeOverShownChoices();
    EXPECT_EQ(driver().show("Sender Info").sensitive, false);
    EXPECT_EQ(texts().senderName, "Ann");
}

class OtherComponentTest : public DriverTest {};

TEST_F(OtherComponentTest, AComponentWithoutTheseDialogsIsAskedNothing)
{
    driver().takeOverShownChoices();
    EXPECT_EQ(driver().failedCallbacks(), 0);
    EXPECT_EQ(journal(), "");
}

class ConfirmingComponentTest : public DriverTest {
protected:
    ConfirmingComponentTest() : DriverTest(pluginPath("confirms")) {}
};

TEST_F(ConfirmingComponentTest, AFailureEndsTheJobAndIsTriedAgain)
{
    const LogCapture log;
    driver().tick("Box", true); // the component fails while it is ticked
    EXPECT_EQ(refusal([&] { driver().takeOverShownChoices(); }),
              "the component failed to take over what its dialogs show; nothing is written");
    EXPECT_EQ(log.messages.size(), 1U);
    driver().tick("Box", false);
    EXPECT_EQ(refusal([&] { driver().takeOverShownChoices(); }), "nothing");
}

TEST_F(ConfirmingComponentTest, AQuestionEndsTheJobAndIsPutToNobody)
{
    driver().tick("LanFax Dialing Prefix", true); // the component asks while it is ticked
    EXPECT_EQ(refusal([&] { driver().takeOverShownChoices(); }),
              "the component asks a question before it takes over what its dialogs show; open the fax dialog "
              "and press Ok");
    EXPECT_FALSE(driver().pendingQuestion());
    driver().tick("LanFax Dialing Prefix", false);
    EXPECT_EQ(refusal([&] { driver().takeOverShownChoices(); }), "nothing");
}

} // namespace
} // namespace quelm
