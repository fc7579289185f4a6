// A window of the desktop that shows a window of the widget tree.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_TOP_LEVEL_H
#define DRIVER_DESKTOP_DIALOGS_TOP_LEVEL_H

#include "driver/desktop/dialogs/control.h"

#include <gtkmm/window.h>

#include <string>

namespace quelm {

/// A dialog or file chooser. `refresh` brings its title and content up to date.
class TopLevel : public Control {
public:
    using Control::Control;

    Gtk::Window* onScreen() override = 0;

    /// Shows it, modal over another window: where it was before, or centred when it is new.
    virtual void present(Gtk::Window& over);

    /// Takes it from the screen.
    virtual void withdraw();

    /// Shows the reason why an action was refused, until `clearTrouble`.
    virtual void showTrouble(const std::string& message) = 0;
    virtual void clearTrouble() = 0;

private:
    bool hasPosition_ = false;
    int x_ = 0;
    int y_ = 0;
};

} // namespace quelm

#endif
