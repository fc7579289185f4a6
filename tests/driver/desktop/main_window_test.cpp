// Tests of the main window on a display, over the real component.
#include "driver/desktop/main_window.h"

#include "driver/core/callbacks.h"
#include "driver/core/widget_tree.h"
#include "tests/driver/desktop/main_window_fixture.h"

#include <gmock/gmock.h>
#include <gtkmm/application.h>

#include <functional>
#include <map>
#include <set>

namespace quelm {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

// --- What is on the screen ---------------------------------------------------------------------------

TEST_F(MainWindowTest, EveryControlHasItsFixedNameAndOneToBeReadAloud)
{
    for (const int kind : {fileItem, deviceItem, queueItem}) {
        chooseItem("Main Destination Kind", kind);
        loopUntilIdle();
        forEachWidget([](GtkWidget* widget) {
            const bool control = GTK_IS_BUTTON(widget) || GTK_IS_ENTRY(widget) || GTK_IS_COMBO_BOX(widget);
            const bool inside = gtk_widget_get_ancestor(widget, GTK_TYPE_COMBO_BOX) != nullptr &&
                                !GTK_IS_COMBO_BOX(widget) && !GTK_IS_ENTRY(widget);
            if (!control || inside || gtk_widget_get_mapped(widget) == FALSE)
                return;
            EXPECT_THAT(descriptionOf(widget), HasSubstr("Main ")) << spokenNameOf(widget);
            EXPECT_NE(spokenNameOf(widget), "") << descriptionOf(widget);
        });
    }
}

TEST_F(MainWindowTest, NoTwoControlsShareAKey)
{
    for (const int kind : {fileItem, deviceItem, queueItem}) {
        chooseItem("Main Destination Kind", kind);
        loopUntilIdle();
        // Those of the menus.
        std::multiset<guint> keys{GDK_KEY_f, GDK_KEY_a, GDK_KEY_h};
        forEachWidget([&keys](GtkWidget* widget) {
            if (GTK_IS_LABEL(widget) && gtk_widget_get_mapped(widget) != FALSE &&
                gtk_widget_get_ancestor(widget, GTK_TYPE_MENU_BAR) == nullptr)
                keys.insert(gtk_label_get_mnemonic_keyval(GTK_LABEL(widget)));
        });
        keys.erase(GDK_KEY_VoidSymbol);
        EXPECT_GE(keys.size(), 11U);
        for (const guint key : keys)
            EXPECT_EQ(keys.count(key), 1U) << gdk_keyval_name(key);
    }
}

TEST_F(MainWindowTest, WithoutADocumentNothingCanBeSent)
{
    EXPECT_EQ(shownText("Main Document Name"), "No document");
    EXPECT_FALSE(isUsable("Main Send Button"));
    EXPECT_FALSE(isUsable("Main Preview Button"));
    EXPECT_TRUE(isUsable("Main Open Button"));
    EXPECT_TRUE(isUsable("Main Fax Setup Button"));
}

// --- The document ------------------------------------------------------------------------------------

TEST_F(MainWindowTest, AnOpenDocumentIsShownWithItsPages)
{
    openDocument();
    EXPECT_EQ(shownText("Main Document Name"), "letter.ps");
    EXPECT_TRUE(loopUntil([] { return shownText("Main Document Pages") == "2 pages"; }));
    EXPECT_TRUE(loopUntil(
        [] { return spokenNameOf(onScreen("Main Document Page")) == "The first page of letter.ps"; }));
    EXPECT_THAT(std::string(window->get_title()), HasSubstr("letter.ps"));
}

TEST_F(MainWindowTest, ADocumentThatCannotBeOpenedIsToldInOneLine)
{
    window->openDocument(writeFile(folder / "notes.txt", "notes"));
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("neither PostScript nor PDF"));
    EXPECT_FALSE(isUsable("Main Send Button"));
    EXPECT_EQ(shownText("Main Document Name"), "No document");
}

