// Shows a text field and types into it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/text_field_control.h"

#include "base/texts.h"
#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <gtkmm/window.h>

#include <algorithm>

namespace quelm {

namespace {

constexpr std::size_t toolkitsLimit = 65535;

} // namespace

TextFieldControl::TextFieldControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), entry_(*Gtk::make_managed<Gtk::Entry>())
{
    const std::string* editable = tree.attribute("Editable");
    if (editable != nullptr && *editable == "false") {
        entry_.set_editable(false);
        entry_.get_style_context()->add_class("read-only");
    }
    // The definition says how wide it is.
    entry_.set_width_chars(1);
    entry_.signal_changed().connect([this] { typed(); });
    entry_.signal_activate().connect([this] { activated(); });
    describe(entry_, tree.name(), accessibleName(tree));
}

void TextFieldControl::show()
{
    // What a person typed is nobody's to translate; a state that a field only shows is.
    const bool takesTyping = entry_.get_editable() && tree.sensitive();
    const Glib::ustring text = takesTyping ? drawable(tree.text()) : shownText(tree);
    if (entry_.get_text() != text) {
        // A phonebook may hold more than a person can type here, and shortening it would lose it.
        const std::size_t length = std::max(tree.maximumLength(), text.size());
        entry_.set_max_length(length > toolkitsLimit ? 0 : static_cast<int>(length));
        entry_.set_text(text);
        if (!entry_.get_editable()) {
            // The end of a path says more than its beginning.
            entry_.set_position(-1);
            entry_.set_tooltip_text(text);
        }
    }
    if (text.size() <= tree.maximumLength() && tree.maximumLength() <= toolkitsLimit)
        entry_.set_max_length(static_cast<int>(tree.maximumLength()));
    showState(entry_);
}

void TextFieldControl::typed()
{
    if (!isUsersDoing())
        return;
    // What is pasted may hold line ends and tabs, which no field of a job takes.
    const std::string clean = fieldText(entry_.get_text().raw());
    if (entry_.get_text() != clean) {
        const int cursor = entry_.get_position();
        entry_.set_text(clean); // comes back here with the clean text
        entry_.set_position(cursor);
        return;
    }
    // What is too long, because a phonebook had it so, is refused and stays on the screen to be shortened:
    // refreshing this control would put the deleted letters back.
    context.turns.act(
        [&field = tree, clean, &driver = context.driver] { driver.actions().type(field, clean); });
}

void TextFieldControl::activated()
{
    Widget* button = buttonBeside(tree);
    if (button != nullptr && button->onScreen() && button->active())
        act([button](UserActions& actions) { actions.press(*button); });
    else if (auto* window = dynamic_cast<Gtk::Window*>(entry_.get_toplevel()))
        window->activate_default();
}

} // namespace quelm
