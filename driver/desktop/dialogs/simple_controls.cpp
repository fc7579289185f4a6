// Shows labels, pictures and buttons, and presses the latter.
#include "driver/desktop/dialogs/simple_controls.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/dialogs/phonebook_opening.h"
#include "driver/desktop/toolkit/shown_text.h"

namespace quelm {

namespace {

constexpr int gapBehindPicture = 6;

} // namespace

LabelControl::LabelControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), label(*Gtk::make_managed<Gtk::Label>())
{
    label.set_xalign(0);
    // A text of several lines begins at the top of its place; beside a field one line stands in the middle.
    label.set_yalign(definedNumber(tree, "Height") > 0 ? 0.0F : 0.5F);
    describe(label, tree.name());
}

void LabelControl::show()
{
    // A text that the component composed is data: its underscores are underscores.
    if (hasMnemonics(tree))
        label.set_text_with_mnemonic(shownText(tree));
    else
        label.set_text(shownText(tree));
    label.get_accessible()->set_name(label.get_text());
    showState(label);
}

PictureControl::PictureControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), image(*Gtk::make_managed<Gtk::Image>())
{
    const std::string* file = tree.attribute("PicFile");
    if (const auto picture = context.pictures.load(file == nullptr ? std::string() : *file))
        image.set(picture);
    describe(image, tree.name());
}

ButtonControl::ButtonControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), button(*Gtk::make_managed<Gtk::Button>())
{
    const std::string* file = tree.attribute("PicFile");
    if (const auto picture = context.pictures.load(file == nullptr ? std::string() : *file)) {
        auto* image = Gtk::make_managed<Gtk::Image>(picture);
        image->set_margin_end(gapBehindPicture);
        button.set_image(*image);
        button.set_always_show_image(true);
    }
    if (tree.kind() == WidgetKind::toolbarItem)
        button.get_style_context()->add_class("toolbar-item");
    button.set_use_underline(true);
    button.signal_clicked().connect([this] {
        if (isUsersDoing())
            commitTyping(button);
        act([&pressed = tree](UserActions& actions) {
            requireOpenablePhonebook(pressed);
            actions.press(pressed);
        });
    });
    describe(button, tree.name(), accessibleName(tree));
}

void ButtonControl::show()
{
    button.set_label(shownText(tree));
    showState(button);
}

} // namespace quelm
