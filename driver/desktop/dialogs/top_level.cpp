// Shows and hides windows, keeping their places.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/top_level.h"

namespace quelm {

void TopLevel::present(Gtk::Window& over)
{
    Gtk::Window& window = *onScreen();
    window.set_transient_for(over);
    window.set_modal(true);
    if (hasPosition_)
        window.move(x_, y_);
    else
        window.set_position(Gtk::WIN_POS_CENTER_ON_PARENT);
    window.present();
}

void TopLevel::withdraw()
{
    Gtk::Window& window = *onScreen();
    if (window.get_visible()) {
        window.get_position(x_, y_);
        hasPosition_ = true;
        window.hide();
    }
}

} // namespace quelm
