// A one-line text field.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_TEXT_FIELD_CONTROL_H
#define DRIVER_DESKTOP_DIALOGS_TEXT_FIELD_CONTROL_H

#include "driver/desktop/dialogs/control.h"

#include <gtkmm/entry.h>

namespace quelm {

class TextFieldControl : public Control {
public:
    TextFieldControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &entry_; }

protected:
    void show() override;

private:
    void typed();
    void activated();

    Gtk::Entry& entry_;
};

} // namespace quelm

#endif
