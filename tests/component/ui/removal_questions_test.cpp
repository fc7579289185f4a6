// The questions ahead of removing recipients from the job, and the answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/component/ui/recipient_selection_fixture.h"
#include "ui/recipient_selection.h"

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
