// Brings the component's dialogs, questions and file choosers to the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_DIALOG_WINDOWS_H
#define DRIVER_DESKTOP_DIALOGS_DIALOG_WINDOWS_H

#include <functional>
#include <memory>
#include <string>

namespace Gtk {
class Widget;
class Window;
} // namespace Gtk

namespace quelm {

class Driver;
class Widget;

/// Shows every visible window of a driver's widget tree as a window of the desktop, and does to the
/// tree what a person does to those windows.
///
/// A dialog is modal over the window that it was opened from: the fax dialog over the main window, the
/// others over the dialog on top. A window that is to stay usable beside them (help) needs a
/// Gtk::WindowGroup of its own.
///
/// What a person does is carried out at the next turn of the main loop, ahead of further events; what
/// it changed is drawn once when all of that is done. Nothing here runs a main loop of its own.
///
/// For assistive tools and tests, every widget's accessible description is its name in the dialog
/// definition; a question's is "Question", its buttons' are "Question Yes" and "Question No".
class DialogWindows {
public:
    /// Both outlive this object. Windows that are visible in the tree appear at the main loop's next turn.
    DialogWindows(Driver& driver, Gtk::Window& mainWindow);

    /// Takes all windows from the screen; the tree stays as it is.
    ~DialogWindows();

    DialogWindows(const DialogWindows&) = delete;
    DialogWindows& operator=(const DialogWindows&) = delete;

    /// Queues something that acts on the driver, such as opening the fax dialog: it is carried out like a
    /// press in a dialog. An Error that it throws is shown in the window on top.
    void act(std::function<void()> action);

    /// Called whenever actions were carried out and the dialogs show what came of them: the time to bring
    /// the main window up to date.
    void setSettled(std::function<void()> settled);

    /// Called with an action's error when no dialog is on the screen to show it in; by default it is logged.
    void setTrouble(std::function<void(const std::string& message)> show);

    /// The window over which a question or another window belongs: the dialog on top, or the main window.
    Gtk::Window& topWindow();

    /// The desktop's widget for one of the tree's: a window, control or container; null for one that is
    /// not on the screen by itself (a combo box's item) or whose window was never shown.
    Gtk::Widget* onScreen(const Widget& widget);

private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace quelm

#endif
