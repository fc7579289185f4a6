// Selecting and removing recipients: the buttons beside the lists, the questions, the removals.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_selection.h"

#include "tests/support/component_test.h"

#include <ostream>

namespace {

constexpr const char* jobList = "LanFax Recipient List";
constexpr const char* picksList = "Fax Cur Recipient List";

using Names = std::vector<std::string>;

std::string row(const char* list, const std::string& name, const std::string& faxNumber)
{
    return "addRow " + fake::quoted(list) + " " + fake::quoted(name) + " " + fake::quoted(faxNumber) +
           " empty empty empty empty\n";
}

/// A redrawn job list, without its rows; two buttons follow them after a removal.
const std::string redrawnJob = lines({
    R"(get "LanFax Recipient List" Value -> -1)",
    R"(set "LanFax Details Button" Sensitivity off)",
    R"(set "LanFax Save Entry Button" Sensitivity off)",
    R"(set "LanFax Remove Button" Sensitivity off)",
    R"(set "LanFax Save Group Button" Sensitivity on)",
    R"(clearRows "LanFax Recipient List")",
});
const std::string buttonsOff = lines({
    R"(set "LanFax Details Button" Sensitivity off)",
    R"(set "LanFax Remove Button" Sensitivity off)",
});

std::string removalQuestion(const std::string& name, const std::string& faxNumber)
{
    return "Name:   " + name + "\r\nFax Number:   " + faxNumber +
           "\r\n\nAre you sure you want to remove this Recipient?";
}

/// The journal of a question about one recipient whose texts have no translation.
std::string asked(const std::string& name, const std::string& faxNumber)
{
    return lines({R"(translate "Name:" -> none)", R"(translate "Fax Number:" -> none)",
                  R"(translate "Are you sure you want to remove this Recipient?" -> none)",
                  "ask 3 " + fake::quoted(removalQuestion(name, faxNumber))});
}

std::string withoutFirstLine(const std::string& text) { return text.substr(text.find('\n') + 1); }

} // namespace

class RecipientSelectionTest : public StartedComponentTest {
protected:
    void fillJob(const Names& names)
    {
        for (const std::string& name : names)
            addRecipient(name, std::to_string(++lastNumber));
        job().updatePBEntryList(RECIPIENT_LIST);
        host.journal.clear();
    }

    void fillPicks(const Names& names)
    {
        host.press("AddPBFaxRcpt");
        for (const std::string& name : names)
            addPick(name, std::to_string(++lastNumber));
        job().updatePBEntryList(CUR_RECIPIENT_LIST);
        host.journal.clear();
    }

    /// The user selects rows; what the callback did is in the journal.
    void select(const char* list, std::vector<int> rows)
    {
        host.journal.clear();
        host.selectRows(list, std::move(rows));
    }

    void askBeforeRemoving(bool ask) { host.tick("LanFax Pref Remove One", ask); }

    /// Presses a button; the journal of that.
    std::string press(const char* button)
    {
        host.journal.clear();
        host.press(button);
        return host.journal.calls();
    }

    std::string call(void (*callback)())
    {
        host.journal.clear();
        callback();
        return host.journal.calls();
    }

    std::string answer(bool yes)
    {
        host.journal.clear();
        host.answer(yes);
        return host.journal.calls();
    }

    Names pickNames() { return host.names(picksList); }
    int picks() { return job().getRecipientListCount(CUR_RECIPIENT_LIST); }

    int lastNumber = 0;
};

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

// --- The question about several --------------------------------------------------------------

TEST_F(RecipientSelectionTest, OneSelectedRowAsksTheQuestionAboutSeveralWithOne)
{
    fillJob({"Anne", "Bernard"});
    select(jobList, {1});
    EXPECT_EQ(press("LanFax Remove Button"),
              lines({R"(find "LanFax Recipient List")", R"(selectionCount "LanFax Recipient List" -> 1)",
                     R"(feature "LanFax Pref Remove One" -> 1)",
                     R"(translate "Are you sure you want to remove all %d Recipients?" -> none)",
                     R"(ask 3 "Are you sure you want to remove all 1 Recipients?")"}));
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
}

TEST_F(RecipientSelectionTest, SeveralSelectedRowsAskWithTheirNumber)
{
    fillJob({"Anne", "Bernard", "Carla"});
    select(jobList, {0, 2});
    press("LanFax Remove Button");
    EXPECT_EQ(host.openQuestions(), Names{"Are you sure you want to remove all 2 Recipients?"});
}

