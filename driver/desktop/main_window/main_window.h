// The driver's main window: a document, its fax, and where the job goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_MAIN_WINDOW_H
#define DRIVER_DESKTOP_MAIN_WINDOW_MAIN_WINDOW_H

#include "driver/core/driver.h"
#include "driver/desktop/help/help_window.h"
#include "driver/desktop/main_window/document_chooser.h"
#include "driver/desktop/main_window/job_panel.h"
#include "driver/desktop/main_window/main_question.h"
#include "driver/desktop/main_window/outbox_watch.h"
#include "driver/desktop/main_window/summary_panel.h"
#include "driver/desktop/main_window/window_height.h"
#include "driver/desktop/pages/document_panel.h"
#include "driver/desktop/sending/desktop_choices.h"
#include "driver/desktop/sending/destination_panel.h"
#include "driver/desktop/sending/document_loading.h"
#include "driver/desktop/toolkit/message_bar.h"
#include "driver/handover/recipient_watch.h"

#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

class DialogWindows;

/// What the window starts with.
struct MainWindowOptions {
    Pdl pdl = Pdl::dsc;                         ///< the form of jobs, unless the user chose one here
    std::string choicesFile;                    ///< where the user's choices are kept
    std::string creator;                        ///< the program, as jobs name it
    OutboxSettings outbox = {};                 ///< the user's; without a folder there is none
    std::vector<NamedTarget> destinations = {}; ///< of the configuration
    std::string destination = {};               ///< the name of the default one; empty for none
};

/// The window. The component's dialogs belong to `DialogWindows`; this one stands behind them.
///
/// For assistive tools and tests, the accessible descriptions of its controls are fixed names: "Main Open
/// Button", "Main Fax Setup Button", "Main Fax Summary", "Main Destination Kind", "Main Destination File",
/// "Main Destination Device", "Main Destination Queue", "Main Job Format", "Main Job Summary", "Main
/// Message", "Main Progress", "Main Cancel Button", "Main Help Button", "Main Preview Button", "Main Send
/// Button", ...
class MainWindow : public Gtk::ApplicationWindow {
public:
    /// `driver` outlives the window.
    MainWindow(Driver& driver, const MainWindowOptions& options);

    /// Brings in the component's dialogs, which live as long as the window is used.
    void connectDialogs(DialogWindows& dialogs);

    /// Called when the window has closed, which ends the program.
    void setClosed(std::function<void()> closed) { closed_ = std::move(closed); }

    /// Opens a document, in place of the one that is open.
    void openDocument(const std::string& path);

    /// Tells the user something in one line.
    void tell(Gtk::MessageType type, const std::string& line) { messages_.tell(type, line); }

    /// The same, beside what is being told, the worst first.
    void tellBeside(Gtk::MessageType type, const std::string& line) { messages_.tellBeside(type, line); }

    /// The same, unless something else is being told.
    void tellAside(Gtk::MessageType type, const std::string& line);

    /// Shows the help on a topic at the first of `places` that it has a section about.
    void showHelp(const std::string& topic, const std::vector<std::string>& places);

    /// The section that the help shows; empty before the first help.
    std::string helpSection() const { return helpWindow_ ? helpWindow_->currentSection() : std::string(); }

    /// Whether a job is being sent, or a part of one of the outbox is with a device.
    [[nodiscard]] bool isHalfOut() const;

    /// Closes the window without a question; a job that is being sent is cancelled.
    void closeAtOnce();

    /// The actions behind its buttons and menus, by name: "win.open", "win.fax-setup", "win.preview",
    /// "win.send", "win.cancel", "win.help", "win.about", "win.quit".
    static Glib::RefPtr<Gio::Menu> menu();

protected:
    bool on_delete_event(GdkEventAny* event) override;
    void on_drag_data_received(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y,
                               const Gtk::SelectionData& data, guint info, guint time) override;

private:
    void showPdl();
    void layOut();
    Gtk::Box& form();
    Gtk::Box& buttonBar();
    void addActions();
    void describeControls();
    void showFax();
    void tellBadRecipients();
    void updateActions();
    void sendingChanged();
    void askToStop();
    void withdrawStopQuestion();
    void stopAndLeave();
    void leave();

    void chooseDocument();
    void documentLoaded(const LoadingResult& result);
    void faxSetup();
    void about();
    DesktopChoices choices() const;

    Driver& driver_;
    MainWindowOptions options_;
    DialogWindows* dialogs_ = nullptr;
    std::function<void()> closed_;
    DesktopChoicesFile choicesFile_;
    DesktopChoices kept_;
    std::optional<std::string> shownFor_; ///< the named destination whose form of jobs is shown
    WindowHeight height_{*this};
    MessageBar messages_;
    MainQuestion question_{*this, messages_};
    DocumentPanel documentPanel_;
    Gtk::Button open_;
    Gtk::Label faxSummary_;
    Gtk::Button faxSetup_;
    DestinationPanel destinationPanel_;
    SummaryPanel summary_;
    JobPanel job_;
    RecipientWatch watch_;
    bool asksToStop_ = false;        ///< the question is whether a job is to be stopped
    bool mayStop_ = false;           ///< the user agreed to that, since the window was closed last
    bool leaves_ = false;            ///< the window is closed when the job that was stopped has ended
    bool toldBadRecipients_ = false; ///< the message names somebody who cannot be faxed to
    Gtk::Button help_;
    Gtk::Button preview_;
    Gtk::Button send_;

    DocumentLoading loading_;
    std::unique_ptr<DocumentChooser> chooser_;
    std::unique_ptr<HelpWindow> helpWindow_;
    std::unique_ptr<OutboxWatch> outbox_; ///< null when there is no outbox
};

/// "2 recipients, with a cover page"; behind it the remarks, for there is a recipient.
std::string faxSummary(std::size_t recipients, bool coverPage, const std::vector<std::string>& remarks = {});

} // namespace quelm

#endif
