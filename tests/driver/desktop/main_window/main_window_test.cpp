// Tests of the main window on a display, over the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/main_window.h"

#include "driver/core/callbacks.h"
#include "driver/widgets/widget_tree.h"
#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gmock/gmock.h>
#include <gtkmm/application.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace quelm {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

std::string titleOf(const std::string& name)
{
    const gchar* title = gtk_window_get_title(GTK_WINDOW(onScreen(name)));
    return title == nullptr ? "" : title;
}

/// While it lives, the process can open no more files than it has.
class NoMoreFiles {
public:
    NoMoreFiles()
    {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const FileHandle next(::dup(STDIN_FILENO));
        const rlimit none{static_cast<rlim_t>(next.get()), before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;

private:
    rlimit before_ = {};
};

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
    EXPECT_THAT(sendAndRead(), HasSubstr("Device 127.0.0.1:1"));
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

TEST_F(MainWindowTest, TheJobIsOfTheDocumentThatTheQuestionWasAskedFor)
{
    openDocument();
    fillFax({"Ann"});
    const auto other = writeFile(folder / "other.ps", "%!PS\n(another letter) show showpage\n");
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    askToReplace();
    window->openDocument(other);
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("The fax job of letter.ps for 1 recipient was written"));
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(MainWindowTest, AFailureAfterTheQuestionIsToldInOneLine)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    // The bar's picture is read before no more files can be opened.
    window->tell(Gtk::MESSAGE_ERROR, "a message");
    loopUntilIdle();
    askToReplace();
    {
        const NoMoreFiles none;
        press("Main Replace Question Yes");
        ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    }
    EXPECT_THAT(shownText("Main Message"), HasSubstr("The job cannot be put together"));
    EXPECT_EQ(job(), "precious");
    enterText("Main Destination File", folder / "another.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

TEST_F(MainWindowTest, QuestionsBearTheWindowsTitle)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    askToReplace();
    EXPECT_EQ(titleOf("Main Replace Question"), window->get_title());
    press("Main Replace Question No");
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    window->close();
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Quit Question") != nullptr; }));
    EXPECT_EQ(titleOf("Main Quit Question"), window->get_title());
}

TEST_F(MainWindowTest, AFifoThatNobodyReadsDoesNotHoldUpTheWindow)
{
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fifo");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    press("Main Cancel Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("cancelled"));
    EXPECT_TRUE(isUsable("Main Send Button"));
}

TEST_F(MainWindowTest, TheDocumentItselfIsNeverReplaced)
{
    const auto path = writeFile(folder / "own.ps", contentOf(sampleLetter()));
    openDocument(path);
    fillFax({"Ann"});
    enterText("Main Destination File", path);
    EXPECT_THAT(sendAndRead(), HasSubstr("is the document itself"));
    EXPECT_EQ(contentOf(path), contentOf(sampleLetter()));
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

// --- Names that are not UTF-8 ------------------------------------------------------------------------

TEST_F(MainWindowTest, ADocumentOfAnyNameIsShown)
{
    openDocument(writeFile(folder / "\xff\xfe.ps", contentOf(sampleLetter())));
    EXPECT_EQ(shownText("Main Document Name"), "\uFFFD\uFFFD.ps");
    GtkWidget* name = onScreen("Main Document Name");
    const std::unique_ptr<gchar, decltype(&g_free)> path(gtk_widget_get_tooltip_text(name), g_free);
    EXPECT_EQ(std::string(path.get()), folder / "\uFFFD\uFFFD.ps");
    EXPECT_TRUE(loopUntil(
        [] { return spokenNameOf(onScreen("Main Document Page")) == "The first page of \uFFFD\uFFFD.ps"; }));
    EXPECT_THAT(std::string(window->get_title()), testing::StartsWith("\uFFFD\uFFFD.ps "));
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("The fax job of \uFFFD\uFFFD.ps for 1 recipient was written to "));
}

TEST_F(MainWindowTest, AMissingDocumentOfAnyNameIsTold)
{
    window->openDocument(folder / "no\xff\xfe.ps");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("no\uFFFD\uFFFD.ps"));
}

TEST_F(MainWindowTest, WhatGhostscriptSaysInOtherBytesIsShown)
{
    openDocument(writeFile(folder / "odd.ps", "%!PS\n\xff\xfe_unknown\n"));
    ASSERT_TRUE(loopUntil([] { return shownText("Main Document Trouble") != ""; }));
    EXPECT_THAT(shownText("Main Document Trouble"), HasSubstr("\uFFFD\uFFFD_unknown"));
    fillFax({"Ann"});
    press("Main Preview Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Preview Trouble") != ""; }));
    EXPECT_THAT(shownText("Preview Trouble"), HasSubstr("\uFFFD\uFFFD_unknown"));
    press("Preview Close Button");
}

TEST_F(MainWindowTest, AChosenFileOfAnyNameIsTheOneThatIsWritten)
{
    const std::string place = folder / "\xff\xfe";
    std::filesystem::create_directory(place);
    openDocument();
    fillFax({"Ann"});
    chooseFile(place, "fax.job");
    EXPECT_STREQ(gtk_entry_get_text(GTK_ENTRY(onScreen("Main Destination File"))),
                 (folder / "\uFFFD\uFFFD/fax.job").c_str());
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
    EXPECT_EQ(contentOf(place + "/fax.job"), expectedJob());

    // Another name in the field is another file.
    enterText("Main Destination File", folder / "typed.job");
    sendAndRead();
    EXPECT_EQ(contentOf(folder / "typed.job"), expectedJob());
}

