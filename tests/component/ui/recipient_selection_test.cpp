// Selecting and removing recipients: the buttons beside the lists, the removals.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_selection.h"

#include "tests/component/ui/recipient_selection_fixture.h"

#include <ostream>

// --- Buttons beside the job's list -----------------------------------------------------------

struct ButtonRow {
    const char* testName;
    std::vector<int> selected;
    bool details;
    bool saveEntry;
    bool remove;
    bool saveGroup;
};

static void PrintTo(const ButtonRow& row, std::ostream* out) { *out << row.testName; }

class ButtonsTest : public RecipientSelectionTest, public testing::WithParamInterface<ButtonRow> {};

INSTANTIATE_TEST_SUITE_P(ByNumberOfRows, ButtonsTest,
                         testing::Values(ButtonRow{"NoRow", {}, false, false, false, true},
                                         ButtonRow{"OneRow", {1}, true, true, true, false},
                                         ButtonRow{"TwoRows", {0, 2}, false, false, true, true},
                                         ButtonRow{"ThreeRows", {0, 1, 2}, false, false, true, true}),
                         [](const auto& tested) { return std::string(tested.param.testName); });

TEST_P(ButtonsTest, FollowTheSelectionOfTheJobsList)
{
    const ButtonRow& expected = GetParam();
    auto line = [](const char* button, bool on) {
        return "set " + fake::quoted(button) + " Sensitivity " + (on ? "on" : "off");
    };
    fillJob({"Anne", "Bernard", "Carla"});
    for (const char* button : {"LanFax Details Button", "LanFax Save Entry Button", "LanFax Remove Button",
                               "LanFax Save Group Button"})
        host.setSensitive(button, !host.sensitive(button));
    select(jobList, expected.selected);
    EXPECT_EQ(host.journal.calls(), lines({R"(find "LanFax Recipient List")",
                                           R"(selectionCount "LanFax Recipient List" -> )" +
                                               std::to_string(expected.selected.size()),
                                           line("LanFax Details Button", expected.details),
                                           line("LanFax Save Entry Button", expected.saveEntry),
                                           line("LanFax Remove Button", expected.remove),
                                           line("LanFax Save Group Button", expected.saveGroup)}));
}

TEST_F(RecipientSelectionTest, ButtonsStayWhenTheJobsListIsMissing)
{
    fillJob({"Anne"});
    host.missingWidgets.insert(jobList);
    select(jobList, {0});
    EXPECT_EQ(host.journal.all(), lines({R"(find "LanFax Recipient List" -> none)"}));
}

TEST_F(RecipientSelectionTest, ButtonsStayWhenTheSelectionCannotBeCounted)
{
    fillJob({"Anne"});
    host.faults.fail(fake::Op::countSelection);
    select(jobList, {0});
    EXPECT_EQ(host.journal.effects(), "");
}

// --- Buttons beside the picks ----------------------------------------------------------------

TEST_F(RecipientSelectionTest, ASelectedPickSwitchesItsButtonsOn)
{
    fillPicks({"Anne", "Bernard"});
    select(picksList, {1});
    EXPECT_EQ(host.journal.calls(), lines({R"(get "Fax Cur Recipient List" Value -> 1)",
                                           R"(set "Cur Rcpt Prop Button" Sensitivity on)",
                                           R"(set "Cur Rcpt Remove Button" Sensitivity on)"}));
}

TEST_F(RecipientSelectionTest, WithoutASelectedPickItsButtonsAreOff)
{
    fillPicks({"Anne"});
    select(picksList, {});
    EXPECT_EQ(host.journal.calls(), lines({R"(get "Fax Cur Recipient List" Value -> -1)",
                                           R"(set "Cur Rcpt Prop Button" Sensitivity off)",
                                           R"(set "Cur Rcpt Remove Button" Sensitivity off)"}));
}

// --- Removing from the job without a question ------------------------------------------------

TEST_F(RecipientSelectionTest, WithThePreferenceOffRowsAreRemovedAtOnce)
{
    fillJob({"Anne", "Bernard"});
    askBeforeRemoving(false);
    select(jobList, {0});
    EXPECT_EQ(
        press("LanFax Remove Button"),
        lines({R"(find "LanFax Recipient List")", R"(selectionCount "LanFax Recipient List" -> 1)",
               R"(feature "LanFax Pref Remove One" -> 0)", R"(find "LanFax Recipient List")",
               R"(sortSelection "LanFax Recipient List" ascending)", R"(freeze "LanFax Recipient List")",
               R"(get "LanFax Recipient List" Value -> 0)",
               R"(get "LanFax Recipient List" Value -> none left)", R"(unfreeze "LanFax Recipient List")"}) +
            // The host's own rows go with the redrawing, so the selection is still there.
            lines({R"(get "LanFax Recipient List" Value -> 0)"}) + withoutFirstLine(redrawnJob) +
            row(jobList, "Bernard", "2") + buttonsOff);
    EXPECT_EQ(jobNames(), Names{"Bernard"});
    EXPECT_FALSE(host.widget(jobList).frozen);
}

