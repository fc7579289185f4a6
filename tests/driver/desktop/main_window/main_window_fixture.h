// The main window on a display, over the real component, and a person in front of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DESKTOP_MAIN_WINDOW_MAIN_WINDOW_FIXTURE_H
#define TESTS_DRIVER_DESKTOP_MAIN_WINDOW_MAIN_WINDOW_FIXTURE_H

#include "base/clock.h"
#include "driver/config/installation.h"
#include "driver/core/user_actions.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/desktop/main_window/main_window.h"
#include "tests/driver/desktop/main_loop.h"
#include "tests/driver/desktop/on_screen.h"
#include "tests/driver/desktop/toolkit.h"
#include "tests/servers/print_listener.h"
#include "tests/support/build_paths.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

// The rows of "Main Destination Kind".
inline constexpr int fileItem = 0;
inline constexpr int deviceItem = 1;
inline constexpr int queueItem = 2;

/// The document that the tests send.
inline std::string sampleLetter() { return build_paths::inProject("samples/letter.ps"); }

/// Takes a job as one text.
class TextSink final : public JobSink {
public:
    void write(std::string_view bytes) override { text += bytes; }
    std::string text;
};

class MainWindowTest : public testing::Test {
protected:
    /// `now` is the fixed clock; empty: the system's.
    explicit MainWindowTest(const std::string& now = "2024-03-05T14:07")
    {
        // Nothing listens there: the queues of this computer are left alone.
        usePrintServer("127.0.0.1:1");
        // No timer of the user who runs the tests; Ghostscript is there.
        writeFile(folder / "systemctl", "#!/bin/sh\nexit 1\n");
        std::filesystem::permissions(folder / "systemctl", std::filesystem::perms::owner_all);
        ::setenv("PATH", (folder.path().string() + ":" + std::getenv("PATH")).c_str(), 1);
        options.home = folder.path();
        options.user = "ann";
        options.component = build_paths::componentLibrary();
        options.configDirectory = folder / "config";
        options.now = now;
        std::filesystem::create_symlink(build_paths::inProject("docs/help"), folder / "help");
        std::filesystem::create_symlink(build_paths::inProject("icon"), folder / "icon");
        driver = std::make_unique<Driver>(options);
        open();
    }
    ~MainWindowTest() override { close(); }

    void open()
    {
        window = std::make_unique<MainWindow>(
            *driver, MainWindowOptions{Pdl::dsc, folder / "config/desktop.conf", "the program 1.0", outbox(),
                                       destinations, destination});
        dialogs = std::make_unique<DialogWindows>(*driver, *window);
        window->connectDialogs(*dialogs);
        window->setClosed([this] { closed = true; });
        window->present();
        EXPECT_TRUE(loopUntil([this] { return window->get_mapped(); }));
    }
    /// What the next window offers of the configuration.
    std::vector<NamedTarget> destinations;
    std::string destination;
    /// The user's outbox.
    OutboxSettings outbox() const { return {folder / "outbox"}; }

    void close()
    {
        dialogs.reset();
        window.reset();
        loopUntilIdle();
    }

    /// Ends the program and starts it again.
    void restart()
    {
        close();
        driver.reset();
        driver = std::make_unique<Driver>(options);
        open();
    }

    /// The same, with these kept option values.
    void restartWith(const std::string& features)
    {
        close();
        driver.reset();
        const std::filesystem::path kept = featureFilePath(options.configDirectory, options.user);
        std::filesystem::create_directories(kept.parent_path());
        writeFile(kept, features);
        driver = std::make_unique<Driver>(options);
        open();
    }

    /// Chooses when the fax is to go out, on the 12-hour clock, in the fax dialog.
    void sendAt(int hour, int minute, bool isAfternoon)
    {
        driver->call("T40InvokeFaxDialog");
        driver->choose("LanFax Send Time", 1);
        driver->choose("SendAtHr", hour);
        driver->choose("SendAtMin", minute);
        driver->choose("SendAtAmPm", isAfternoon ? 1 : 0);
        driver->press("LanFax OK Button");
        settle();
    }

    /// Adds somebody whom no fax can be sent to.
    void addBadRecipient()
    {
        driver->call("T40InvokeFaxDialog");
        driver->press("AddFaxRcpt");
        driver->type("RecipientName", "Mal");
        driver->type("RecipientNumber", "1");
        driver->type("RecipientMailbox", "\";");
        driver->press("LanFaxAddRcpt OK Button");
        driver->press("LanFax OK Button");
        settle();
    }

    /// Closes the window, stays when that is asked about, and closes it once more.
    void quitBehindAQuestion()
    {
        for (const std::string answer : {"No", "Yes"}) {
            EXPECT_FALSE(closed);
            window->close();
            ASSERT_TRUE(loopUntil([&] { return onScreen("Main Quit Question " + answer) != nullptr; }));
            EXPECT_FALSE(closed);
            press("Main Quit Question " + answer);
        }
        EXPECT_TRUE(loopUntil([this] { return closed; }));
    }