TEST_F(RecipientSelectionTest, AYesRemovesTheRowsSelectedAtThatMoment)
{
    fillJob({"Anne", "Bernard", "Carla"});
    select(jobList, {0, 2});
    press("LanFax Remove Button");
    host.setSelection(jobList, {1});
    const std::string journal = answer(true);
    EXPECT_EQ(jobNames(), (Names{"Anne", "Carla"}));
    EXPECT_TRUE(journal.starts_with(
        lines({R"(find "LanFax Recipient List")", R"(sortSelection "LanFax Recipient List" ascending)"})));
    EXPECT_TRUE(journal.ends_with(buttonsOff + lines({"closeQuestion"})));
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(RecipientSelectionTest, ANoOnlyClosesTheQuestionAboutSeveral)
{
    fillJob({"Anne", "Bernard"});
    select(jobList, {0, 1});
    press("LanFax Remove Button");
    EXPECT_EQ(answer(false), lines({"closeQuestion"}));
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
}

TEST_F(RecipientSelectionTest, TheQuestionAboutSeveralIsTranslatedAndLosesItsMarkup)
{
    host.translations["Are you sure you want to remove all %d Recipients?"] =
        "<b>%d</b> destinataires &amp; rien d'autre ?";
    T40RemoveMultipleFaxRecipientsTest(12);
    EXPECT_EQ(host.openQuestions(), Names{"12 destinataires & rien d'autre ?"});
}

TEST_F(RecipientSelectionTest, ATranslationPutsTheNumberWhereItWantsIt)
{
    host.translations["Are you sure you want to remove all %d Recipients?"] = "100%%: %1$3d";
    T40RemoveMultipleFaxRecipientsTest(12);
    EXPECT_EQ(host.openQuestions(), Names{"100%:  12"});
}

TEST_F(RecipientSelectionTest, ATranslationThatWantsAnythingElseStandsAsItIs)
{
    host.translations["Are you sure you want to remove all %d Recipients?"] = "%d %s %n 100%";
    T40RemoveMultipleFaxRecipientsTest(12);
    EXPECT_EQ(host.openQuestions(), Names{"%d %s %n 100%"});
}

TEST_F(RecipientSelectionTest, ADoubledPercentSignInATranslationIsShownOnce)
{
    host.translations["Are you sure you want to remove all %d Recipients?"] = "100%% von %d?";
    T40RemoveMultipleFaxRecipientsTest(12);
    EXPECT_EQ(host.openQuestions(), Names{"100% von 12?"});
}

TEST_F(RecipientSelectionTest, ATranslationWithoutAPlaceForTheNumberStandsAsItIs)
{
    host.translations["Are you sure you want to remove all %d Recipients?"] = "Tous ?";
    T40RemoveMultipleFaxRecipientsTest(12);
    EXPECT_EQ(host.openQuestions(), Names{"Tous ?"});
}

TEST_F(RecipientSelectionTest, ALongTranslationIsShownWhole)
{
    host.translations["Are you sure you want to remove all %d Recipients?"] = longText(3000) + " %d";
    T40RemoveMultipleFaxRecipientsTest(12);
    EXPECT_EQ(host.openQuestions(), Names{longText(3000) + " 12"});
}

TEST_F(RecipientSelectionTest, TheNumberAskedAboutIsTheOneHandedOver)
{
    for (int count : {0, -1, 2147483647})
        T40RemoveMultipleFaxRecipientsTest(count);
    EXPECT_EQ(host.openQuestions(), (Names{"Are you sure you want to remove all 0 Recipients?",
                                           "Are you sure you want to remove all -1 Recipients?",
                                           "Are you sure you want to remove all 2147483647 Recipients?"}));
}

// --- The question about one ------------------------------------------------------------------

TEST_F(RecipientSelectionTest, WhenTheSelectionCannotBeCountedTheSelectedOneIsAskedAbout)
{
    fillJob({"Anne", "Bernard"});
    select(jobList, {1});
    host.faults.fail(fake::Op::countSelection);
    EXPECT_EQ(
        press("LanFax Remove Button"),
        lines({R"(find "LanFax Recipient List")", R"(selectionCount "LanFax Recipient List" -> failed)",
               R"(get "LanFax Recipient List" Value -> 1)", R"(feature "LanFax Pref Remove One" -> 1)"}) +
            asked("Bernard", "2"));
    EXPECT_EQ(jobNames(), (Names{"Anne", "Bernard"}));
}

TEST_F(RecipientSelectionTest, WhenTheListIsMissingTheSelectedOneIsAskedAbout)
{
    fillJob({"Anne"});
    host.missingWidgets.insert(jobList);
    T40RemoveFaxRecipientTest();
    // Nor can the selection be read without the list.
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_EQ(host.journal.count("get \"LanFax Recipient List\" Value -> failed"), 1);
}

TEST_F(RecipientSelectionTest, ASingleRemovalWithoutASelectionDoesNothing)
{
    fillJob({"Anne"});
    EXPECT_EQ(call(T40RemoveSingleFaxRecipientTest), lines({R"(get "LanFax Recipient List" Value -> -1)"}));
}

TEST_F(RecipientSelectionTest, WithThePreferenceOffTheSelectedOneIsRemovedAtOnce)
{
    fillJob({"Anne", "Bernard"});
    askBeforeRemoving(false);
    host.setSelection(jobList, {0});
    EXPECT_EQ(
        call(T40RemoveSingleFaxRecipientTest),
        lines({R"(get "LanFax Recipient List" Value -> 0)", R"(feature "LanFax Pref Remove One" -> 0)",
               R"(get "LanFax Recipient List" Value -> 0)", R"(get "LanFax Recipient List" Value -> 0)"}) +
            withoutFirstLine(redrawnJob) + row(jobList, "Bernard", "2") + buttonsOff);
    EXPECT_EQ(jobNames(), Names{"Bernard"});
}

TEST_F(RecipientSelectionTest, AYesRemovesTheOneSelectedAtThatMoment)
{
    fillJob({"Anne", "Bernard"});
    host.setSelection(jobList, {0});
    T40RemoveSingleFaxRecipientTest();
    EXPECT_EQ(host.openQuestions(), Names{removalQuestion("Anne", "1")});
    host.setSelection(jobList, {1});
    EXPECT_TRUE(answer(true).ends_with(buttonsOff + lines({"closeQuestion"})));
    EXPECT_EQ(jobNames(), Names{"Anne"});
}

TEST_F(RecipientSelectionTest, ANoOnlyClosesTheQuestionAboutOne)
{
    fillJob({"Anne"});
    host.setSelection(jobList, {0});
    T40RemoveSingleFaxRecipientTest();
    EXPECT_EQ(answer(false), lines({"closeQuestion"}));
    EXPECT_EQ(jobNames(), Names{"Anne"});
}

TEST_F(RecipientSelectionTest, LabelsAreTranslatedAndLoseTheirMarkupWhileValuesStandAsTyped)
{
    host.translations["Name:"] = "<i>Nom&amp;</i>";
    host.translations["Fax Number:"] = "Fax :";
    host.translations["Are you sure you want to remove this Recipient?"] = "<b>Supprimer ?</b>";
    addRecipient("<b>Anne</b> & Co", "1-<2>");
    job().updatePBEntryList(RECIPIENT_LIST);
    host.setSelection(jobList, {0});
    T40RemoveSingleFaxRecipientTest();
    EXPECT_EQ(host.openQuestions(), Names{"Nom&   <b>Anne</b> & Co\r\nFax :   1-<2>\r\n\nSupprimer ?"});
}

TEST_F(RecipientSelectionTest, BothKindsOfHostAskInEnglishWithoutATranslation)
{
    fillJob({"Anne"});
    host.setSelection(jobList, {0});
    for (bool copies : {false, true}) {
        host.copiesUntranslated = copies;
        T40RemoveSingleFaxRecipientTest();
        EXPECT_EQ(host.openQuestions(), Names{removalQuestion("Anne", "1")});
        host.answer(false);
    }
}

TEST_F(RecipientSelectionTest, MissingFieldsAreEmptyInTheQuestion)
{
    addRecipient("", "");
    job().updatePBEntryList(RECIPIENT_LIST);
    host.setSelection(jobList, {0});
    T40RemoveSingleFaxRecipientTest();
    EXPECT_EQ(host.openQuestions(), Names{removalQuestion("", "")});
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

// --- Answers ---------------------------------------------------------------------------------

TEST_F(RecipientSelectionTest, OnlyMinusEightIsAYes)
{
    fillJob({"Anne"});
    fillPicks({"Bernard"});
    host.setSelection(jobList, {0});
    host.setSelection(picksList, {0});
    for (auto respond : {RemoveSingleRcptResponseCB, RemoveMultipleRcptsResponseCB, RemoveTmpRcptResponseCB})
        for (int response : {-9, -7, -4, -1, 0, 1, 8}) {
            host.journal.clear();
            respond(nullptr, response);
            EXPECT_EQ(host.journal.all(), lines({"closeQuestion"})) << response;
        }
    EXPECT_EQ(jobNames(), Names{"Anne"});
    EXPECT_EQ(picks(), 1);
}