TEST_F(MainWindowTest, ADocumentThatCannotBeDrawnCanStillBeSent)
{
    openDocument(writeFile(folder / "odd.ps", "%!PS\nunknownoperator\n"));
    ASSERT_TRUE(loopUntil([] { return shownText("Main Document Trouble") != ""; }));
    EXPECT_THAT(shownText("Main Document Trouble"), HasSubstr("undefined in unknownoperator"));
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

// --- The fax -----------------------------------------------------------------------------------------

TEST_F(MainWindowTest, TheSummaryFollowsTheFaxDialog)
{
    EXPECT_EQ(shownText("Main Fax Summary"), "No recipients yet");
    fillFax({"Ann"});
    EXPECT_EQ(shownText("Main Fax Summary"), "1 recipient, without a cover page");
    fillFax({"Bob"}, true);
    EXPECT_TRUE(loopUntil([] { return shownText("Main Fax Summary") == "2 recipients, with a cover page"; }));
}

TEST_F(MainWindowTest, FaxSetupOpensTheFaxDialog)
{
    press("Main Fax Setup Button");
    EXPECT_TRUE(loopUntil([] { return onScreen("LanFax OK Button") != nullptr; }));
    EXPECT_THAT(driver->windows(), ElementsAre("Lan Fax Window"));
}

TEST_F(MainWindowTest, WithoutARecipientTheFaxDialogOpensInsteadOfSending)
{
    openDocument();
    enterText("Main Destination File", folder / "fax.job");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("LanFax OK Button") != nullptr; }));
    EXPECT_EQ(shownText("Main Message"), "Add a recipient first.");
    fillFax({"Ann"});
    EXPECT_EQ(shownText("Main Message"), "");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
}

// --- Sending -----------------------------------------------------------------------------------------

TEST_F(MainWindowTest, TheJobIsWhatTheDriverWrites)
{
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_EQ(sendAndRead(),
              "The fax job of letter.ps for 2 recipients was written to " + (folder / "fax.job") + ".");
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(MainWindowTest, AJobInPjlIsToo)
{
    openDocument();
    fillFax({"Ann"});
    chooseItem("Main Job Format", 1);
    enterText("Main Destination File", folder / "fax.job");
    sendAndRead();
    EXPECT_EQ(job(), expectedJob(Pdl::pjl));
    EXPECT_THAT(job(), HasSubstr("@PJL COMMENT OID_ATT_"));
}

TEST_F(MainWindowTest, PreviewsAndEarlierJobsLeaveNoTraceInAJob)
{
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    press("Main Preview Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Preview Caption") == "Cover page (1 of 3)"; }));
    press("Preview Close Button");
    for (const auto* name : {"first.job", "second.job"}) {
        enterText("Main Destination File", folder / name);
        sendAndRead();
    }
    EXPECT_EQ(contentOf(folder / "first.job"), contentOf(folder / "second.job"));
    EXPECT_EQ(contentOf(folder / "second.job"), expectedJob());
}

TEST_F(MainWindowTest, AMissingDestinationIsAskedFor)
{
    openDocument();
    fillFax({"Ann"});
    EXPECT_THAT(sendAndRead(), HasSubstr("Name the file"));
    chooseItem("Main Destination Kind", deviceItem);
    EXPECT_THAT(sendAndRead(), HasSubstr("Name the device"));
    chooseItem("Main Destination Kind", queueItem);
    EXPECT_THAT(sendAndRead(), HasSubstr("Choose the print queue"));
}

TEST_F(MainWindowTest, AFailureIsToldInOneLineAndCanBePutRight)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "no such folder/fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("no such folder"));
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

TEST_F(MainWindowTest, ADeviceIsToldApartFromAnAddressThatIsNone)
{
    openDocument();
    fillFax({"Ann"});
    chooseItem("Main Destination Kind", deviceItem);
    enterText("Main Destination Device", "a b:c");
    EXPECT_THAT(sendAndRead(), HasSubstr("\"a b:c\" is no address"));
    enterText("Main Destination Device", "127.0.0.1:1");
    EXPECT_THAT(sendAndRead(), HasSubstr("device 127.0.0.1:1"));
}

TEST_F(MainWindowTest, AFileIsReplacedOnlyAfterAQuestion)
{
    openDocument();
    fillFax({"Ann"});
    const auto path = writeFile(folder / "fax.job", "precious");
    enterText("Main Destination File", path);
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Replace Question No") != nullptr; }));
    press("Main Replace Question No");
    EXPECT_EQ(job(), "precious");
    EXPECT_TRUE(isUsable("Main Send Button"));

    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Replace Question Yes") != nullptr; }));
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(MainWindowTest, TheDocumentItselfIsNeverReplaced)
{
    const auto path = writeFile(folder / "own.ps", contentOf(LETTER));
    openDocument(path);
    fillFax({"Ann"});
    enterText("Main Destination File", path);
    EXPECT_THAT(sendAndRead(), HasSubstr("is the document itself"));
    EXPECT_EQ(contentOf(path), contentOf(LETTER));
}

TEST_F(MainWindowTest, ADeviceGetsTheJobByteForByte)
{
    servers::PrintListener device(servers::Manner::takesAll);
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("for 2 recipients was handed over to"));
    EXPECT_EQ(device.received(), expectedJob());
    EXPECT_EQ(onScreen("Main Progress"), nullptr);
}

