// Tests of what is found about a job before it goes out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/handover.h"

#include "driver/config/installation.h"
#include "tests/driver/handover/handover_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class PrepareHandover : public HandoverTest {
protected:
    void confirm() { driver().press("LanFax OK Button"); }

    std::string failure()
    {
        return refusal([&] { static_cast<void>(prepareHandover(driver())); });
    }

    void chooseCard(const std::string& number)
    {
        driver().tick("LanFax Credit Card", true);
        driver().type("LanFax Credit Card Info", number);
    }

    /// Starts anew with these option values, and the fax dialog open.
    void startWith(const std::string& features)
    {
        options.saveFeatures = false;
        start();
        const auto kept = featureFilePath(options.configDirectory, options.user);
        std::filesystem::create_directories(std::filesystem::path(kept).parent_path());
        writeFile(kept, "[features]\n" + features);
        start();
        driver().call("T40InvokeFaxDialog");
    }
};

TEST_F(PrepareHandover, AnEverydayJobHasNothingToSay)
{
    add("Ann", "555-1234");
    add("Bob", "555-1235");
    confirm();
    const auto handover = prepareHandover(driver());
    EXPECT_THAT(handover.recipients, SizeIs(2));
    EXPECT_THAT(handover.shared, IsEmpty());
    EXPECT_THAT(handover.allWarnings(), IsEmpty());
    EXPECT_THAT(handover.remarks, IsEmpty());
    EXPECT_EQ(behindSummary(handover.remarks), "");
}

TEST_F(PrepareHandover, WarnsOfNumbersThatStandTwiceAndOfTrunkZeroes)
{
    add("Ann", "555-1234");
    add("Bob", "(555) 1234");
    add("Cid", "+44 (0)20 1");
    const auto handover = prepareHandover(driver());
    EXPECT_THAT(handover.shared, ElementsAre(SharedNumber{0, 1}));
    EXPECT_THAT(handover.sharedWarnings, ElementsAre(HasSubstr("Bob")));
    EXPECT_THAT(handover.allWarnings(), ElementsAre(HasSubstr("Bob"), HasSubstr("+440201")));
}

TEST_F(PrepareHandover, RefusesARecipientWhomNobodyMended)
{
    add("Ann", "1");
    add("Bob", "2", "\"");
    add("Cid", "3", ";");
    EXPECT_THAT(failure(), testing::StartsWith("Bob (2) cannot be sent a fax: the mailbox"));
}

TEST_F(PrepareHandover, SaysThatACardIsCharged)
{
    add("Ann", "1");
    chooseCard("4111 1111 1111 2345");
    confirm();
    EXPECT_EQ(behindSummary(prepareHandover(driver()).remarks),
              "; the credit card ending in 2345 is charged");
}

TEST_F(PrepareHandover, SaysWhatStaysInTheJobThoughItsBoxIsNotTicked)
{
    add("Ann", "1");
    chooseCard("4111 1111 1111 2345");
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    confirm();
    driver().call("T40InvokeFaxDialog");
    driver().tick("LanFax Credit Card", false);
    driver().tick("LanFax Dialing Prefix", false);
    confirm();
    EXPECT_THAT(
        prepareHandover(driver()).remarks,
        ElementsAre("the dialing prefix 9 is dialled, though its box is not ticked any more",
                    "the credit card ending in 2345 is charged, though its box is not ticked any more"));
}

TEST_F(PrepareHandover, RefusesCardsAndPrefixesThatNobodyCanDial)
{
    add("Ann", "1");
    chooseCard("4111\";");
    confirm();
    EXPECT_EQ(failure(),
              "the credit card number holds something else than digits, blanks, \"-\", \"*\", \"#\" and "
              "\",\"; change it in the fax dialog");
    driver().call("T40InvokeFaxDialog");
    chooseCard("4111");
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9\"");
    confirm();
    EXPECT_THAT(failure(), HasSubstr("the dialing prefix holds something else"));
}

