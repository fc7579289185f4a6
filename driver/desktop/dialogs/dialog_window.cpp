// Builds a dialog's window and answers its keys.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/dialog_window.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <gdk/gdkkeysyms.h>

namespace quelm {

namespace {

bool holdsList(const Widget& widget)
{
    for (const auto& child : widget.children())
        if (child->isList() || holdsList(*child))
            return true;
    return false;
}

/// The first field of a form that a person types into; null when the window is no form.
const Widget* firstField(const Widget& widget)
{
    for (const auto& child : widget.children()) {
        if (child->kind() == WidgetKind::notebookSet || child->isList())
            return nullptr;
        const std::string* editable = child->attribute("Editable");
        const bool readOnly = editable != nullptr && *editable == "false";
        if (child->kind() == WidgetKind::textEntry && !readOnly && child->visible() && child->sensitive())
            return child.get();
        if (const Widget* found = firstField(*child))
            return found;
    }
    return nullptr;
}

} // namespace

bool DialogWindow::KeyedWindow::on_key_press_event(GdkEventKey* event)
{
    if (Gtk::Window::on_key_press_event(event))
        return true;
    switch (event->keyval) {
    case GDK_KEY_Escape:
        escaped();
        return true;
    case GDK_KEY_F1:
        helpAsked();
        return true;
    default:
        return false;
    }
}

DialogWindow::DialogWindow(Widget& treeWidget, DesktopContext& desktopContext)
    : TopLevel(treeWidget, desktopContext)
{
    const PlacedSize size{definedNumber(tree, "Width"), definedNumber(tree, "Height")};
    ControlBuilder builder(context, set_);
    Gtk::Widget& content = builder.contentOf(tree, size);
    troubleText_.set_line_wrap(true);
    troubleText_.set_max_width_chars(40);
    troubleText_.set_xalign(0);
    troubleText_.show();
    dynamic_cast<Gtk::Container&>(*trouble_.get_content_area()).add(troubleText_);
    trouble_.set_message_type(Gtk::MESSAGE_WARNING);
    trouble_.get_style_context()->add_class("trouble");
    describe(troubleText_, "Dialog Message");
    box_.pack_start(trouble_, Gtk::PACK_SHRINK);
    box_.pack_start(content, Gtk::PACK_EXPAND_WIDGET);
    box_.show();
    window_.add(box_);
    window_.set_type_hint(Gdk::WINDOW_TYPE_HINT_DIALOG);
    window_.set_resizable(holdsList(tree));
    window_.signal_delete_event().connect([this](GdkEventAny*) {
        close();
        return true; // the tree decides whether it goes
    });
    window_.escaped = [this] { close(); };
    window_.helpAsked = [this] { askForHelp(); };
    describe(window_, tree.name());
    window_.get_accessible()->set_role(Atk::ROLE_DIALOG);

    for (const auto& control : set_.controls)
        control->refresh();
    if (const Widget* preset = defaultButton(tree)) {
        Gtk::Widget& button = *controlOf(*preset)->onScreen();
        button.set_can_default(true);
        window_.set_default(button);
    }
    refresh();
}

DialogWindow::~DialogWindow()
{
    // What the toolkit tells while the window goes is no user's doing.
    mute();
    for (const auto& control : set_.controls)
        control->mute();
}

void DialogWindow::show()
{
    window_.set_title(shownText(tree));
    window_.get_accessible()->set_name(shownText(tree));
    window_.set_sensitive(tree.sensitive());
}

void DialogWindow::present(Gtk::Window& over)
{
    clearTrouble();
    focusFirst();
    TopLevel::present(over);
}

void DialogWindow::focusFirst()
{
    if (const Widget* field = firstField(tree))
        controlOf(*field)->onScreen()->grab_focus();
    else if (Gtk::Widget* preset = holdsList(tree) ? nullptr : window_.get_default_widget())
        preset->grab_focus();
    else
        window_.unset_focus();
}

void DialogWindow::close()
{
    act([&closed = tree](UserActions& actions) { actions.closeWindow(closed); });
}

Widget* DialogWindow::helpButtonIn(const Widget& widget) const
{
    for (const auto& child : widget.children()) {
        Control* control = child->attribute("HelpTopic") == nullptr ? nullptr : controlOf(*child);
        if (control != nullptr && control->onScreen()->get_mapped())
            return child.get();
        if (Widget* found = helpButtonIn(*child))
            return found;
    }
    return nullptr;
}

void DialogWindow::askForHelp()
{
    if (Widget* button = helpButtonIn(tree))
        act([button](UserActions& actions) { actions.press(*button); });
}

void DialogWindow::showTrouble(const std::string& message)
{
    troubleText_.set_text(shownMessage(message));
    trouble_.show();
}

void DialogWindow::clearTrouble() { trouble_.hide(); }

Control* DialogWindow::controlOf(const Widget& widget) const
{
    const auto found = set_.shownBy.find(&widget);
    return found == set_.shownBy.end() ? nullptr : found->second;
}

} // namespace quelm
