// The cover sheet dialog and the sender dialog: what they take over, and what Cancel returns to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/cover_sheet_dialog.h"

#include "tests/support/component_test.h"

#include <utility>

namespace {

constexpr const char* coverWindow = "Cover Sheet Setup Window";
constexpr const char* senderWindow = "Sender Information Window";

struct SenderField {
    const char* widget;
    std::string Tarvik40Fax::*field;
};

const SenderField senderFields[] = {
    {"Sender Fax Number", &Tarvik40Fax::senderFaxNumber},
    {"Sender Fax Name", &Tarvik40Fax::senderName},
    {"Sender Fax Organization", &Tarvik40Fax::senderOrganization},
    {"Sender Fax Tel Number", &Tarvik40Fax::senderPhone},
    {"Sender Fax Email Addr", &Tarvik40Fax::senderEmail},
};

const std::string senderList = R"(",Sender Fax Number,Sender Fax Name,Sender Fax Organization,)"
                               R"(Sender Fax Tel Number,Sender Fax Email Addr,")";
const std::string coverSheetList = R"(",Cover Sheet Custom Text,Sender Info,Show Rcpt Info Checkbox,)"
                                   R"(Show Rcpt Info,Show Sender Info Checkbox,Cover Sheet Size,")";

using Values = std::vector<std::string>;

} // namespace

class CoverSheetDialogTest : public StartedComponentTest {
protected:
    CoverSheetDialogTest()
    {
        host.choose("LanFax Cover Sheet Option", 1);
        host.journal.clear();
    }

    void open() { host.press("LanFax Setup Cover Sheet Button"); }

    /// Opens the sender dialog from the cover sheet dialog.
    void openSender()
    {
        host.tick("Show Sender Info Checkbox");
        host.press("Sender Properties Button");
    }

    std::string press(const char* button)
    {
        host.journal.clear();
        host.press(button);
        return host.journal.calls();
    }

    void fillSender(const Values& values)
    {
        for (std::size_t i = 0; i < values.size(); ++i)
            host.setText(senderFields[i].widget, values[i]);
    }

    /// The sender as the widgets show it, and as the job holds it.
    Values senderShown()
    {
        Values values;
        for (const SenderField& sender : senderFields)
            values.push_back(host.text(sender.widget));
        return values;
    }

    Values senderOfJob()
    {
        Values values;
        for (const SenderField& sender : senderFields)
            values.push_back(job().*sender.field);
        return values;
    }

    /// The journal of a summary of these values.
    static std::string summarised(const Values& values)
    {
        std::string journal;
        std::string summary;
        for (std::size_t i = 0; i < values.size(); ++i) {
            journal +=
                "get " + fake::quoted(senderFields[i].widget) + " Value -> " + fake::quoted(values[i]) + "\n";
            summary += values[i] + "&#13;";
        }
        return journal + "set \"Sender Info\" WidgetText " + fake::quoted(summary) + "\n";
    }

    const Values nobody = Values(5);
    const Values anne = {"555-1", "Anne", "Acme", "777", "a@b"};
    const Values bernard = {"666-2", "Bernard", "Best", "888", "b@c"};
};

// --- The sender's summary --------------------------------------------------------------------

TEST_F(CoverSheetDialogTest, TheSummaryListsTheSenderInOrderAndReachesTheJob)
{
    fillSender(anne);
    T40UpdateCoverSheetSenderInfoSummary();
    EXPECT_EQ(host.journal.all(), summarised(anne));
    EXPECT_EQ(senderOfJob(), anne);
}