TEST_F(RecipientSelectionTest, OnlyTheValueOneOfThePreferenceAsks)
{
    for (int value : {0, 2, -1}) {
        fillJob({"Anne"});
        host.featureValues["LanFax Pref Remove One"] = value;
        host.setSelection(jobList, {0});
        T40RemoveFaxRecipientTest();
        EXPECT_TRUE(host.openQuestions().empty()) << value;
        EXPECT_TRUE(jobNames().empty()) << value;
    }
}

TEST_F(RecipientSelectionTest, AnUnknownPreferenceDoesNotAsk)
{
    fillJob({"Anne"});
    host.unknownFeatures.insert("LanFax Pref Remove One");
    host.setSelection(jobList, {0});
    T40RemoveFaxRecipientTest();
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_TRUE(jobNames().empty());
}

TEST_F(RecipientSelectionTest, RowsOneAndThreeOfFiveRemoveExactlyThoseTwo)
{
    fillJob({"Anne", "Bernard", "Carla", "Dora", "Emil"});
    askBeforeRemoving(false);
    select(jobList, {1, 3});
    press("LanFax Remove Button");
    EXPECT_EQ(jobNames(), (Names{"Anne", "Carla", "Emil"}));
    EXPECT_EQ(host.names(jobList), jobNames());
}

TEST_F(RecipientSelectionTest, RowsAreRemovedWhateverTheOrderOfSelecting)
{
    fillJob({"Anne", "Bernard", "Carla", "Dora", "Emil"});
    askBeforeRemoving(false);
    select(jobList, {4, 0, 2});
    press("LanFax Remove Button");
    EXPECT_EQ(jobNames(), (Names{"Bernard", "Dora"}));
}

TEST_F(RecipientSelectionTest, EveryRowCanBeRemovedAtOnce)
{
    fillJob({"Anne", "Bernard", "Carla"});
    askBeforeRemoving(false);
    select(jobList, {0, 1, 2});
    press("LanFax Remove Button");
    EXPECT_TRUE(jobNames().empty());
    EXPECT_FALSE(host.sensitive("LanFax Save Group Button"));
}

TEST_F(RecipientSelectionTest, AfterARemovalNothingIsSelectedAndTheButtonsAreOff)
{
    fillJob({"Anne", "Bernard"});
    askBeforeRemoving(false);
    select(jobList, {0});
    press("LanFax Remove Button");
    EXPECT_EQ(host.number(jobList), -1);
    for (const char* button : {"LanFax Details Button", "LanFax Save Entry Button", "LanFax Remove Button"})
        EXPECT_FALSE(host.sensitive(button)) << button;
    EXPECT_TRUE(host.sensitive("LanFax Save Group Button"));
}

TEST_F(RecipientSelectionTest, RemovingWithoutASelectionRemovesNothingAndStillRedraws)
{
    fillJob({"Anne"});
    askBeforeRemoving(false);
    for (void (*remove)() :
         {T40RemoveFaxRecipientTest, T40RemoveMultipleFaxRecipients, T40RemoveSingleFaxRecipient}) {
        const std::string journal = call(remove);
        EXPECT_TRUE(journal.ends_with(redrawnJob + row(jobList, "Anne", "1") + buttonsOff)) << journal;
        EXPECT_EQ(jobNames(), Names{"Anne"});
    }
    EXPECT_FALSE(host.widget(jobList).frozen);
}

TEST_F(RecipientSelectionTest, ARowThatTheJobDoesNotHaveEndsTheRemoval)
{
    fillJob({"Anne", "Bernard", "Carla"});
    host.setSelection(jobList, {1, 2});
    job().removeFaxRecipientN(2, false);
    T40RemoveMultipleFaxRecipients();
    EXPECT_EQ(jobNames(), Names{"Anne"});
    EXPECT_FALSE(host.widget(jobList).frozen);
}

TEST_F(RecipientSelectionTest, ARowThatIsNoneRemovesNobody)
{
    for (const std::vector<int>& rows : {std::vector{-1}, std::vector{-1, 0, 1}}) {
        fillJob({"Anne", "Bernard"});
        host.widget(jobList).selection = rows;
        T40RemoveMultipleFaxRecipients();
        EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
        job().removeAllFaxRecipients(RECIPIENT_LIST);
    }
}

TEST_F(RecipientSelectionTest, NothingIsRemovedWithoutTheList)
{
    fillJob({"Anne"});
    host.setSelection(jobList, {0});
    host.missingWidgets.insert(jobList);
    T40RemoveMultipleFaxRecipients();
    EXPECT_EQ(jobNames(), Names{"Anne"});
}

