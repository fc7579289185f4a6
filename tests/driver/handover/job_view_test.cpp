// Tests of what the dialogs hold of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/job_view.h"

#include "tests/driver/handover/handover_fixture.h"

namespace quelm {
namespace {

class JobViewTest : public HandoverTest {
protected:
    /// Everything that the cover sheet's dialogs offer, confirmed.
    void setUpCover()
    {
        driver().choose("LanFax Cover Sheet Option", 1);
        driver().type("LanFax Cover Sheet Notes", "Call me");
        driver().press("LanFax Setup Cover Sheet Button");
        driver().tick("Show Rcpt Info Checkbox", true);
        driver().choose("Show Rcpt Info", 1);
        driver().type("Cover Sheet Custom Text", "Everybody");
        driver().tick("Show Sender Info Checkbox", true);
        driver().choose("Cover Sheet Size", 1);
        driver().press("Sender Properties Button");
        driver().type("Sender Fax Name", "Zoe");
        driver().type("Sender Fax Number", "555-9");
        driver().type("Sender Fax Organization", "Acme");
        driver().type("Sender Fax Tel Number", "555-8");
        driver().type("Sender Fax Email Addr", "z@a.example");
        driver().press("LanFaxSender OK Button");
        driver().press("LanFaxCover OK Button");
        driver().press("LanFax OK Button");
    }
};

TEST_F(JobViewTest, HoldsWhatWasConfirmed)
{
    setUpCover();
    const JobView view = viewOfJob(driver());
    EXPECT_TRUE(view.coverGoes);
    EXPECT_TRUE(view.showsRecipients);
    EXPECT_TRUE(view.showsCustomText);
    EXPECT_TRUE(view.showsSender);
    EXPECT_TRUE(view.isA4);
    EXPECT_EQ(view.note, "Call me");
    EXPECT_EQ(view.customText, "Everybody");
    EXPECT_EQ(view.senderName, "Zoe");
    EXPECT_EQ(view.senderNumber, "555-9");
    EXPECT_EQ(view.senderOrganization, "Acme");
    EXPECT_EQ(view.senderPhone, "555-8");
    EXPECT_EQ(view.senderEmail, "z@a.example");
}

TEST_F(JobViewTest, AfterAStartHoldsWhatWasKeptThoughNothingIsTakenOverYet)
{
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    driver().tick("LanFax Credit Card", true);
    driver().type("LanFax Credit Card Info", "4111");
    driver().press("LanFax OK Button");
    start();
    const JobView view = viewOfJob(driver());
    EXPECT_TRUE(view.coverGoes);
    EXPECT_EQ(view.prefix, "9");
    EXPECT_EQ(view.card, "4111");
    EXPECT_FALSE(driver().faxSession().coverPageChosen()) << "looking takes nothing over";
}

TEST_F(JobViewTest, WhatTheJobHoldsCountsWhenDefaultsChangeTheDialogs)
{
    setUpCover();
    driver().call("T40InvokeFaxDialog");
    driver().call("LanFaxOptionsTabDefaults");
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().press("LanFax OK Button");
    const JobView view = viewOfJob(driver());
    EXPECT_TRUE(view.coverGoes);
    EXPECT_TRUE(view.showsRecipients);
    EXPECT_TRUE(view.showsCustomText);
    EXPECT_TRUE(view.showsSender);
    EXPECT_EQ(view.customText, "Everybody");
    EXPECT_EQ(view.senderName, "Zoe");
}

TEST_F(JobViewTest, OfAnOpenWindowTheJobCounts)
{
    setUpCover();
    driver().call("T40InvokeFaxDialog");
    driver().press("LanFax Setup Cover Sheet Button");
    driver().type("Cover Sheet Custom Text", "Nobody");
    driver().choose("Show Rcpt Info", 0);
    driver().press("Sender Properties Button");
    driver().type("Sender Fax Name", "Yan");
    driver().tick("Show Sender Info Checkbox", false);
    const JobView view = viewOfJob(driver());
    EXPECT_TRUE(view.showsCustomText);
    EXPECT_TRUE(view.showsSender);
    EXPECT_EQ(view.customText, "Everybody");
    EXPECT_EQ(view.senderName, "Zoe");
}

TEST_F(JobViewTest, KeepsApartWhatIsTypedAndWhatIsInTheJob)
{
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    driver().press("LanFax OK Button");
    driver().call("T40InvokeFaxDialog");
    driver().type("LanFax Dialing Prefix Info", "0");
    driver().tick("LanFax Dialing Prefix", false);
    driver().tick("LanFax Credit Card", true);
    driver().type("LanFax Credit Card Info", "4111");
    const JobView view = viewOfJob(driver());
    EXPECT_EQ(view.prefix, "9");
    EXPECT_EQ(view.typedPrefix, "0");
    EXPECT_FALSE(view.prefixTicked);
    EXPECT_EQ(view.card, "");
    EXPECT_EQ(view.typedCard, "4111");
    EXPECT_TRUE(view.cardTicked);
}

TEST_F(JobViewTest, ChoicesAreThoseOfTheDialog)
{
    driver().choose("LanFax Resolution", 1);
    EXPECT_EQ(choiceOf(driver(), "LanFax Resolution"), 1);
    EXPECT_EQ(choiceOf(driver(), "No Such Widget"), -1);
}

} // namespace
} // namespace quelm
