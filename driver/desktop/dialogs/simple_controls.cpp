// Shows labels, pictures and buttons, and presses the latter.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/simple_controls.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/dialogs/phonebook_opening.h"
#include "driver/desktop/toolkit/shown_text.h"

namespace quelm {

namespace {

constexpr int gapBehindPicture = 6;

} // namespace

LabelControl::LabelControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), label_(*Gtk::make_managed<Gtk::Label>())
{
    label_.set_xalign(0);
    // A text of several lines begins at the top of its place; beside a field one line stands in the middle.
    label_.set_yalign(definedNumber(tree, "Height") > 0 ? 0.0F : 0.5F);
    describe(label_, tree.name());
}

void LabelControl::show()
{
    // A text that the component composed is data: its underscores are underscores.
    if (hasMnemonics(tree))
        label_.set_text_with_mnemonic(shownText(tree));
    else
        label_.set_text(shownText(tree));
    label_.get_accessible()->set_name(label_.get_text());
    showState(label_);
}

PictureControl::PictureControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), image_(*Gtk::make_managed<Gtk::Image>())
{
    const std::string* file = tree.attribute("PicFile");
    if (const auto picture = context.pictures.load(file == nullptr ? std::string() : *file))
        image_.set(picture);
    describe(image_, tree.name());
}

ButtonControl::ButtonControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), button_(*Gtk::make_managed<Gtk::Button>())
{
    const std::string* file = tree.attribute("PicFile");
    if (const auto picture = context.pictures.load(file == nullptr ? std::string() : *file)) {
        auto* image = Gtk::make_managed<Gtk::Image>(picture);
        image->set_margin_end(gapBehindPicture);
        button_.set_image(*image);
        button_.set_always_show_image(true);
    }
    if (tree.kind() == WidgetKind::toolbarItem)
        button_.get_style_context()->add_class("toolbar-item");
    button_.set_use_underline(true);
    button_.signal_clicked().connect([this] {
        if (isUsersDoing())
            commitTyping(button_);
        act([&pressed = tree](UserActions& actions) {
            requireOpenablePhonebook(pressed);
            actions.press(pressed);
        });
    });
    describe(button_, tree.name(), accessibleName(tree));
}

void ButtonControl::show()
{
    button_.set_label(shownText(tree));
    showState(button_);
}

} // namespace quelm
