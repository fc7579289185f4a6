// The fax component itself in a driver without a screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/component_library.h"
#include "driver/store/record_store.h"
#include "driver/widgets/widget_tree.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

namespace {

class Writer : public AbstractPDLWriter {
public:
    bool writeText(const char* part) override
    {
        text += part;
        return true;
    }
    void writeString(const std::string& part) override { text += part; }
    std::string text;
};

/// A user named ann at the component's dialogs.
class RealComponentTest : public DriverTest {
protected:
    RealComponentTest() : DriverTest(build_paths::componentLibrary()) {}

    void openFaxDialog() { driver().call("T40InvokeFaxDialog"); }

    void addRecipient(const std::string& name, const std::string& number)
    {
        driver().press("AddFaxRcpt");
        driver().type("RecipientName", name);
        driver().type("RecipientNumber", number);
        driver().press("LanFaxAddRcpt OK Button");
    }

    std::vector<std::string> names(const char* list)
    {
        std::vector<std::string> found;
        for (const auto& row : driver().rows(list))
            found.push_back(row.at(0));
        return found;
    }

    bool isOpen(const std::string& window)
    {
        const std::vector<std::string> open = driver().windows();
        return std::find(open.begin(), open.end(), window) != open.end();
    }
};

using Names = std::vector<std::string>;

TEST_F(RealComponentTest, StartsWithAllItsWindowsHiddenAndAPhonebookOfTheUser)
{
    EXPECT_EQ(driver().windows(), Names());
    EXPECT_EQ(driver().widgets().windows().size(), 10U); // nine dialogs and the main window
    EXPECT_TRUE(std::filesystem::exists(options.home + "/db/phonebook/user/ann.xdb"));
    EXPECT_EQ(driver().show("LanFax Personal PB Name").text, options.home + "/db/phonebook/user/ann.xdb");
    EXPECT_EQ(driver().component().exportList().size(), 50U);
    EXPECT_NE(driver().resource("FaxSession"), nullptr);
}

TEST_F(RealComponentTest, AUserAddsARecipient)
{
    openFaxDialog();
    EXPECT_TRUE(isOpen("Lan Fax Window"));
    addRecipient("Ann", "555-1234");
    EXPECT_EQ(names("LanFax Recipient List"), (Names{"Ann"}));
    EXPECT_FALSE(isOpen("LanFax Add Recipient Window"));
}

TEST_F(RealComponentTest, ADuplicateIsAskedAboutAndAddedOnYes)
{
    openFaxDialog();
    addRecipient("Ann", "555-1234");
    addRecipient("Ann", "555-1234");
    ASSERT_TRUE(driver().pendingQuestion());
    EXPECT_EQ(driver().pendingQuestion()->kind, 3);
    EXPECT_EQ(driver().pendingQuestion()->text,
              "Name:   Ann\r\nFax Number:   555-1234\r\n\nThis Recipient already exists in your Recipient "
              "List.\r\nDo you want to add a duplicate of this Recipient?");
    driver().answer(true);
    EXPECT_EQ(names("LanFax Recipient List"), (Names{"Ann", "Ann"}));
}

TEST_F(RealComponentTest, WithoutThePreferenceNobodyAsks)
{
    openFaxDialog();
    driver().tick("LanFax Pref Duplicates", false);
    addRecipient("Ann", "555-1234");
    addRecipient("Ann", "555-1234");
    EXPECT_FALSE(driver().pendingQuestion());
    EXPECT_EQ(names("LanFax Recipient List"), (Names{"Ann", "Ann"}));
}

TEST_F(RealComponentTest, SelectedRowsAreRemovedTogether)
{
    openFaxDialog();
    driver().tick("LanFax Pref Remove One", false);
    for (const char* name : {"Ann", "Bob", "Cid", "Dan", "Eve"})
        addRecipient(name, "555");
    driver().select("LanFax Recipient List", {3, 1});
    EXPECT_FALSE(driver().show("LanFax Details Button").sensitive);
    driver().press("LanFax Remove Button");
    EXPECT_EQ(names("LanFax Recipient List"), (Names{"Ann", "Cid", "Eve"}));
}

TEST_F(RealComponentTest, ARefusedEntryShowsItsReasonOverTwoLines)
{
    openFaxDialog();
    addRecipient("", "555");
    EXPECT_TRUE(isOpen("LanFax Add Recipient Error Window"));
    EXPECT_EQ(driver().show("LanFax Add Fax Rcpt Error Label").text,
              "The Name is a required field\nPlease enter a Name.");
}

TEST_F(RealComponentTest, TheDefaultsButtonPutsOptionsBack)
{
    openFaxDialog();
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().type("LanFax Cover Sheet Notes", "Call me");
    driver().choose("LanFax Send Speed", 0);
    driver().call("LanFaxOptionsTabDefaults");
    EXPECT_EQ(driver().show("LanFax Cover Sheet Option").value, 0);
    EXPECT_EQ(driver().show("LanFax Cover Sheet Notes").text, "");
    EXPECT_FALSE(driver().show("LanFax Cover Sheet Notes").sensitive);
    EXPECT_EQ(driver().show("LanFax Send Speed").value, 2);
}

TEST_F(RealComponentTest, CancellingTheCoverSheetDialogPutsItsOptionsBack)
{
    openFaxDialog();
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().press("LanFax Setup Cover Sheet Button");
    driver().tick("Show Rcpt Info Checkbox", true);
    driver().choose("Show Rcpt Info", 1);
    driver().type("Cover Sheet Custom Text", "Everyone");
    driver().press("LanFaxCover Cancel Button");
    EXPECT_EQ(driver().show("Show Rcpt Info Checkbox").ticked, false);
    EXPECT_EQ(driver().show("Show Rcpt Info").value, 0);
    EXPECT_EQ(driver().show("Cover Sheet Custom Text").text, "");
    EXPECT_FALSE(driver().show("Show Custom Text").sensitive);
}

TEST_F(RealComponentTest, TheSenderSummaryShowsOneLineForEachField)
{
    openFaxDialog();
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().press("LanFax Setup Cover Sheet Button");
    driver().tick("Show Sender Info Checkbox", true);
    driver().press("Sender Properties Button");
    driver().type("Sender Fax Number", "555");
    driver().type("Sender Fax Name", "Ann");
    driver().press("LanFaxSender OK Button");
    EXPECT_EQ(driver().show("Sender Info").text, "555\nAnn\n\n\n\n");
}

TEST_F(RealComponentTest, AnEntrySavedToThePhonebookCanBePickedFromIt)
{
    openFaxDialog();
    driver().press("AddFaxRcpt");
    driver().type("RecipientName", "Ann");
    driver().type("RecipientNumber", "555");
    driver().tick("AddtoPersonalPB", true);
    driver().press("LanFaxAddRcpt OK Button");
    driver().press("AddPBFaxRcpt");
    ASSERT_EQ(names("Fax PB List"), (Names{"Ann"}));
    driver().select("Fax PB List", {0});
    driver().press("Add Button");
    driver().answer(true);
    EXPECT_EQ(names("Fax Cur Recipient List"), (Names{"Ann"}));
    driver().press("LanFaxRcptPB OK Button");
    EXPECT_EQ(names("LanFax Recipient List"), (Names{"Ann", "Ann"}));
}

TEST_F(RealComponentTest, ASharedPhonebookIsChosenInAFileChooser)
{
    openFaxDialog();
    driver().press("Select Shared PB Button");
    EXPECT_TRUE(isOpen("SharedPBSelectFileDialog"));
    EXPECT_EQ(driver().show("SharedPBSelectFileDialog").text, options.home + "/db/phonebook/*.xdb");
    driver().type("SharedPBSelectFileDialog", "/books/shared.xdb");
    driver().press("SharedPBSelectFileDialog");
    EXPECT_FALSE(isOpen("SharedPBSelectFileDialog"));
    EXPECT_EQ(driver().show("LanFax Shared PB Name").text, "/books/shared.xdb");
}

TEST_F(RealComponentTest, ClosingTheRecipientPropertiesHidesThemThoughNobodyProvidesTheirCallback)
{
    driver().widgets().find("LanFax Recipient Properties Window")->setVisible(true);
    driver().closeWindow("LanFax Recipient Properties Window");
    EXPECT_EQ(driver().windows(), Names());
    EXPECT_EQ(driver().failedCallbacks(), 0);
}

TEST_F(RealComponentTest, AJobWithoutRecipientsIsRefusedAndTheDialogShown)
{
    EXPECT_FALSE(driver().faxSession().checkInfo());
    EXPECT_TRUE(isOpen("Lan Fax Window"));
}

TEST_F(RealComponentTest, AJobIsWrittenInTheChosenForm)
{
    openFaxDialog();
    addRecipient("Ann", "555-1234");
    driver().press("LanFax OK Button");
    EXPECT_TRUE(driver().faxSession().checkInfo());
    EXPECT_FALSE(driver().faxSession().coverPageChosen());
    driver().faxSession().setPdl(quelm::Pdl::pjl);
    Writer writer;
    EXPECT_TRUE(driver().faxSession().serializeJob(writer));
    EXPECT_NE(writer.text.find("@PJL COMMENT "), std::string::npos) << writer.text;
    EXPECT_NE(writer.text.find("OID_ATT_FAX_DESTINATION_PHONE"), std::string::npos) << writer.text;
}

TEST_F(RealComponentTest, StartingItAgainKeepsTheDialogsAsTheyAre)
{
    driver().call("InitializeFaxComponent");
    EXPECT_EQ(driver().widgets().windows().size(), 10U);
    openFaxDialog();
    addRecipient("Ann", "555");
    EXPECT_EQ(names("LanFax Recipient List"), (Names{"Ann"}));
}

TEST_F(RealComponentTest, EveryFunctionOfTheExportListCanBeCalledOutOfTheBlue)
{
    writeFile(options.home + "/fennodial", "");
    for (const std::string& name : driver().component().exportList()) {
        if (name == "T40LanFaxPreferencesCB")
            continue; // needs the box that fired; refused, as another test says
        driver().call(name);
        while (driver().pendingQuestion())
            driver().answer(true);
    }
    EXPECT_EQ(driver().failedCallbacks(), 0);
}

TEST_F(RealComponentTest, AThousandRecipientsAreListedInTheirOrder)
{
    openFaxDialog();
    constexpr int count = 1000;
    for (int number = 0; number < count; ++number)
        addRecipient("Recipient " + std::to_string(number), "555-" + std::to_string(number));
    const auto rows = driver().rows("LanFax Recipient List");
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(rows[999], (std::vector<std::string>{"Recipient 999", "555-999", "", "", "", ""}));
}

TEST_F(RealComponentTest, AnEntryThatCouldNotBeReadAgainIsNotSavedAndThePhonebookStaysReadable)
{
    const LogCapture log;
    openFaxDialog();
    const auto saveEntry = [&](const std::string& name, const std::string& organization) {
        driver().press("AddFaxRcpt");
        driver().type("RecipientName", name);
        driver().type("RecipientNumber", "555");
        driver().type("RecipientOrganization", organization);
        driver().tick("AddtoPersonalPB", true);
        driver().press("LanFaxAddRcpt OK Button");
    };
    saveEntry("Ann", " ");
    saveEntry("Bob", "Acme");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_NE(log.messages[0].find("\"Ann\" was not saved to the phonebook"), std::string::npos);
    EXPECT_NE(log.messages[0].find("its field \"organization\" is blank"), std::string::npos);
    driver().press("AddPBFaxRcpt");
    EXPECT_EQ(names("Fax PB List"), (Names{"Bob"}));
    EXPECT_EQ(driver().failedCallbacks(), 0);
}

TEST_F(RealComponentTest, ARecordThatCannotBeReadHidesNoOther)
{
    const LogCapture log;
    {
        quelm::RecordStore store(options.home + "/db/phonebook/user/ann.xdb",
                                 quelm::RecordStore::Access::readWrite);
        store.save({"uBad", ".susg\r\n0\r\n.eusg\r\n.scmp\r\n \r\n.ecmp\r\n"});
        store.save({"uBob", ".susg\r\n0\r\n.eusg\r\n.snam\r\nBob\r\n.enam\r\n.sfxn\r\n5\r\n.efxn\r\n"});
        store.commit();
    }
    openFaxDialog();
    driver().press("AddPBFaxRcpt");
    EXPECT_EQ(names("Fax PB List"), (Names{"Bob"}));
    driver().select("Fax PB List", {0});
    driver().press("Add Button");
    EXPECT_EQ(names("Fax Cur Recipient List"), (Names{"Bob"}));
    EXPECT_EQ(driver().failedCallbacks(), 0);
    EXPECT_EQ(log.messages.size(), 1U);
}

TEST(RealComponentStart, APhonebookThatIsNoneIsNamedAndLeftAsItIs)
{
    const LogCapture log;
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "db/phonebook/user");
    const std::string phonebook = writeFile(folder / "db/phonebook/user/ann.xdb", "not a phonebook");
    quelm::DriverOptions options;
    options.home = folder.path();
    options.user = "ann";
    options.component = build_paths::componentLibrary();
    options.configDirectory = folder / "config";
    try {
        const quelm::Driver driver(options);
        FAIL() << "started";
    } catch (const quelm::Error& error) {
        EXPECT_NE(std::string(error.what()).find("cannot start"), std::string::npos) << error.what();
        EXPECT_NE(std::string(error.what()).find(phonebook), std::string::npos) << error.what();
    }
    EXPECT_EQ(contentOf(phonebook), "not a phonebook");
}

} // namespace