TEST_F(CoverSheetDialogTest, TheSummaryOfFiveEmptyFieldsIsFiveLineBreaks)
{
    T40UpdateCoverSheetSenderInfoSummary();
    EXPECT_TRUE(host.journal.effects().ends_with(
        lines({R"(set "Sender Info" WidgetText "&#13;&#13;&#13;&#13;&#13;")"})));
}

TEST_F(CoverSheetDialogTest, EmptyFieldsEmptyTheJobs)
{
    fillSender(anne);
    T40UpdateCoverSheetSenderInfoSummary();
    fillSender(nobody);
    T40UpdateCoverSheetSenderInfoSummary();
    EXPECT_EQ(senderOfJob(), nobody);
}

TEST_F(CoverSheetDialogTest, AFieldThatCannotBeReadRepeatsTheOneBefore)
{
    fillSender(anne);
    host.faults.failOn(fake::Op::readProperty, "Sender Fax Organization");
    T40UpdateCoverSheetSenderInfoSummary();
    EXPECT_EQ(senderOfJob(), (Values{"555-1", "Anne", "Anne", "777", "a@b"}));
    EXPECT_EQ(host.text("Sender Info"), "555-1\nAnne\nAnne\n777\na@b\n");
}

TEST_F(CoverSheetDialogTest, AFirstFieldThatCannotBeReadIsEmpty)
{
    fillSender(anne);
    T40UpdateCoverSheetSenderInfoSummary();
    host.faults.failOn(fake::Op::readProperty, "Sender Fax Number");
    T40UpdateCoverSheetSenderInfoSummary();
    EXPECT_EQ(job().senderFaxNumber, "");
}

TEST_F(CoverSheetDialogTest, LongSenderFieldsAreTakenAsTheHostHandsThemOver)
{
    fillSender(Values(5, longText(6000)));
    T40UpdateCoverSheetSenderInfoSummary();
    EXPECT_EQ(senderOfJob(), Values(5, longText(4095)));
    std::string summary;
    for (int i = 0; i < 5; ++i)
        summary += longText(4095) + "\n";
    EXPECT_EQ(host.text("Sender Info"), summary);
}

// --- The cover sheet dialog ------------------------------------------------------------------

TEST_F(CoverSheetDialogTest, OpeningSummarisesThenSnapshotsThenShows)
{
    fillSender(anne);
    EXPECT_EQ(press("LanFax Setup Cover Sheet Button"),
              summarised(anne) + lines({"saveFeatures " + coverSheetList, "saveFeatures " + senderList,
                                        R"(set "Cover Sheet Setup Window" Visibility on)"}));
}

TEST_F(CoverSheetDialogTest, OpeningCopiesTheSenderIntoTheJobEvenWhenTheUserThenCancels)
{
    fillSender(anne);
    open();
    host.press("LanFaxCover Cancel Button");
    EXPECT_EQ(senderOfJob(), anne);
}

TEST_F(CoverSheetDialogTest, OkHidesFirstAndReadsThen)
{
    open();
    EXPECT_EQ(press("LanFaxCover OK Button"), lines({R"(set "Cover Sheet Setup Window" Visibility off)",
                                                     R"(get "Show Rcpt Info Checkbox" Value -> off)",
                                                     R"(get "Show Sender Info Checkbox" Value -> off)",
                                                     R"(get "Show Custom Text" Value -> off)"}));
}

TEST_F(CoverSheetDialogTest, OkTakesTheChoicesAndTheCustomText)
{
    open();
    host.tick("Show Rcpt Info Checkbox");
    host.choose("Show Rcpt Info", 1);
    host.type("Cover Sheet Custom Text", "To all of you");
    host.tick("Show Sender Info Checkbox");
    EXPECT_EQ(
        press("LanFaxCover OK Button"),
        lines({R"(set "Cover Sheet Setup Window" Visibility off)",
               R"(get "Show Rcpt Info Checkbox" Value -> on)",
               R"(get "Show Sender Info Checkbox" Value -> on)", R"(get "Show Custom Text" Value -> on)",
               R"(get "Cover Sheet Custom Text" Value -> "To all of you")"}));
    EXPECT_TRUE(job().showRecipientInfo);
    EXPECT_TRUE(job().showSenderInfo);
    EXPECT_TRUE(job().showCustomText);
    EXPECT_EQ(job().customText, "To all of you");
}

TEST_F(CoverSheetDialogTest, OkWithAllRecipientsShownLeavesTheCustomText)
{
    job().customText = "old";
    open();
    host.tick("Show Rcpt Info Checkbox");
    host.setText("Cover Sheet Custom Text", "new");
    host.press("LanFaxCover OK Button");
    EXPECT_TRUE(job().showRecipientInfo);
    EXPECT_FALSE(job().showCustomText);
    EXPECT_EQ(job().customText, "old");
}

TEST_F(CoverSheetDialogTest, OkTakesTicksBack)
{
    job().showRecipientInfo = job().showSenderInfo = job().showCustomText = true;
    open();
    host.press("LanFaxCover OK Button");
    EXPECT_FALSE(job().showRecipientInfo);
    EXPECT_FALSE(job().showSenderInfo);
    EXPECT_FALSE(job().showCustomText);
}

TEST_F(CoverSheetDialogTest, AChoiceThatCannotBeReadStays)
{
    job().showRecipientInfo = job().showSenderInfo = job().showCustomText = true;
    open();
    host.faults.fail(fake::Op::readProperty);
    host.press("LanFaxCover OK Button");
    EXPECT_TRUE(job().showRecipientInfo);
    EXPECT_TRUE(job().showSenderInfo);
    EXPECT_TRUE(job().showCustomText);
    EXPECT_EQ(job().customText, "");
}

TEST_F(CoverSheetDialogTest, ALongCustomTextIsTakenAsTheHostHandsItOver)
{
    open();
    host.tick("Show Rcpt Info Checkbox");
    host.choose("Show Rcpt Info", 1);
    host.setText("Cover Sheet Custom Text", longText(6000));
    host.press("LanFaxCover OK Button");
    EXPECT_EQ(job().customText, longText(4095));
}

TEST_F(CoverSheetDialogTest, CancelRestoresTheSenderThenTheCoverSheetThenHides)
{
    for (bool fromFrame : {false, true}) {
        open();
        host.journal.clear();
        if (fromFrame)
            host.close(coverWindow);
        else
            host.press("LanFaxCover Cancel Button");
        EXPECT_EQ(host.journal.calls(),
                  lines({"restoreFeatures " + senderList, "restoreFeatures " + coverSheetList,
                         R"(set "Cover Sheet Setup Window" Visibility off)"}));
    }
}

TEST_F(CoverSheetDialogTest, CancelReturnsToTheChoicesThatItOpenedWith)
{
    host.setText("Cover Sheet Custom Text", "old");
    open();
    host.tick("Show Rcpt Info Checkbox");
    host.choose("Show Rcpt Info", 1);
    host.type("Cover Sheet Custom Text", "new");
    host.tick("Show Sender Info Checkbox");
    host.choose("Cover Sheet Size", 1);
    host.press("LanFaxCover Cancel Button");
    EXPECT_FALSE(host.ticked("Show Rcpt Info Checkbox"));
    EXPECT_EQ(host.number("Show Rcpt Info"), 0);
    EXPECT_EQ(host.text("Cover Sheet Custom Text"), "old");
    EXPECT_FALSE(host.ticked("Show Sender Info Checkbox"));
    EXPECT_EQ(host.number("Cover Sheet Size"), 0);
    EXPECT_FALSE(job().showRecipientInfo);
    EXPECT_EQ(job().customText, "");
}

TEST_F(CoverSheetDialogTest, OkTakesNoSnapshotAndTheNextOpeningDoes)
{
    open();
    host.choose("Cover Sheet Size", 1);
    EXPECT_EQ(press("LanFaxCover OK Button").find("saveFeatures"), std::string::npos);
    open();
    host.choose("Cover Sheet Size", 0);
    host.press("LanFaxCover Cancel Button");
    EXPECT_EQ(host.number("Cover Sheet Size"), 1);
}

// --- The sender dialog -----------------------------------------------------------------------

TEST_F(CoverSheetDialogTest, TheSenderDialogIsShown)
{
    open();
    host.tick("Show Sender Info Checkbox");
    EXPECT_EQ(press("Sender Properties Button"), lines({R"(set "Sender Information Window" Visibility on)"}));
}

TEST_F(CoverSheetDialogTest, SenderOkSnapshotsBeforeAndAfterTheSummary)
{
    open();
    openSender();
    fillSender(anne);
    host.setSensitive("Sender Info", false);
    EXPECT_EQ(press("LanFaxSender OK Button"),
              lines({"saveFeatures " + senderList, R"(set "Sender Info" Sensitivity on)"}) +
                  summarised(anne) +
                  lines({"saveFeatures " + senderList, R"(set "Sender Information Window" Visibility off)"}));
    EXPECT_TRUE(host.sensitive("Sender Info"));
    EXPECT_EQ(senderOfJob(), anne);
}

TEST_F(CoverSheetDialogTest, AnAcceptedSenderSurvivesTheCoverSheetDialogsCancel)
{
    fillSender(anne);
    open();
    openSender();
    fillSender(bernard);
    host.press("LanFaxSender OK Button");
    host.press("LanFaxCover Cancel Button");
    EXPECT_EQ(senderShown(), bernard);
    EXPECT_EQ(senderOfJob(), bernard);
}

TEST_F(CoverSheetDialogTest, SenderCancelRestoresTheSenderAndHides)
{
    for (bool fromFrame : {false, true}) {
        open();
        openSender();
        host.journal.clear();
        if (fromFrame)
            host.close(senderWindow);
        else
            host.press("LanFaxSender Cancel Button");
        EXPECT_EQ(host.journal.calls(), lines({"restoreFeatures " + senderList,
                                               R"(set "Sender Information Window" Visibility off)"}));
    }
}

TEST_F(CoverSheetDialogTest, SenderCancelReturnsToTheOpeningOfTheCoverSheetDialog)
{
    fillSender(anne);
    open();
    openSender();
    fillSender(bernard);
    host.press("LanFaxSender Cancel Button");
    EXPECT_EQ(senderShown(), anne);
    EXPECT_EQ(senderOfJob(), anne);
}

TEST_F(CoverSheetDialogTest, SenderCancelReturnsToTheLastSenderOk)
{
    fillSender(anne);
    open();
    openSender();
    fillSender(bernard);
    host.press("LanFaxSender OK Button");
    host.press("Sender Properties Button");
    fillSender(nobody);
    host.press("LanFaxSender Cancel Button");
    EXPECT_EQ(senderShown(), bernard);
    EXPECT_EQ(senderOfJob(), bernard);
}

TEST_F(CoverSheetDialogTest, TheJobKeepsTheLastSummaryWhenTheSenderIsRestored)
{
    open();
    openSender();
    fillSender(anne);
    T40UpdateCoverSheetSenderInfoSummary();
    host.press("LanFaxSender Cancel Button");
    EXPECT_EQ(senderShown(), nobody);
    EXPECT_EQ(senderOfJob(), anne);
}
