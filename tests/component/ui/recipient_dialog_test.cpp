// The recipient dialog: adding, the duplicate question, editing in place, saving to the phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_dialog.h"

#include "host/record_database.h"
#include "phonebook/phonebook_state.h"
#include "tests/support/component_test.h"

#include <utility>

namespace {

constexpr const char* window = "LanFax Add Recipient Window";

const std::string windowHidden = lines({R"(set "LanFax Add Recipient Window" Visibility off)"});

// The dialog's fields in the order in which they are filled, with the recipient's fields.
constexpr std::pair<const char*, const char*> fields[] = {
    {"RecipientNumber", "RecipientFaxNumber"},          {"RecipientName", "RecipientName"},
    {"RecipientOrganization", "RecipientOrganization"}, {"RecipientTelNumber", "RecipientPhone"},
    {"RecipientEmailAddr", "RecipientEmail"},           {"RecipientMailbox", "RecipientMailbox"},
};

const std::string fieldsEmptied = lines({
    R"(set "RecipientNumber" WidgetText "")",
    R"(set "RecipientName" WidgetText "")",
    R"(set "RecipientOrganization" WidgetText "")",
    R"(set "RecipientTelNumber" WidgetText "")",
    R"(set "RecipientEmailAddr" WidgetText "")",
    R"(set "RecipientMailbox" WidgetText "")",
    R"(set "LanFax Add Recipient Window" Visibility on)",
});

/// What checking the name and the number asks of the host.
std::string checked(const std::string& name, const std::string& number)
{
    return lines({R"(get "RecipientName" Value -> )" + fake::quoted(name),
                  "validateName " + fake::quoted(name) + R"( "- ." -> accepted)",
                  R"(get "RecipientNumber" Value -> )" + fake::quoted(number),
                  "validatePhoneNumber " + fake::quoted(number) + R"( "- ( ) /" -> accepted)"});
}

} // namespace

class RecipientDialogTest : public StartedComponentTest {
protected:
    RecipientDialogTest() { host.copiesUntranslated = true; }

    void open() { host.press("AddFaxRcpt"); }

    void enter(const std::string& name, const std::string& number)
    {
        host.type("RecipientName", name);
        host.type("RecipientNumber", number);
    }

    void ok() { host.press("LanFaxAddRcpt OK Button"); }

    void add(const std::string& name, const std::string& number)
    {
        open();
        enter(name, number);
        ok();
    }

    /// Selects a row of the job's list and opens the dialog to edit it.
    Tarvik40FaxRecipient* edit(int row)
    {
        job().updatePBEntryList(RECIPIENT_LIST);
        host.setSelection("LanFax Recipient List", {row});
        editCurrentRecipient = 1;
        Tarvik40FaxRecipient* current = job().getCurrentFaxRecipient(RECIPIENT_LIST);
        job().invokeRecipientInfoUI(current);
        host.journal.clear();
        return current;
    }

    Tarvik40FaxRecipient* recipient(int n) { return job().getFaxRecipientN(n, RECIPIENT_LIST); }
    int count() { return job().getRecipientListCount(RECIPIENT_LIST); }
    bool isOpen() { return host.visible(window); }
    bool errorShown() { return host.visible("LanFax Add Recipient Error Window"); }
};

// --- Opening ---------------------------------------------------------------------------------

TEST_F(RecipientDialogTest, OpensEmptyUnderItsTitle)
{
    for (auto [widget, key] : fields)
        host.setText(widget, "left over");
    open();
    EXPECT_EQ(host.journal.calls(),
              lines({R"(translate "Add Fax Recipient" -> none)",
                     R"(set "LanFax Add Recipient Window" Title "Add Fax Recipient")"}) +
                  fieldsEmptied);
}

TEST_F(RecipientDialogTest, ItsTitleIsTranslated)
{
    host.translations["Add Fax Recipient"] = "Ajouter";
    open();
    EXPECT_EQ(host.title(window), "Ajouter");
}

TEST_F(RecipientDialogTest, ItsTitleIsEnglishOnAHostThatLeavesTheBufferAlone)
{
    host.copiesUntranslated = false;
    open();
    EXPECT_EQ(host.title(window), "Add Fax Recipient");
}

TEST_F(RecipientDialogTest, OpeningLeavesThePhonebookBoxAsItIs)
{
    open();
    host.tick("AddtoPersonalPB");
    host.press("LanFaxAddRcpt Cancel Button");
    open();
    EXPECT_TRUE(host.ticked("AddtoPersonalPB"));
}