TEST_F(PrepareHandover, RefusesControlCharactersInAKeptTextThatGoesOntoTheCoverSheet)
{
    for (const auto& [feature, words] :
         {std::pair{"LanFax Cover Sheet Notes=a\vb", "the note of the cover sheet"},
          std::pair{"Cover Sheet Custom Text=a\fb", "the cover sheet's own text for its recipients"},
          std::pair{"Sender Fax Name=a\x1b", "the sender's name"},
          std::pair{"Sender Fax Number=a\xc2\x85", "the sender's fax number"},
          std::pair{"Sender Fax Organization=a\xe2\x80\xa8", "the sender's organization"},
          std::pair{"Sender Fax Tel Number=a\x04", "the sender's phone number"},
          std::pair{"Sender Fax Email Addr=a\x7f", "the sender's e-mail address"}}) {
        startWith("LanFax Cover Sheet Option=1\nShow Rcpt Info Checkbox=1\nShow Rcpt Info=1\n"
                  "Show Sender Info Checkbox=1\n" +
                  std::string(feature) + "\n");
        add("Ann", "1");
        driver().press("LanFax Setup Cover Sheet Button");
        driver().press("Sender Properties Button");
        driver().press("LanFaxSender OK Button");
        driver().press("LanFaxCover OK Button");
        confirm();
        EXPECT_EQ(failure(),
                  std::string(words) +
                      " holds a line end or another control character; change it in the fax dialog");
        driver().call("T40InvokeFaxDialog");
        driver().choose("LanFax Cover Sheet Option", 0);
        confirm();
        EXPECT_EQ(failure(), "nothing") << "without a cover sheet the text goes nowhere";
    }
}

TEST_F(PrepareHandover, ALookAheadRefusesWhatTheWriterWillRefuse)
{
    const std::string cover = "LanFax Cover Sheet Option=1\nShow Rcpt Info Checkbox=1\n"
                              "Show Sender Info Checkbox=1\n";
    for (const std::string& features :
         {std::string("LanFax Dialing Prefix=1\nLanFax Dialing Prefix Info=ab\n"),
          std::string("LanFax Dialing Prefix=0\nLanFax Dialing Prefix Info=ab\n"),
          std::string("LanFax Credit Card=1\nLanFax Credit Card Info=ab\n"),
          std::string("LanFax Cover Sheet Notes=a\vb\n"), cover + "LanFax Cover Sheet Notes=a\vb\n",
          cover + "Show Rcpt Info=1\nCover Sheet Custom Text=a\fb\n",
          cover + "Show Rcpt Info=0\nCover Sheet Custom Text=a\fb\n",
          std::string("LanFax Cover Sheet Option=1\nCover Sheet Custom Text=a\fb\n"),
          cover + "Sender Fax Name=a\x1b\n", cover + "Sender Fax Number=a\xc2\x85\n",
          std::string("LanFax Cover Sheet Option=1\nSender Fax Name=a\x1b\n"),
          cover + "Sender Fax Organization=a\xe2\x80\xa8\n", cover + "Sender Fax Tel Number=a\x04\n",
          cover + "Sender Fax Email Addr=a\x7f\n"}) {
        startWith(features);
        add("Ann", "1");
        driver().press("LanFax Cancel Button");
        ASSERT_FALSE(driver().choicesTakenOver());
        const std::string ahead = refusal([&] { static_cast<void>(lookAtHandover(driver())); });
        EXPECT_FALSE(driver().choicesTakenOver());
        EXPECT_EQ(ahead, failure()) << features;
    }
}

TEST_F(PrepareHandover, SaysWhichTextsTheCoverSheetHasNoRoomFor)
{
    const std::string wide(31, 'W');
    add(wide, "1");
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().press("LanFax Setup Cover Sheet Button");
    driver().tick("Show Rcpt Info Checkbox", true);
    driver().press("LanFaxCover OK Button");
    confirm();
    const auto expected = ElementsAre("the cover sheet has no room for all of \"" + wide +
                                      "\": the text is cut off; shorten it");
    EXPECT_THAT(prepareHandover(driver()).cutTexts, expected);
    EXPECT_THAT(prepareHandover(driver()).allWarnings(), expected) << "a second look finds the same";
    driver().call("T40InvokeFaxDialog");
    driver().choose("LanFax Cover Sheet Option", 0);
    confirm();
    EXPECT_THAT(prepareHandover(driver()).cutTexts, IsEmpty());
}

TEST_F(PrepareHandover, TakesOverWhatTheDialogsShowAndNobodyConfirmed)
{
    startWith("LanFax Cover Sheet Option=1\nLanFax Cover Sheet Notes=Call me\nLanFax Dialing Prefix=1\n"
              "LanFax Dialing Prefix Info=9\n");
    add("Ann", "1");
    const auto handover = prepareHandover(driver());
    EXPECT_THAT(handover.allWarnings(), IsEmpty());
    EXPECT_TRUE(driver().faxSession().coverPageChosen());
    EXPECT_EQ(driver().faxSession().texts().note, " (Call me) ");
    EXPECT_EQ(driver().faxSession().texts().dialingPrefix, "9");
}

