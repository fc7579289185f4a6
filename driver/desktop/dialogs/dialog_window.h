// One of the component's dialogs as a window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_DIALOG_WINDOW_H
#define DRIVER_DESKTOP_DIALOGS_DIALOG_WINDOW_H

#include "driver/desktop/dialogs/control_builder.h"
#include "driver/desktop/dialogs/top_level.h"

#include <gtkmm/box.h>
#include <gtkmm/infobar.h>
#include <gtkmm/label.h>

namespace quelm {

/// At least as large as the definition says; a window with lists can be made larger, and they grow with it.
/// Enter presses its default button, F1 its help button, Escape closes it as its frame does.
class DialogWindow : public TopLevel {
public:
    DialogWindow(Widget& treeWidget, DesktopContext& desktopContext);
    ~DialogWindow() override;

    Gtk::Window* onScreen() override { return &window_; }
    void present(Gtk::Window& over) override;
    void showTrouble(const std::string& message) override;
    void clearTrouble() override;

    /// The control that shows a widget of this window, null when it shows none.
    Control* controlOf(const Widget& widget) const;

protected:
    void show() override;

private:
    /// Escape and F1 come behind what the focused control makes of them.
    class KeyedWindow : public Gtk::Window {
    public:
        std::function<void()> escaped;
        std::function<void()> helpAsked;

    protected:
        bool on_key_press_event(GdkEventKey* event) override;
    };

    void close();
    void askForHelp();
    /// The help button that shows, of several the one on the notebook's page in front; null without one.
    Widget* helpButtonIn(const Widget& widget) const;
    void focusFirst();

    ControlSet set_;
    KeyedWindow window_; // behind the controls: its end is the end of their toolkit widgets
    Gtk::Box box_{Gtk::ORIENTATION_VERTICAL};
    Gtk::InfoBar trouble_;
    Gtk::Label troubleText_;
};

} // namespace quelm

#endif