TEST_F(MainWindowTest, AFileOfAnyNameStaysWhenTheChooserIsLeftAsItBegan)
{
    const std::string path = writeFile(folder / "\xff\xfe.job", "precious");
    openDocument();
    fillFax({"Ann"});
    press("Main Choose File Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main File Chooser") != nullptr; }));
    gtk_file_chooser_set_filename(GTK_FILE_CHOOSER(onScreen("Main File Chooser")), path.c_str());
    // The chooser gives the marked file for itself, not its name, while the list has the keyboard; the list
    // may come late, and the chooser take the keyboard back when it does.
    ASSERT_TRUE(loopUntil([&] {
        forEachWidget([](GtkWidget* widget) {
            if (GTK_IS_TREE_VIEW(widget) && gtk_widget_get_mapped(widget) != FALSE)
                gtk_widget_grab_focus(widget);
        });
        return names(onScreen("Main File Chooser"), path);
    }));
    acceptChosenFile(path);
    press("Main Choose File Button");
    acceptChosenFile(folder / "\uFFFD\uFFFD.job");
    askToReplace();
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_EQ(contentOf(path), expectedJob());
}

// --- Messages ----------------------------------------------------------------------------------------

TEST_F(MainWindowTest, MessagesBesideOneAnotherStandInLinesTheWorstFirst)
{
    const auto typeOfBar = [] {
        return gtk_info_bar_get_message_type(GTK_INFO_BAR(onScreen("Main Message Bar")));
    };
    window->tellBeside(Gtk::MESSAGE_WARNING, "a warning");
    EXPECT_EQ(typeOfBar(), GTK_MESSAGE_WARNING);
    window->tellBeside(Gtk::MESSAGE_ERROR, "an error");
    window->tellBeside(Gtk::MESSAGE_WARNING, "another\nwarning");
    EXPECT_EQ(shownText("Main Message"), "An error\nA warning\nAnother warning");
    EXPECT_EQ(typeOfBar(), GTK_MESSAGE_ERROR);
    window->tell(Gtk::MESSAGE_INFO, "all of it again");
    EXPECT_EQ(shownText("Main Message"), "All of it again");
    EXPECT_EQ(typeOfBar(), GTK_MESSAGE_INFO);
    press("Main Message Close Button");
    window->tellBeside(Gtk::MESSAGE_WARNING, "a warning");
    EXPECT_EQ(shownText("Main Message"), "A warning");
}

TEST_F(MainWindowTest, WhatWasToldWhileADocumentIsOpenedStaysBesideItsTrouble)
{
    window->openDocument(writeFile(folder / "letter.txt", "Dear Ann\n"));
    window->tellBeside(Gtk::MESSAGE_WARNING, "a warning");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != "A warning"; }));
    EXPECT_THAT(shownText("Main Message"), AllOf(HasSubstr("neither PostScript"), HasSubstr("\nA warning")));
}

// --- The window's height -----------------------------------------------------------------------------

TEST_F(MainWindowTest, AMessageTakesItsHeightWithIt)
{
    const int before = height();
    window->tell(Gtk::MESSAGE_INFO, std::string(300, 'x'));
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    press("Main Message Close Button");
    EXPECT_TRUE(loopUntil([&] { return height() == before; }));
}

TEST_F(MainWindowTest, AShorterMessageTakesTheHeightOfALongerOneWithIt)
{
    const int before = height();
    window->tell(Gtk::MESSAGE_INFO, std::string(1000, 'x'));
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    window->tell(Gtk::MESSAGE_INFO, "x");
    loopUntilIdle();
    press("Main Message Close Button");
    EXPECT_TRUE(loopUntil([&] { return height() == before; }));
}

TEST_F(MainWindowTest, ASendingTakesItsHeightWithIt)
{
    const int before = height();
    openDocument();
    fillFax({"Ann"});
    servers::PrintListener device(servers::Manner::neverCloses);
    sendTo(device);
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    press("Main Cancel Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    press("Main Message Close Button");
    EXPECT_TRUE(loopUntil([&] { return height() == before; }));
}

TEST_F(MainWindowTest, AHeightThatTheUserChoseStays)
{
    const int before = height();
    window->tell(Gtk::MESSAGE_INFO, "a message");
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    const int chosen = height() + 100;
    window->resize(window->get_allocated_width(), chosen);
    ASSERT_TRUE(loopUntil([&] { return height() == chosen; }));
    press("Main Message Close Button");
    // What the window is asked for after the message is gone comes behind anything that closing it asked.
    window->resize(window->get_allocated_width() + 40, chosen);
    const int wide = window->get_allocated_width() + 40;
    ASSERT_TRUE(loopUntil([&] { return window->get_allocated_width() == wide; }));
    EXPECT_EQ(height(), chosen);
}

TEST_F(MainWindowTest, TheHeightOfAMessageIsNotKeptUntilTheNextTime)
{
    const int before = height();
    window->tell(Gtk::MESSAGE_INFO, std::string(300, 'x'));
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    window->closeAtOnce();
    EXPECT_THAT(contentOf(folder / "config/desktop.conf"),
                HasSubstr("\nheight=" + std::to_string(before) + "\n"));
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