TEST_F(MainWindowTest, ASendingCanBeCancelled)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    for (const auto* control : {"Main Send Button", "Main Preview Button", "Main Open Button",
                                "Main Fax Setup Button", "Main Destination Device"})
        EXPECT_FALSE(isUsable(control)) << control;
    press("Main Cancel Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("cancelled"));
    EXPECT_TRUE(isUsable("Main Send Button"));
    EXPECT_EQ(onScreen("Main Progress"), nullptr);
}

TEST_F(MainWindowTest, ClosingTheWindowWhileAJobIsSentAsksFirst)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    for (const std::string answer : {"No", "Yes"}) {
        EXPECT_FALSE(closed);
        window->close();
        ASSERT_TRUE(loopUntil([&] { return onScreen("Main Quit Question " + answer) != nullptr; }));
        EXPECT_FALSE(closed);
        press("Main Quit Question " + answer);
    }
    EXPECT_TRUE(closed);
}

// --- Choices, help and end ---------------------------------------------------------------------------

TEST_F(MainWindowTest, ChoicesAreKeptUntilTheNextTime)
{
    chooseItem("Main Destination Kind", deviceItem);
    enterText("Main Destination Device", " fax.example ");
    chooseItem("Main Job Format", 1);
    window->closeAtOnce();
    EXPECT_TRUE(closed);
    close();
    open();
    EXPECT_TRUE(isUsable("Main Destination Device"));
    EXPECT_STREQ(gtk_entry_get_text(GTK_ENTRY(onScreen("Main Destination Device"))), "fax.example");
    EXPECT_EQ(gtk_combo_box_get_active(GTK_COMBO_BOX(onScreen("Main Job Format"))), 1);
}

TEST_F(MainWindowTest, AFormThatWasNotChosenHereFollowsTheConfiguration)
{
    window->closeAtOnce();
    EXPECT_THAT(contentOf(folder / "config/desktop.conf"), testing::Not(HasSubstr("pdl")));
}

TEST_F(MainWindowTest, ClosingTheWindowEndsTheProgram)
{
    window->close();
    EXPECT_TRUE(loopUntil([this] { return closed; }));
}

TEST_F(MainWindowTest, HelpShowsTheSectionOfThePlaceItIsAskedFrom)
{
    driver->callbacks().setHelp([this](const std::string& topic) {
        window->showHelp(topic, placesAround(driver->callbacks().helpButton()));
    });
    std::map<std::string, std::string> sections;
    for (const auto& dialog : driver->widgets().windows()) {
        if (!dialog->isWindow())
            continue;
        dialog->setVisible(true);
        const std::function<void(Widget&)> pressHelp = [&](Widget& widget) {
            if (widget.attribute("HelpTopic") != nullptr) {
                driver->actions().press(widget);
                const auto places = placesAround(driver->callbacks().helpButton());
                EXPECT_THAT(places, Contains(dialog->name()));
                GtkWidget* help = onScreen("Help Text");
                ASSERT_NE(help, nullptr);
                sections[places.at(2)] = window->helpSection();
            }
            for (const auto& child : widget.children())
                pressHelp(*child);
        };
        pressHelp(*dialog);
        dialog->setVisible(false);
    }
    EXPECT_EQ(sections, (std::map<std::string, std::string>{
                            {"LanFax Recipients Tab", "Fax Recipients"},
                            {"LanFax Options Tab", "Fax Options"},
                            {"LanFax Preferences Tab", "Preferences"},
                            {"LanFax Add Recipient Window", "Adding a recipient"},
                            {"LanFax Recipient Properties Window", "A picked recipient's properties"},
                            {"Cover Sheet Setup Window", "Setting up the cover sheet"},
                            {"Sender Information Window", "The sender"},
                            {"Add Rcpt From PB Window", "Adding from a phonebook"},
                            {"LanFax Add Group Window", "Saving a group"},
                        }));
}

TEST_F(MainWindowTest, HelpSpeaksTheUsersLanguage)
{
    ::setenv("LANGUAGE", "de_AT:de", 1);
    window->showHelp("LanFax", {"LanFax Options Tab"});
    ::unsetenv("LANGUAGE");
    EXPECT_EQ(window->helpSection(), "Faxoptionen");
}

TEST_F(MainWindowTest, HelpOnAnUnknownTopicSaysSo)
{
    window->showHelp("../etc/passwd", {});
    EXPECT_THAT(window->helpSection(), HasSubstr("no help on"));
}

} // namespace
} // namespace quelm

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    gtk_disable_setlocale();
    const auto application = Gtk::Application::create("net.quelm.Tests", Gio::APPLICATION_NON_UNIQUE);
    application->register_application();
    return RUN_ALL_TESTS();
}
