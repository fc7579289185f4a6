// The options of a job that was made otherwise than its dialogs show.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/held_options.h"

#include "driver/handover/handover.h"
#include "tests/driver/handover/handover_fixture.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

class HeldOptions : public HandoverTest {
protected:
    void confirm() { driver().press("LanFax OK Button"); }
    void open() { driver().call("T40InvokeFaxDialog"); }

    OptionValues held()
    {
        static_cast<void>(prepareHandover(driver()));
        return heldOptions(driver());
    }

    void fillCover()
    {
        driver().choose("LanFax Cover Sheet Option", 1);
        driver().type("LanFax Cover Sheet Notes", "Call (me)");
        driver().press("LanFax Setup Cover Sheet Button");
        driver().tick("Show Rcpt Info Checkbox", true);
        driver().choose("Show Rcpt Info", 1);
        driver().type("Cover Sheet Custom Text", "All of you");
        driver().tick("Show Sender Info Checkbox", true);
        driver().press("Sender Properties Button");
        driver().type("Sender Fax Name", "Zoe");
        driver().type("Sender Fax Number", "77");
        driver().press("LanFaxSender OK Button");
        driver().press("LanFaxCover OK Button");
    }
};

TEST_F(HeldOptions, AreThoseOfTheDialogsThatWereConfirmed)
{
    fillCover();
    driver().choose("LanFax Resolution", 2);
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    confirm();
    EXPECT_EQ(held(), driver().optionValues());
    EXPECT_EQ(held()["LanFax Cover Sheet Notes"], "Call (me)");
}

TEST_F(HeldOptions, HoldThePrefixWhoseBoxWasUnticked)
{
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    confirm();
    open();
    driver().tick("LanFax Dialing Prefix", false);
    confirm();
    ASSERT_EQ(driver().faxSession().texts().dialingPrefix, "9");
    EXPECT_EQ(held()["LanFax Dialing Prefix"], "1");
    EXPECT_EQ(held()["LanFax Dialing Prefix Info"], "9");
}

TEST_F(HeldOptions, HoldNoPrefixThatWasTickedInADialogThatWasCancelled)
{
    confirm();
    open();
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    driver().press("LanFax Cancel Button");
    ASSERT_EQ(driver().faxSession().texts().dialingPrefix, "");
    EXPECT_EQ(held()["LanFax Dialing Prefix"], "0");
}

TEST_F(HeldOptions, HoldNoCoverPageThatWasChosenInADialogThatWasCancelled)
{
    confirm();
    open();
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().type("LanFax Cover Sheet Notes", "secret");
    driver().press("LanFax Cancel Button");
    EXPECT_EQ(held()["LanFax Cover Sheet Option"], "0");
}

TEST_F(HeldOptions, HoldTheCoverPageThatGoesOutWhateverTheDialogShowsSince)
{
    fillCover();
    confirm();
    const auto before = held();
    open();
    driver().type("LanFax Cover Sheet Notes", "Another");
    driver().press("LanFax Setup Cover Sheet Button");
    driver().type("Cover Sheet Custom Text", "Nobody");
    driver().press("Sender Properties Button");
    driver().type("Sender Fax Name", "Yan");
    driver().press("LanFaxSender Cancel Button");
    driver().press("LanFaxCover Cancel Button");
    driver().press("LanFax Cancel Button");
    EXPECT_EQ(held(), before);
}

TEST_F(HeldOptions, HoldNoNumberOfACard)
{
    driver().tick("LanFax Credit Card", true);
    driver().type("LanFax Credit Card Info", "4111111111111111");
    confirm();
    EXPECT_EQ(held()["LanFax Credit Card"], "1");
    EXPECT_FALSE(held().contains("LanFax Credit Card Info"));
}

} // namespace
} // namespace quelm