TEST_F(RecipientDialogTest, IsFilledFromARecipientInAFixedOrder)
{
    auto anne = makeRecipient("Anne", "555-1");
    anne->setRecipientData("RecipientOrganization", "Acme");
    anne->setRecipientData("RecipientMailbox", "12");
    EXPECT_TRUE(job().invokeRecipientInfoUI(anne.get()));
    EXPECT_EQ(
        host.journal.effects(),
        lines({R"(set "RecipientNumber" WidgetText "555-1")", R"(set "RecipientName" WidgetText "Anne")",
               R"(set "RecipientOrganization" WidgetText "Acme")",
               R"(set "RecipientTelNumber" WidgetText "")", R"(set "RecipientEmailAddr" WidgetText "")",
               R"(set "RecipientMailbox" WidgetText "12")",
               R"(set "LanFax Add Recipient Window" Visibility on)"}));
}

TEST_F(RecipientDialogTest, IsEmptiedForNoRecipient)
{
    EXPECT_TRUE(job().invokeRecipientInfoUI(nullptr));
    EXPECT_EQ(host.journal.effects(), fieldsEmptied);
}

// --- Adding ----------------------------------------------------------------------------------

TEST_F(RecipientDialogTest, OkCallsTheHostInThisOrder)
{
    open();
    enter("Anne", "555-1234");
    host.journal.clear();
    ok();
    EXPECT_EQ(host.journal.calls(),
              checked("Anne", "555-1234") + checked("Anne", "555-1234") +
                  lines({
                      R"(get "RecipientOrganization" Value -> "")",
                      R"(get "RecipientTelNumber" Value -> "")",
                      R"(get "RecipientEmailAddr" Value -> "")",
                      R"(get "RecipientMailbox" Value -> "")",
                      R"(get "LanFax Recipient List" Value -> -1)",
                      R"(set "LanFax Details Button" Sensitivity off)",
                      R"(set "LanFax Save Entry Button" Sensitivity off)",
                      R"(set "LanFax Remove Button" Sensitivity off)",
                      R"(set "LanFax Save Group Button" Sensitivity on)",
                      R"(clearRows "LanFax Recipient List")",
                      R"(addRow "LanFax Recipient List" "Anne" "555-1234" empty empty empty empty)",
                      R"(get "AddtoPersonalPB" Value -> off)",
                  }) +
                  windowHidden);
}

TEST_F(RecipientDialogTest, EveryFieldReachesTheRecipient)
{
    open();
    enter("Anne", "(555) 12-34");
    host.type("RecipientOrganization", "Acme");
    host.type("RecipientTelNumber", "777");
    host.type("RecipientEmailAddr", "a@b");
    host.type("RecipientMailbox", "12");
    ok();
    ASSERT_EQ(count(), 1);
    EXPECT_EQ(recipient(0)->getRecipientType(), 1);
    EXPECT_EQ(field(recipient(0), "RecipientName"), "Anne");
    EXPECT_EQ(field(recipient(0), "RecipientFaxNumber"), "(555) 12-34");
    EXPECT_EQ(field(recipient(0), "RecipientOrganization"), "Acme");
    EXPECT_EQ(field(recipient(0), "RecipientPhone"), "777");
    EXPECT_EQ(field(recipient(0), "RecipientEmail"), "a@b");
    EXPECT_EQ(field(recipient(0), "RecipientMailbox"), "12");
    EXPECT_EQ(dialledNumber(recipient(0)), "5551234");
    EXPECT_FALSE(isOpen());
}

TEST_F(RecipientDialogTest, EmptyFieldsStayEmptyInTheRecipient)
{
    add("Anne", "1");
    for (const char* key : {"RecipientOrganization", "RecipientPhone", "RecipientEmail", "RecipientMailbox"})
        EXPECT_EQ(recipient(0)->getRecipientData(key), nullptr) << key;
}

TEST_F(RecipientDialogTest, RecipientsAreAppended)
{
    add("Carla", "1");
    add("Anne", "2");
    EXPECT_EQ(host.names("LanFax Recipient List"), (std::vector<std::string>{"Carla", "Anne"}));
}

TEST_F(RecipientDialogTest, AnEmptyNameAndNumberOnlyAskForTheName)
{
    open();
    ok();
    EXPECT_TRUE(errorShown());
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"),
              "The Name is a required field\nPlease enter a Name.");
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(isOpen());
}

TEST_F(RecipientDialogTest, AnEmptyNumberIsAskedForAndTheFieldsStay)
{
    open();
    host.type("RecipientName", "Anne");
    host.type("RecipientOrganization", "Acme");
    ok();
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"),
              "The Fax Number is a required field\nPlease enter a Fax Number.");
    EXPECT_EQ(host.text("RecipientName"), "Anne");
    EXPECT_EQ(host.text("RecipientOrganization"), "Acme");
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(isOpen());
}