    /// Lets the window follow what was done to the dialogs.
    void settle()
    {
        bool isOver = false;
        dialogs->act([&isOver] { isOver = true; });
        EXPECT_TRUE(loopUntil([&isOver] { return isOver; }));
        loopUntilIdle();
    }

    /// To be called while the destination is no queue: these are listed on a thread of their own.
    static void usePrintServer(const std::string& address)
    {
        ::setenv("CUPS_SERVER", address.c_str(), 1);
        ::unsetenv("LPDEST");
        ::unsetenv("PRINTER");
    }

    void openDocument(const std::string& path = sampleLetter())
    {
        window->openDocument(path);
        EXPECT_TRUE(loopUntil([] { return isUsable("Main Open Button") && isUsable("Main Send Button"); }));
    }

    /// Adds recipients through the component's dialogs, and perhaps a cover sheet that names them.
    void fillFax(const std::vector<std::string>& names, bool cover = false)
    {
        driver->call("T40InvokeFaxDialog");
        for (const auto& name : names) {
            driver->press("AddFaxRcpt");
            driver->type("RecipientName", name);
            driver->type("RecipientNumber", "555-123" + std::to_string(++numbersGiven));
            driver->press("LanFaxAddRcpt OK Button");
        }
        if (cover) {
            driver->choose("LanFax Cover Sheet Option", 1);
            driver->press("LanFax Setup Cover Sheet Button");
            driver->tick("Show Rcpt Info Checkbox", true);
            driver->press("LanFaxCover OK Button");
        }
        driver->press("LanFax OK Button");
        dialogs->act([] {});
        EXPECT_TRUE(loopUntil([] { return shownText("Main Fax Summary") != "No recipients yet"; }));
    }

    void press(const std::string& button)
    {
        pressButton(button);
        loopUntilIdle();
    }

    /// Presses "Send", and returns what is told then.
    std::string sendAndRead()
    {
        press("Main Send Button");
        EXPECT_TRUE(
            loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
        return shownText("Main Message");
    }

    /// Presses "Send" for a file that exists.
    void askToReplace()
    {
        press("Main Send Button");
        ASSERT_TRUE(loopUntil([] { return onScreen("Main Replace Question Yes") != nullptr; }));
    }

    /// Chooses a file for the job through the file chooser.
    void chooseFile(const std::string& place, const std::string& name)
    {
        press("Main Choose File Button");
        ASSERT_TRUE(loopUntil([] { return onScreen("Main File Chooser") != nullptr; }));
        GtkWidget* dialog = onScreen("Main File Chooser");
        gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), place.c_str());
        gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), name.c_str());
        acceptChosenFile(place + "/" + name);
    }

    /// Whether a file chooser names the path.
    static bool names(GtkWidget* dialog, const std::string& path)
    {
        const std::unique_ptr<gchar, decltype(&g_free)> chosen(
            gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog)), g_free);
        return chosen && chosen.get() == path;
    }

    /// Waits until the file chooser names the path, and takes it.
    static void acceptChosenFile(const std::string& path)
    {
        ASSERT_TRUE(loopUntil([] { return onScreen("Main File Chooser") != nullptr; }));
        GtkWidget* dialog = onScreen("Main File Chooser");
        ASSERT_TRUE(loopUntil([&] { return names(dialog, path); }));
        gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
        // The chooser looks into the folder before it answers.
        ASSERT_TRUE(loopUntil([] { return onScreen("Main File Chooser") == nullptr; }));
    }

    /// Of the window's content, as it stands on the screen.
    int height() const { return window->get_allocated_height(); }

    /// Whether the window has no more room than it needs.
    bool isAtLeastHeight() const
    {
        Gtk::Requisition least;
        Gtk::Requisition natural;
        window->get_preferred_size(least, natural);
        return height() == least.height;
    }

    /// The window's height once it is so: what comes makes it higher.
    int leastHeight()
    {
        window->resize(window->get_allocated_width(), 1);
        EXPECT_TRUE(loopUntil([this] { return isAtLeastHeight(); }));
        return height();
    }

    /// Starts sending to a device.
    void sendTo(const servers::PrintListener& device)
    {
        chooseItem("Main Destination Kind", deviceItem);
        enterText("Main Destination Device", "127.0.0.1:" + std::to_string(device.port()));
        press("Main Send Button");
    }

    /// The job as it would be written now.
    std::string expectedJob(Pdl pdl = Pdl::dsc)
    {
        TextSink sink;
        JobFacts facts;
        facts.creator = "the program 1.0";
        facts.now = localTime();
        writeFaxJob(driver->faxSession(), Document::open(sampleLetter()), pdl, sink, facts);
        return sink.text;
    }

    std::string job() const { return contentOf(folder / "fax.job"); }

    Toolkit toolkit;
    KeptVariable searchPath{"PATH"};
    TemporaryFolder folder;
    DriverOptions options;
    std::unique_ptr<Driver> driver;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DialogWindows> dialogs;
    bool closed = false;
    int numbersGiven = 0; ///< every recipient has a number of its own
};

} // namespace quelm

#endif