TEST_F(PrepareHandover, SaysWhatGoesOutWhenTheDialogShowsSomethingElse)
{
    add("Ann", "1");
    confirm();
    driver().call("T40InvokeFaxDialog");
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    chooseCard("4111");
    driver().press("LanFax Cancel Button");
    EXPECT_THAT(
        prepareHandover(driver()).allWarnings(),
        ElementsAre(
            "the fax goes out without a cover page, though the fax dialog shows that one is sent; open "
            "the dialog and press Ok to send it",
            "the fax is dialled without a prefix, though the fax dialog shows \"9\"; open the dialog "
            "and press Ok to dial it",
            "no credit card is charged, though the fax dialog shows one; open the dialog and press Ok to "
            "charge it"));
    driver().call("T40InvokeFaxDialog");
    confirm();
    EXPECT_THAT(prepareHandover(driver()).allWarnings(), IsEmpty());
    driver().call("T40InvokeFaxDialog");
    driver().type("LanFax Cover Sheet Notes", "Call me");
    driver().type("LanFax Dialing Prefix Info", "8");
    chooseCard("4222");
    driver().press("LanFax Cancel Button");
    EXPECT_THAT(
        prepareHandover(driver()).allWarnings(),
        ElementsAre("the cover page has another note than the fax dialog shows; open the dialog and press "
                    "Ok to take that one",
                    "the fax is dialled with the prefix \"9\", though the fax dialog shows \"8\"; open "
                    "the dialog and press Ok to take that one",
                    "another credit card is charged than the fax dialog shows; open the dialog and press "
                    "Ok to take that one"));
    driver().call("T40InvokeFaxDialog");
    driver().choose("LanFax Cover Sheet Option", 0);
    driver().type("LanFax Credit Card Info", "4111");
    driver().type("LanFax Dialing Prefix Info", "9");
    driver().press("LanFax Cancel Button");
    EXPECT_THAT(
        prepareHandover(driver()).allWarnings(),
        ElementsAre("the fax goes out with a cover page, though the fax dialog shows that none is sent; "
                    "open the dialog and press Ok to leave it out"));
}

TEST_F(PrepareHandover, SaysWhenTheSenderOfTheCoverPageIsNotTheOneThatIsShown)
{
    startWith("LanFax Cover Sheet Option=1\nShow Sender Info Checkbox=1\nSender Fax Name=Bob\n");
    add("Ann", "1");
    EXPECT_THAT(prepareHandover(driver()).allWarnings(), IsEmpty());
    driver().call("LanFaxOptionsTabDefaults");
    driver().choose("LanFax Cover Sheet Option", 1);
    confirm();
    EXPECT_THAT(
        prepareHandover(driver()).allWarnings(),
        ElementsAre("the cover page is made with other details of the sender than its set-up shows; open "
                    "the set-up and press Ok to take those",
                    "the cover page shows other things than its set-up says; open the set-up and press Ok to "
                    "take those"));
    driver().call("T40InvokeFaxDialog");
    driver().press("LanFax Setup Cover Sheet Button");
    driver().press("LanFaxCover OK Button");
    confirm();
    EXPECT_THAT(prepareHandover(driver()).allWarnings(), IsEmpty());
}

TEST_F(PrepareHandover, SaysWhenTheCoverPageShowsOtherThingsThanItsSetUp)
{
    constexpr const char* sentence = "the cover page shows other things than its set-up says; open the "
                                     "set-up and press Ok to take those";
    for (const char* kept : {"Show Rcpt Info Checkbox=1\n", "Show Sender Info Checkbox=1\n",
                             "Show Rcpt Info Checkbox=1\nShow Rcpt Info=1\nCover Sheet Custom Text=All\n"}) {
        startWith("LanFax Cover Sheet Option=1\n" + std::string(kept));
        add("Ann", "1");
        EXPECT_THAT(prepareHandover(driver()).allWarnings(), IsEmpty()) << kept;
        driver().call("LanFaxOptionsTabDefaults");
        driver().choose("LanFax Cover Sheet Option", 1);
        confirm();
        EXPECT_THAT(prepareHandover(driver()).allWarnings(), ElementsAre(sentence)) << kept;
        driver().call("T40InvokeFaxDialog");
        driver().press("LanFax Setup Cover Sheet Button");
        driver().press("LanFaxCover OK Button");
        confirm();
        EXPECT_THAT(prepareHandover(driver()).allWarnings(), IsEmpty()) << kept;
    }
}

TEST_F(PrepareHandover, LooksAtNoCoverSheetWithoutRecipients)
{
    driver().call("T40InvokeFaxDialog");
    driver().choose("LanFax Cover Sheet Option", 1);
    confirm();
    EXPECT_EQ(failure(), "nothing") << "the writer asks for recipients";
}

} // namespace
} // namespace quelm