TEST_F(RecipientDialogTest, ARejectedNumberIsEmptiedAndNothingStored)
{
    open();
    enter("Anne", "call me");
    ok();
    EXPECT_TRUE(errorShown());
    EXPECT_EQ(host.text("RecipientNumber"), "");
    EXPECT_EQ(host.text("RecipientName"), "Anne");
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(isOpen());
}

TEST_F(RecipientDialogTest, StoringChecksByItselfToo)
{
    EXPECT_EQ((host.setText("RecipientName", ""), T40AddFaxRecipient()), 0);
    EXPECT_TRUE(errorShown());
    host.setText("RecipientName", "Anne");
    host.setText("RecipientNumber", "1");
    EXPECT_EQ(T40AddFaxRecipient(), 1);
    EXPECT_EQ(count(), 1);
}

TEST_F(RecipientDialogTest, ARejectedPhoneNumberIsSilentlyDroppedAndTheRecipientStored)
{
    open();
    enter("Anne", "1");
    host.type("RecipientTelNumber", "call me");
    host.type("RecipientEmailAddr", "a@b");
    ok();
    ASSERT_EQ(count(), 1);
    EXPECT_EQ(recipient(0)->getRecipientData("RecipientPhone"), nullptr);
    EXPECT_EQ(field(recipient(0), "RecipientEmail"), "a@b");
    EXPECT_EQ(host.text("RecipientTelNumber"), "");
    EXPECT_FALSE(errorShown());
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(host.journal.count(R"(validatePhoneNumber "call me" "- ( ) /")"), 1);
}

TEST_F(RecipientDialogTest, AFieldThatCannotBeReadIsEmptyAndDoesNotRepeatTheOneBefore)
{
    open();
    enter("Anne", "1");
    host.type("RecipientOrganization", "Acme");
    host.type("RecipientEmailAddr", "a@b");
    host.faults.failOn(fake::Op::readProperty, "RecipientEmailAddr");
    ok();
    EXPECT_EQ(field(recipient(0), "RecipientOrganization"), "Acme");
    EXPECT_EQ(recipient(0)->getRecipientData("RecipientEmail"), nullptr);
    EXPECT_EQ(recipient(0)->getRecipientData("RecipientMailbox"), nullptr);
}

TEST_F(RecipientDialogTest, LongTextsAreTakenAsTheHostHandsThemOver)
{
    open();
    host.setText("RecipientName", longText(6000));
    host.setText("RecipientNumber", std::string(6000, '5'));
    for (const char* widget : {"RecipientOrganization", "RecipientEmailAddr", "RecipientMailbox"})
        host.setText(widget, longText(6000));
    host.setText("RecipientTelNumber", std::string(6000, '7'));
    ok();
    ASSERT_EQ(count(), 1);
    EXPECT_EQ(field(recipient(0), "RecipientName"), longText(4095));
    EXPECT_EQ(field(recipient(0), "RecipientFaxNumber"), std::string(4095, '5'));
    EXPECT_EQ(field(recipient(0), "RecipientOrganization"), longText(4095));
    EXPECT_EQ(field(recipient(0), "RecipientPhone"), std::string(4095, '7'));
    EXPECT_EQ(field(recipient(0), "RecipientEmail"), longText(4095));
    EXPECT_EQ(field(recipient(0), "RecipientMailbox"), longText(4095));
}

// --- Duplicates ------------------------------------------------------------------------------

class DuplicateRecipientTest : public RecipientDialogTest {
protected:
    DuplicateRecipientTest()
    {
        add("Anne", "555-1234");
        add("Anne", "555-1234");
    }
};

TEST_F(DuplicateRecipientTest, IsAskedAboutWithTheDialogOpen)
{
    EXPECT_EQ(host.openQuestions(),
              std::vector<std::string>{"Name:   Anne\r\nFax Number:   555-1234\r\n\n"
                                       "This Recipient already exists in your Recipient List.\r\n"
                                       "Do you want to add a duplicate of this Recipient?"});
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(isOpen());
}

TEST_F(DuplicateRecipientTest, IsAddedOnYes)
{
    host.journal.clear();
    host.answer(true);
    EXPECT_EQ(count(), 2);
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_TRUE(host.journal.effects().ends_with(windowHidden + lines({"closeQuestion"})));
}