// --- Removing everything ---------------------------------------------------------------------

TEST_F(RecipientSelectionTest, AllOfTheJobsRecipientsCanBeRemoved)
{
    fillJob({"Anne", "Bernard"});
    addPick("Carla", "3");
    EXPECT_EQ(
        call(T40RemoveAllFaxRecipients),
        lines({R"(get "LanFax Recipient List" Value -> -1)", R"(set "LanFax Details Button" Sensitivity off)",
               R"(set "LanFax Save Entry Button" Sensitivity off)",
               R"(set "LanFax Remove Button" Sensitivity off)",
               R"(set "LanFax Save Group Button" Sensitivity off)",
               R"(set "LanFax Save Entry Button" Sensitivity off)", R"(clearRows "LanFax Recipient List")"}));
    EXPECT_TRUE(jobNames().empty());
    EXPECT_EQ(picks(), 1);
}

// --- Removing picks --------------------------------------------------------------------------

TEST_F(RecipientSelectionTest, APickIsAskedAbout)
{
    fillPicks({"Anne", "Bernard"});
    select(picksList, {1});
    EXPECT_EQ(press("Cur Rcpt Remove Button"), lines({R"(get "Fax Cur Recipient List" Value -> 1)",
                                                      R"(feature "LanFax Pref Remove One" -> 1)"}) +
                                                   asked("Bernard", "2"));
    EXPECT_EQ(picks(), 2);
}

TEST_F(RecipientSelectionTest, AYesRemovesThePickSelectedAtThatMoment)
{
    fillPicks({"Anne", "Bernard"});
    select(picksList, {1});
    press("Cur Rcpt Remove Button");
    select(picksList, {0});
    EXPECT_EQ(answer(true),
              lines({R"(get "Fax Cur Recipient List" Value -> 0)", R"(clearRows "Fax Cur Recipient List")"}) +
                  row(picksList, "Bernard", "2") + lines({"closeQuestion"}));
    EXPECT_EQ(pickNames(), Names{"Bernard"});
}

TEST_F(RecipientSelectionTest, ANoOnlyClosesTheQuestionAboutAPick)
{
    fillPicks({"Anne"});
    select(picksList, {0});
    press("Cur Rcpt Remove Button");
    EXPECT_EQ(answer(false), lines({"closeQuestion"}));
    EXPECT_EQ(picks(), 1);
}

TEST_F(RecipientSelectionTest, WithThePreferenceOffAPickIsRemovedAtOnce)
{
    fillPicks({"Anne", "Bernard"});
    askBeforeRemoving(false);
    select(picksList, {0});
    EXPECT_EQ(press("Cur Rcpt Remove Button"),
              lines({R"(get "Fax Cur Recipient List" Value -> 0)", R"(feature "LanFax Pref Remove One" -> 0)",
                     R"(get "Fax Cur Recipient List" Value -> 0)", R"(clearRows "Fax Cur Recipient List")"}) +
                  row(picksList, "Bernard", "2"));
    EXPECT_EQ(pickNames(), Names{"Bernard"});
}

TEST_F(RecipientSelectionTest, RemovingAPickDoesNotTouchTheJob)
{
    fillJob({"Anne"});
    fillPicks({"Bernard"});
    select(picksList, {0});
    T40RemoveTmpFaxRecipient();
    EXPECT_EQ(picks(), 0);
    EXPECT_EQ(jobNames(), Names{"Anne"});
}

TEST_F(RecipientSelectionTest, WithoutASelectedPickNothingIsRemovedAndThePicksAreRedrawn)
{
    fillPicks({"Anne"});
    EXPECT_EQ(call(T40RemoveTmpFaxRecipient), lines({R"(get "Fax Cur Recipient List" Value -> -1)",
                                                     R"(clearRows "Fax Cur Recipient List")"}) +
                                                  row(picksList, "Anne", "1"));
    askBeforeRemoving(false);
    call(T40RemoveTmpFaxRecipientTest);
    EXPECT_EQ(picks(), 1);
}

TEST_F(RecipientSelectionTest, ASelectedPickThatCannotBeReadIsNotAskedAboutOrRemoved)
{
    fillPicks({"Anne"});
    select(picksList, {0});
    host.faults.failOn(fake::Op::readProperty, picksList);
    call(T40RemoveTmpFaxRecipientTest);
    EXPECT_TRUE(host.openQuestions().empty());
    askBeforeRemoving(false);
    call(T40RemoveTmpFaxRecipientTest);
    call(T40RemoveTmpFaxRecipient);
    EXPECT_EQ(picks(), 1);
}

TEST_F(RecipientSelectionTest, WithoutASelectedPickNothingIsAsked)
{
    fillPicks({"Anne"});
    T40RemoveTmpFaxRecipientTest();
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_EQ(picks(), 1);
}
