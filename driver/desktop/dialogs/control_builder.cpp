// Chooses the control for each kind of widget and puts it in its place.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/control_builder.h"

#include "driver/desktop/dialogs/simple_controls.h"
#include "driver/desktop/dialogs/text_field_control.h"

#include <gtkmm/box.h>
#include <gtkmm/frame.h>
#include <gtkmm/scrolledwindow.h>

#include <algorithm>

namespace quelm {

namespace {

// What the tabs and the frame around a page take from the size that the definition gives a set of tabs.
constexpr int tabsHeight = 25;
constexpr int pageBorders = 3;

constexpr int boxSpacing = 6;
constexpr int frameBorder = 4;

PlacedSize definedSize(const Widget& widget)
{
    return {definedNumber(widget, "Width"), definedNumber(widget, "Height")};
}

bool isHorizontal(const Widget& widget)
{
    const std::string* alignment = widget.attribute("Alignment");
    return alignment == nullptr || *alignment == "Horizontal";
}

/// A label on the line of a field is as high as that, so that their texts are level.
int heightOnLine(const Widget& label)
{
    int height = 0;
    for (const auto& sibling : label.parent()->children()) {
        const bool isField =
            sibling->kind() == WidgetKind::textEntry || sibling->kind() == WidgetKind::comboBoxMain;
        if (isField && definedNumber(*sibling, "YPos") == definedNumber(label, "YPos"))
            height = std::max(height, definedNumber(*sibling, "Height"));
    }
    return height;
}

PlacedChild placingOf(const Widget& widget)
{
    PlacedChild placing;
    const PlacedSize size = definedSize(widget);
    placing.asked = {definedNumber(widget, "XPos"), definedNumber(widget, "YPos"), size.width, size.height};
    switch (widget.kind()) {
    case WidgetKind::label:
        placing.asked.height = size.height > 0 ? size.height : heightOnLine(widget);
        break;
    case WidgetKind::scrolledWindowContainer:
    case WidgetKind::tableContainer:
        placing.widens = placing.heightens = true;
        break;
    case WidgetKind::textEntry:
    case WidgetKind::frameContainer:
        placing.widens = true;
        break;
    case WidgetKind::button:
        placing.isButton = true;
        break;
    default:
        break;
    }
    return placing;
}

} // namespace

template <class Made, class... Arguments>
Made& ControlBuilder::make(Widget& widget, Arguments&&... arguments)
{
    auto made = std::make_unique<Made>(widget, context_, std::forward<Arguments>(arguments)...);
    Made& control = *made;
    set_.controls.push_back(std::move(made));
    set_.shownBy[&widget] = &control;
    return control;
}

Gtk::Widget& ControlBuilder::contentOf(Widget& window, PlacedSize size)
{
    if (window.children().size() == 1)
        return control(*window.children().front(), size);
    auto* container = Gtk::make_managed<PlacedContainer>(size);
    putAll(window, *container, size);
    container->show();
    return *container;
}

/// `frame` is the size that a container without one of its own fills.
Gtk::Widget& ControlBuilder::control(Widget& widget, PlacedSize frame)
{
    switch (widget.kind()) {
    case WidgetKind::label:
        return *make<LabelControl>(widget).onScreen();
    case WidgetKind::picture:
        return *make<PictureControl>(widget).onScreen();
    case WidgetKind::button:
    case WidgetKind::toolbarItem:
        return *make<ButtonControl>(widget).onScreen();
    case WidgetKind::checkBox:
        return *make<CheckBoxControl>(widget).onScreen();
    case WidgetKind::textEntry:
        return *make<TextFieldControl>(widget).onScreen();
    case WidgetKind::spinBox:
        return *make<SpinBoxControl>(widget).onScreen();
    case WidgetKind::listBox:
        return *make<ListControl>(widget, frame.width).onScreen();
    case WidgetKind::comboBoxMain: {
        ComboBoxControl& combo = make<ComboBoxControl>(widget);
        for (const Widget* item : widget.items())
            set_.shownBy[item] = &combo;
        return *combo.onScreen();
    }
    default:
        return container(widget, frame);
    }
}

Gtk::Widget& ControlBuilder::container(Widget& widget, PlacedSize frame)
{
    switch (widget.kind()) {
    case WidgetKind::notebookSet:
        return notebook(widget, frame);
    case WidgetKind::toolbarMenu:
    case WidgetKind::boxContainer:
    case WidgetKind::tableContainer:
        return sideBySide(widget);
    case WidgetKind::frameContainer: {
        auto* border = Gtk::make_managed<Gtk::Frame>();
        auto* inner = Gtk::make_managed<PlacedContainer>();
        inner->set_border_width(frameBorder);
        putAll(widget, *inner, {});
        inner->show();
        border->add(*inner);
        return *make<ContainerControl>(widget, *border).onScreen();
    }
    case WidgetKind::scrolledWindowContainer: {
        auto* scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
        scrolled->set_policy(Gtk::POLICY_AUTOMATIC, Gtk::POLICY_AUTOMATIC);
        scrolled->set_shadow_type(Gtk::SHADOW_IN);
        scrolled->set_overlay_scrolling(false);
        if (!widget.children().empty())
            scrolled->add(control(*widget.children().front(), definedSize(widget)));
        return *make<ContainerControl>(widget, *scrolled).onScreen();
    }
    default:
        return placed(widget, frame);
    }
}

Gtk::Widget& ControlBuilder::placed(Widget& widget, PlacedSize frame)
{
    const PlacedSize own = definedSize(widget);
    const bool hasPlace = widget.attribute("XPos") != nullptr;
    const PlacedSize size = own.width > 0 || hasPlace ? own : frame;
    auto* container = Gtk::make_managed<PlacedContainer>(size);
    putAll(widget, *container, size);
    return *make<ContainerControl>(widget, *container).onScreen();
}

void ControlBuilder::putAll(Widget& widget, PlacedContainer& into, PlacedSize frame)
{
    for (const auto& child : widget.children()) {
        if (child->kind() == WidgetKind::radioButton) {
            putRadioItems(*child,
                          [&into](Widget& item, Gtk::Widget& button) { into.put(button, placingOf(item)); });
        } else {
            into.put(control(*child, frame), placingOf(*child));
        }
    }
}

/// The items stand where they say, in the container of their group.
void ControlBuilder::putRadioItems(Widget& group, const std::function<void(Widget&, Gtk::Widget&)>& put)
{
    RadioItemControl* first = nullptr;
    std::vector<Control*> items;
    for (Widget* item : group.items()) {
        RadioItemControl& made = make<RadioItemControl>(*item, first);
        first = first == nullptr ? &made : first;
        items.push_back(&made);
        put(*item, *made.onScreen());
    }
    make<RadioGroupControl>(group, std::move(items));
}

Gtk::Widget& ControlBuilder::sideBySide(Widget& widget)
{
    const bool horizontal = isHorizontal(widget);
    auto* box = Gtk::make_managed<Gtk::Box>(
        horizontal ? Gtk::ORIENTATION_HORIZONTAL : Gtk::ORIENTATION_VERTICAL, boxSpacing);
    const bool fills = widget.kind() == WidgetKind::tableContainer;
    const auto pack = [&](Widget& child, Gtk::Widget& cell) {
        const PlacedSize size = definedSize(child);
        cell.set_size_request(size.width > 0 ? size.width : -1, size.height > 0 ? size.height : -1);
        box->pack_start(cell, fills ? Gtk::PACK_EXPAND_WIDGET : Gtk::PACK_SHRINK);
    };
    std::size_t column = 0;
    for (const auto& child : widget.children()) {
        if (child->kind() == WidgetKind::radioButton) {
            putRadioItems(*child, pack);
            continue;
        }
        Gtk::Widget& cell = control(*child, definedSize(widget));
        pack(*child, cell);
        if (horizontal && !fills)
            alignColumn(widget, column, cell);
        ++column;
    }
    return *make<ContainerControl>(widget, *box).onScreen();
}

void ControlBuilder::alignColumn(const Widget& row, std::size_t column, Gtk::Widget& cell)
{
    const std::string* x = row.attribute("XPos");
    if (x == nullptr || row.parent() == nullptr)
        return;
    auto& group = columns_[row.parent()->name() + '\n' + *x + '\n' + std::to_string(column)];
    if (!group)
        group = Gtk::SizeGroup::create(Gtk::SIZE_GROUP_HORIZONTAL);
    group->add_widget(cell);
}

Gtk::Widget& ControlBuilder::notebook(Widget& widget, PlacedSize frame)
{
    const PlacedSize page{frame.width > 0 ? frame.width - pageBorders : 0,
                          frame.height > 0 ? frame.height - tabsHeight : 0};
    NotebookControl& tabs = make<NotebookControl>(widget);
    for (Widget* item : widget.items()) {
        Gtk::Widget* content = nullptr;
        if (item->children().size() == 1) {
            content = &control(*item->children().front(), page);
        } else {
            auto* container = Gtk::make_managed<PlacedContainer>(page);
            putAll(*item, *container, page);
            content = container;
        }
        auto* around = Gtk::make_managed<Gtk::Box>();
        around->pack_start(*content);
        describe(*around, item->name());
        tabs.addPage(*item, *around);
        set_.shownBy[item] = &tabs;
    }
    return *tabs.onScreen();
}

} // namespace quelm