TEST_F(DuplicateRecipientTest, IsNotAddedOnNoAndTheDialogStaysAsItIs)
{
    host.journal.clear();
    host.answer(false);
    EXPECT_EQ(host.journal.all(), lines({"closeQuestion"}));
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(host.text("RecipientName"), "Anne");
    EXPECT_EQ(host.text("RecipientNumber"), "555-1234");
}

TEST_F(DuplicateRecipientTest, OnlyMinusEightIsAYes)
{
    for (int response : {-9, -7, -4, -1, 0, 1, 8}) {
        DupAddRcptResponseCB(nullptr, response);
        EXPECT_EQ(count(), 1) << response;
    }
    DupAddRcptResponseCB(nullptr, -8);
    EXPECT_EQ(count(), 2);
}

TEST_F(DuplicateRecipientTest, AYesReadsTheFieldsOfThatMoment)
{
    host.type("RecipientName", "Bernard");
    host.answer(true);
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Bernard"}));
}

TEST_F(DuplicateRecipientTest, AYesChecksTheFieldsOfThatMoment)
{
    host.type("RecipientName", "");
    host.answer(true);
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(errorShown());
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(RecipientDialogTest, WithThePreferenceOffADuplicateIsAddedWithoutAQuestion)
{
    host.tick("LanFax Pref Duplicates", false);
    add("Anne", "1");
    add("Anne", "1");
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(RecipientDialogTest, NameAndNumberThatJoinToTheSameKeyAreADuplicate)
{
    add("Anne", "5551234");
    add("Anne5", "551234");
    EXPECT_EQ(host.openQuestions().size(), 1U);
    EXPECT_EQ(count(), 1);
}

TEST_F(RecipientDialogTest, ARecipientAmongThePicksIsADuplicate)
{
    addPick("Anne", "1");
    add("Anne", "1");
    EXPECT_EQ(host.openQuestions().size(), 1U);
    EXPECT_EQ(count(), 0);
}

// --- Editing ---------------------------------------------------------------------------------

class EditedRecipientTest : public RecipientDialogTest {
protected:
    EditedRecipientTest()
    {
        addRecipient("Anne", "1");
        addRecipient("Bernard", "2")->setRecipientData("RecipientOrganization", "Acme");
        recipient(1)->setRecipientData("RecipientPhone", "777");
        current = edit(1);
    }

    Tarvik40FaxRecipient* current;
};

TEST_F(EditedRecipientTest, IsChangedInPlace)
{
    enter("Bernd", "(0) 3-4");
    host.type("RecipientMailbox", "12");
    ok();
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(recipient(1), current);
    EXPECT_EQ(field(current, "RecipientName"), "Bernd");
    EXPECT_EQ(field(current, "RecipientFaxNumber"), "(0) 3-4");
    EXPECT_EQ(field(current, "RecipientMailbox"), "12");
    EXPECT_EQ(dialledNumber(current), "034");
    EXPECT_EQ(host.names("LanFax Recipient List"), (std::vector<std::string>{"Anne", "Bernd"}));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(editCurrentRecipient, 0);
}

TEST_F(EditedRecipientTest, KeepsWhatTheUserCleared)
{
    host.type("RecipientOrganization", "");
    host.type("RecipientTelNumber", "");
    ok();
    EXPECT_EQ(field(current, "RecipientOrganization"), "Acme");
    EXPECT_EQ(field(current, "RecipientPhone"), "777");
}

TEST_F(EditedRecipientTest, KeepsItsPhoneNumberWhenTheNewOneIsRejected)
{
    host.type("RecipientTelNumber", "call me");
    ok();
    EXPECT_EQ(field(current, "RecipientPhone"), "777");
    EXPECT_EQ(host.text("RecipientTelNumber"), "");
}

TEST_F(EditedRecipientTest, IsNotAskedAboutAsADuplicate)
{
    enter("Anne", "1");
    ok();
    EXPECT_TRUE(host.openQuestions().empty());
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Anne"}));
}

TEST_F(EditedRecipientTest, BecomesASingleRecipient)
{
    current->setRecipientType(GROUP_RECIPIENT);
    ok();
    EXPECT_EQ(current->getRecipientType(), 1);
}

TEST_F(EditedRecipientTest, StaysEditedWhenAFieldIsRefused)
{
    host.type("RecipientName", "");
    ok();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(editCurrentRecipient, 1);
    EXPECT_EQ(field(current, "RecipientName"), "Bernard");
}

TEST_F(EditedRecipientTest, IsTheOneSelectedAtTheMomentOfOk)
{
    host.setSelection("LanFax Recipient List", {0});
    ok();
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Bernard", "Bernard"}));
}

TEST_F(EditedRecipientTest, OpeningTheDialogToAddDoesNotEndTheEditing)
{
    open();
    EXPECT_EQ(editCurrentRecipient, 1);
    enter("Carla", "3");
    ok();
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Carla"}));
    EXPECT_EQ(editCurrentRecipient, 0);
}

TEST_F(EditedRecipientTest, StoresNothingWithoutASelectionAndLeavesTheDialogOpen)
{
    host.setSelection("LanFax Recipient List", {});
    enter("Carla", "3");
    EXPECT_EQ(T40AddFaxRecipient(), 0);
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Bernard"}));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(host.journal.effects(), "");
}

TEST_F(EditedRecipientTest, AnOkWithoutASelectionStoresNothingAndLeavesTheDialogOpen)
{
    host.setSelection("LanFax Recipient List", {});
    enter("Carla", "3");
    ok();
    EXPECT_EQ(jobNames(), (std::vector<std::string>{"Anne", "Bernard"}));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(editCurrentRecipient, 0);
}

// --- The phonebook ---------------------------------------------------------------------------

TEST_F(RecipientDialogTest, TickingThePhonebookBoxWritesTheNewRecipientAndUnticksIt)
{
    open();
    enter("Anne", "1");
    host.tick("AddtoPersonalPB");
    host.journal.clear();
    ok();
    const std::string effects = host.journal.effects();
    EXPECT_TRUE(effects.ends_with(
        lines({"saveRecord \"uAnne\" " + fake::quoted(".susg\r\n0\r\n.eusg\r\n.snam\r\nAnne\r\n.enam\r\n"
                                                      ".sfxn\r\n1\r\n.efxn\r\n"),
               "serializeDatabase", R"(set "AddtoPersonalPB" Value off)",
               R"(set "AddtoPersonalPB" Sensitivity on)", R"(set "AddtoPersonalPB" Visibility on)"}) +
        windowHidden))
        << effects;
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(host.ticked("AddtoPersonalPB"));
}

TEST_F(RecipientDialogTest, WithoutTheBoxNothingIsWritten)
{
    add("Anne", "1");
    EXPECT_TRUE(host.savedRecords.empty());
    EXPECT_EQ(host.journal.count("set \"AddtoPersonalPB\""), 0);
}

TEST_F(RecipientDialogTest, ABoxThatCannotBeReadIsNotTicked)
{
    open();
    enter("Anne", "1");
    host.tick("AddtoPersonalPB");
    host.faults.failOn(fake::Op::readProperty, "AddtoPersonalPB");
    ok();
    EXPECT_TRUE(host.savedRecords.empty());
    EXPECT_EQ(count(), 1);
}

TEST_F(RecipientDialogTest, APhonebookThatCannotBeWrittenIsNotReported)
{
    open();
    enter("Anne", "1");
    host.tick("AddtoPersonalPB");
    host.faults.fail(fake::Op::saveRecord);
    ok();
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(errorShown());
    EXPECT_FALSE(host.ticked("AddtoPersonalPB"));
}

TEST_F(RecipientDialogTest, AMissingPhonebookIsNotReported)
{
    delete std::exchange(personalPBDatabase, nullptr);
    open();
    enter("Anne", "1");
    host.tick("AddtoPersonalPB");
    ok();
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(errorShown());
}

TEST_F(EditedRecipientTest, IsWrittenToThePhonebookWithItsChanges)
{
    host.tick("AddtoPersonalPB");
    host.type("RecipientName", "Bernd");
    ok();
    ASSERT_EQ(host.savedRecords.size(), 1U);
    EXPECT_EQ(host.savedRecords[0].key, "uBernd");
    EXPECT_EQ(host.savedRecords[0].data,
              ".susg\r\n0\r\n.eusg\r\n.snam\r\nBernd\r\n.enam\r\n.sfxn\r\n2\r\n.efxn\r\n"
              ".scmp\r\nAcme\r\n.ecmp\r\n.svon\r\n777\r\n.evon\r\n");
}

// --- Cancelling ------------------------------------------------------------------------------

TEST_F(EditedRecipientTest, CancelEndsTheEditingAndStoresNothing)
{
    for (bool fromFrame : {false, true}) {
        edit(1);
        enter("Carla", "3");
        host.tick("AddtoPersonalPB");
        if (fromFrame)
            host.close(window);
        else
            host.press("LanFaxAddRcpt Cancel Button");
        EXPECT_EQ(host.journal.all(), windowHidden);
        EXPECT_EQ(editCurrentRecipient, 0);
        EXPECT_EQ(field(current, "RecipientName"), "Bernard");
        EXPECT_TRUE(host.ticked("AddtoPersonalPB"));
    }
}
