// Shows states, queues actions, names controls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/control.h"

#include <gtkmm/spinbutton.h>
#include <gtkmm/window.h>

#include <charconv>

namespace quelm {

void Control::refresh()
{
    const bool before = std::exchange(updating_, true);
    show();
    updating_ = before;
}

void Control::showState(Gtk::Widget& widget) const
{
    widget.set_visible(tree.visible());
    widget.set_sensitive(tree.sensitive());
}

void Control::act(std::function<void(UserActions&)> action)
{
    if (isUsersDoing()) {
        context.turns.act(
            [&driver = context.driver, action = std::move(action)] { action(driver.actions()); }, this);
    }
}

void commitTyping(Gtk::Widget& widget)
{
    auto* window = dynamic_cast<Gtk::Window*>(widget.get_toplevel());
    if (auto* spin = window == nullptr ? nullptr : dynamic_cast<Gtk::SpinButton*>(window->get_focus()))
        spin->update();
}

int definedNumber(const Widget& widget, std::string_view key, int fallback)
{
    const std::string* given = widget.attribute(key);
    int value = fallback;
    if (given != nullptr)
        std::from_chars(given->data(), given->data() + given->size(), value);
    return value;
}

} // namespace quelm
