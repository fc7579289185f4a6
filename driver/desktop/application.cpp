// Brings driver, windows and main loop together.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/application.h"

#include "base/error.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/config/installation.h"
#include "driver/core/callbacks.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/desktop/dialogs/program_wait.h"
#include "driver/desktop/main_window/main_window.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/pictures.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/desktop/toolkit/style.h"
#include "driver/desktop/window_log.h"

#include <glib-unix.h>
#include <glibmm/markup.h>
#include <gtk/gtk.h>
#include <gtkmm/application.h>
#include <gtkmm/label.h>
#include <gtkmm/main.h>
#include <gtkmm/messagedialog.h>

#include <clocale>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quelm {
namespace {

constexpr int marginOfMessage = 12;

/// False when there is no display. The toolkit would set all of the process's locale, numbers in print
/// streams included, and end the program in its own way then.
bool openDisplay()
{
    if (gdk_display_get_default() != nullptr)
        return true;
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_MESSAGES, "");
    gtk_disable_setlocale();
    // Wayland takes the windows' class from the one, X from the other, whose first letter would be a capital.
    g_set_prgname(desktopId);
    if (gtk_init_check(nullptr, nullptr) == FALSE)
        return false;
    gdk_set_program_class(desktopId);
    return true;
}

/// Beside the user's kept options.
std::string choicesFile(const DriverOptions& options)
{
    const std::filesystem::path features = featureFilePath(options.configDirectory, "user");
    return features.parent_path().parent_path() / "desktop.conf";
}

Gtk::MessageType messageType(Severity severity)
{
    return severity == Severity::error ? Gtk::MESSAGE_ERROR : Gtk::MESSAGE_WARNING;
}

/// Closes a window on a signal from outside, as long as it lives itself.
class SignalsClose {
public:
    explicit SignalsClose(std::function<void()> close) : close_(std::move(close))
    {
        for (auto& [signal, source] : sources_)
            source = g_unix_signal_add(signal, &SignalsClose::close, this);
    }
    ~SignalsClose()
    {
        for (const auto& [signal, source] : sources_)
            g_source_remove(source);
    }
    SignalsClose(const SignalsClose&) = delete;
    SignalsClose& operator=(const SignalsClose&) = delete;

private:
    static gboolean close(gpointer self)
    {
        static_cast<SignalsClose*>(self)->close_();
        return G_SOURCE_CONTINUE;
    }

    std::function<void()> close_;
    std::vector<std::pair<int, guint>> sources_{{SIGINT, 0}, {SIGTERM, 0}, {SIGHUP, 0}};
};

void addAccelerators(Gtk::Application& application)
{
    application.set_accels_for_action("win.open", {"<Primary>o"});
    application.set_accels_for_action("win.preview", {"<Primary>r"});
    application.set_accels_for_action("win.send", {"<Primary>Return", "<Primary>p"});
    application.set_accels_for_action("win.fax-setup", {"<Primary>f"});
    application.set_accels_for_action("win.help", {"F1"});
    application.set_accels_for_action("win.quit", {"<Primary>q"});
}

} // namespace

void runDesktop(const DesktopOptions& options)
{
    if (!openDisplay())
        throw Error(
            localized("no display can be opened; start quelm-desktop on a desktop, or use quelm-driver fax"));
    WindowLog log;
    Driver driver(options.driver);
    // Each window is a driver of its own: two may fax two documents.
    const auto application = Gtk::Application::create(desktopId, Gio::APPLICATION_NON_UNIQUE);
    application->signal_startup().connect([&application] {
        application->set_menubar(MainWindow::menu());
        addAccelerators(*application.operator->());
    });
    MainWindowOptions windowOptions{options.pdl,    choicesFile(options.driver), options.creator,
                                    options.outbox, options.destinations,        options.destination};
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<SignalsClose> signals;
    std::unique_ptr<DialogWindows> dialogs;
    ProgramWait waiting;
    driver.setProgramWaiting([&waiting](pid_t program) { return waiting.forProgram(program); });
    application->signal_activate().connect([&] {
        window = std::make_unique<MainWindow>(driver, windowOptions);
        signals = std::make_unique<SignalsClose>([&window] { window->closeAtOnce(); });
        dialogs = std::make_unique<DialogWindows>(driver, *window);
        window->connectDialogs(*dialogs);
        window->setClosed([&application, &waiting] {
            waiting.giveUp();
            application->quit();
        });
        driver.callbacks().setHelp([&](const std::string& topic) {
            window->showHelp(topic, placesAround(driver.callbacks().helpButton()));
        });
        application->add_window(*window);
        window->present();
        if (!options.document.empty())
            window->openDocument(options.document);
        log.showWith([&window](Severity severity,
                               const std::string& line) { window->tellBeside(messageType(severity), line); },
                     [&window](Severity severity, const std::string& line) {
                         if (window)
                             window->tellAside(messageType(severity), line);
                     });
    });
    application->run();
    driver.setProgramWaiting({});
    driver.callbacks().setHelp({});
    dialogs.reset();
    signals.reset();
    window.reset();
}

void tellStartFailure(const std::string& line)
{
    if (!openDisplay())
        return;
    Gtk::Main::init_gtkmm_internals();
    useDriverStyle();
    // As markup, or the toolkit makes all of it bold.
    Gtk::MessageDialog window(Glib::Markup::escape_text(drawable(oneLine(line))), true, Gtk::MESSAGE_ERROR,
                              Gtk::BUTTONS_NONE);
    window.set_title(translated("Quelm Driver"));
    window.get_style_context()->add_class("question");
    window.get_message_area()->property_margin() = marginOfMessage;
    describe(window, "Start Failure");
    describe(*window.add_button(translated("_Close"), Gtk::RESPONSE_CLOSE), "Start Failure Close");
    for (auto* child : window.get_message_area()->get_children())
        if (auto* label = dynamic_cast<Gtk::Label*>(child)) {
            // Paths have no blanks to be broken at.
            label->set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
        }
    const SignalsClose signals([&window] { window.response(Gtk::RESPONSE_CLOSE); });
    window.run();
}

} // namespace quelm
