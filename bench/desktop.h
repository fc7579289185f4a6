// The driver on a screen: its dialogs in windows, ready for what a person does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_DESKTOP_H
#define BENCH_DESKTOP_H

#include "driver/core/driver.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/widgets/widget_tree.h"
#include "tests/support/temporary_folder.h"

#include <gtkmm/window.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

class QuelmLegacyDatabase;

namespace bench {

/// A driver of its own with the component as users ship it, and a main window on the screen. The dialogs
/// are in windows between `showWindows` and `removeWindows`; all else is done to the widget tree alone.
///
/// Whatever waits here for the screen lets the main loop run, and throws std::runtime_error when that
/// takes more than half a minute.
class Desktop {
public:
    using Fill = std::function<void(QuelmLegacyDatabase& phonebook)>;

    /// `fill` puts its records into the personal phonebook.
    explicit Desktop(const Fill& fill = {});
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    quelm::Driver& driver() { return *running_; }
    quelm::Widget& tree(const std::string& name);
    Gtk::Window& mainWindow() { return behind_; }

    /// Shows the tree's visible windows as windows, from now on.
    void showWindows();

    /// Takes all windows of the tree from the screen.
    void removeWindows();

    /// The toolkit's widget that shows one of the tree's.
    Gtk::Widget& screen(const std::string& name);

    /// Queues something that a person does, as a press in a window does.
    void act(std::function<void()> action) { windows_->act(std::move(action)); }

    /// Waits until a window of the tree is on the screen, as the function below does.
    void waitUntilDrawn(const std::string& window);

    /// Waits until a window of the tree is gone, and the main window has the focus.
    void waitUntilHidden(const std::string& window);

private:
    TemporaryFolder folder_;
    std::unique_ptr<quelm::Driver> running_;
    Gtk::Window behind_;
    std::unique_ptr<quelm::DialogWindows> windows_;
};

/// Waits until a widget is drawn (again) in a window that has the focus, and everything has settled. A
/// window that appears is drawn once or twice: the window manager decides whether the focus comes sooner.
void waitUntilDrawn(Gtk::Widget& widget);

/// Waits until a window has the focus, which it gets back when the one over it is hidden, and everything
/// has settled.
void waitUntilFocused(Gtk::Window& window);

} // namespace bench

#endif
