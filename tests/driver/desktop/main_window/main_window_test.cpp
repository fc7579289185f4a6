// Tests of the main window on a display, over the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/main_window.h"

#include "driver/core/callbacks.h"
#include "driver/widgets/widget_tree.h"
#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <memory>

namespace quelm {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

// --- What is on the screen ---------------------------------------------------------------------------

/// A document that fails only where its pages are really drawn.
std::string failingWhenDrawn(const std::string& command)
{
    return "%!PS\ncurrentpagedevice /OutputDevice get /nullpage ne { " + command + " } if showpage\n";
}

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

TEST_F(MainWindowTest, ADocumentThatFailsIsToldWithItsPageAndNotTaken)
{
    window->openDocument(writeFile(folder / "odd.ps", "%!PS\nshowpage unknownoperator showpage\n"));
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"),
                HasSubstr("page 2 cannot be faxed: it uses a command that is not known "
                          "(PostScript error /undefined in unknownoperator)"));
    EXPECT_FALSE(isUsable("Main Send Button"));
    EXPECT_EQ(shownText("Main Document Name"), "No document");
}

TEST_F(MainWindowTest, ADocumentThatCannotBeDrawnCanStillBeSent)
{
    openDocument(writeFile(folder / "odd.ps", failingWhenDrawn("unknownoperator")));
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

TEST_F(MainWindowTest, TheSummarySaysWhatWillGoBeforeAnyDialogIsConfirmed)
{
    driver->call("T40InvokeFaxDialog");
    driver->choose("LanFax Cover Sheet Option", 1);
    driver->tick("LanFax Credit Card", true);
    driver->type("LanFax Credit Card Info", "4111 1111 1111 2345");
    driver->press("AddFaxRcpt");
    driver->type("RecipientName", "Ann");
    driver->type("RecipientNumber", "555-1234");
    driver->press("LanFaxAddRcpt OK Button");
    driver->press("LanFax Cancel Button");
    dialogs->act([] {});
    EXPECT_TRUE(loopUntil([] {
        return shownText("Main Fax Summary") ==
               "1 recipient, with a cover page; the credit card ending in 2345 is charged";
    }));
}

TEST_F(MainWindowTest, FaxSetupOpensTheFaxDialog)
{
    press("Main Fax Setup Button");
    EXPECT_TRUE(loopUntil([] { return onScreen("LanFax OK Button") != nullptr; }));
    EXPECT_THAT(driver->windows(), ElementsAre("Lan Fax Window"));
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
    openDocument(writeFile(folder / "odd.ps", failingWhenDrawn("\xff\xfe_unknown")));
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

TEST_F(MainWindowTest, TheNameThatTheChooserBeginsWithIsNotCompleted)
{
    writeFile(folder / "fax.job.old", "another");
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fax.job");
    press("Main Choose File Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main File Chooser") != nullptr; }));
    GtkEntry* name = nullptr;
    ASSERT_TRUE(loopUntil([&] {
        forEachWidget([&](GtkWidget* widget) {
            if (GTK_IS_ENTRY(widget) && gtk_widget_has_focus(widget))
                name = GTK_ENTRY(widget);
        });
        return name != nullptr;
    })) << "the field takes the keyboard when its window has it";
    GtkEntryCompletion* completion = gtk_entry_get_completion(name);
    ASSERT_NE(completion, nullptr);
    const auto offered = [&] {
        gtk_entry_completion_complete(completion);
        const std::unique_ptr<gchar, decltype(&g_free)> prefix(
            gtk_entry_completion_compute_prefix(completion, "fax.job"), g_free);
        return prefix && std::string(prefix.get()) == "fax.job.old";
    };
    ASSERT_TRUE(loopUntil(offered)) << "the folder's files are known to the field";
    // What the toolkit does when the folder was read after the field took the keyboard.
    gtk_entry_completion_insert_prefix(completion);
    EXPECT_STREQ(gtk_entry_get_text(name), "fax.job");

    // What a person types, and the key that completes it.
    gtk_entry_set_text(name, "fax.j");
    gtk_entry_completion_complete(completion);
    gtk_entry_completion_insert_prefix(completion);
    EXPECT_STREQ(gtk_entry_get_text(name), "fax.job.old");

    gtk_entry_set_text(name, "fax.job");
    acceptChosenFile(folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
    EXPECT_EQ(contentOf(folder / "fax.job.old"), "another");
    EXPECT_EQ(job(), expectedJob());
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

TEST_F(MainWindowTest, OfManyMessagesTheOldestOfTheLightestGo)
{
    window->tellBeside(Gtk::MESSAGE_ERROR, "an error");
    for (int i = 1; i <= 12; ++i)
        window->tellBeside(Gtk::MESSAGE_INFO, "job " + std::to_string(i));
    const auto shown = shownText("Main Message");
    EXPECT_THAT(shown, testing::StartsWith("An error\nJob 4\nJob 5\n"));
    EXPECT_THAT(shown, testing::EndsWith("\nJob 12\nThere were 3 more messages."));
    press("Main Message Close Button");
    window->tellBeside(Gtk::MESSAGE_INFO, "a message");
    EXPECT_EQ(shownText("Main Message"), "A message");
}

// --- The window's height -----------------------------------------------------------------------------

TEST_F(MainWindowTest, AMessageTakesItsHeightWithIt)
{
    const int before = leastHeight();
    window->tell(Gtk::MESSAGE_INFO, std::string(300, 'x'));
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    press("Main Message Close Button");
    EXPECT_TRUE(loopUntil([&] { return height() == before; }));
}

TEST_F(MainWindowTest, AShorterMessageTakesTheHeightOfALongerOneWithIt)
{
    const int before = leastHeight();
    window->tell(Gtk::MESSAGE_INFO, std::string(1000, 'x'));
    ASSERT_TRUE(loopUntil([&] { return height() > before; }));
    window->tell(Gtk::MESSAGE_INFO, "x");
    loopUntilIdle();
    press("Main Message Close Button");
    EXPECT_TRUE(loopUntil([&] { return height() == before; }));
}

TEST_F(MainWindowTest, ASendingTakesItsHeightWithIt)
{
    openDocument();
    fillFax({"Ann"});
    ASSERT_TRUE(loopUntil([] { return shownText("Main Document Pages") != ""; }));
    const int before = leastHeight();
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
    const int before = leastHeight();
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
    const int before = leastHeight();
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
