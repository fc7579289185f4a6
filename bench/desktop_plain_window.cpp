// Builds the plain window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/desktop_plain_window.h"

#include "driver/desktop/dialogs/control.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/comboboxtext.h>
#include <gtkmm/entry.h>
#include <gtkmm/fixed.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/liststore.h>
#include <gtkmm/notebook.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/spinbutton.h>
#include <gtkmm/treeview.h>

#include <utility>
#include <vector>

namespace bench {

using quelm::definedNumber;
using quelm::WidgetKind;

PlainWindow::PlainWindow(const quelm::Widget& dialog, std::string iconFolder) : home_(std::move(iconFolder))
{
    auto* content = Gtk::make_managed<Gtk::Fixed>();
    putAll(dialog, *content);
    window_.add(*content);
    window_.set_title(dialog.text());
    window_.set_type_hint(Gdk::WINDOW_TYPE_HINT_DIALOG);
    window_.set_position(Gtk::WIN_POS_CENTER_ON_PARENT);
    content->show_all();
}

void PlainWindow::present(Gtk::Window& over)
{
    window_.set_transient_for(over);
    window_.set_modal(true);
    window_.present();
}

Gtk::Widget* PlainWindow::make(const quelm::Widget& widget)
{
    Gtk::Widget* made = makeControl(widget);
    made->set_size_request(definedNumber(widget, "Width", -1), definedNumber(widget, "Height", -1));
    made->set_sensitive(widget.sensitive());
    made->set_no_show_all(!widget.visible());
    return made;
}

Gtk::Widget* PlainWindow::makeControl(const quelm::Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::label:
        return Gtk::make_managed<Gtk::Label>(widget.text());
    case WidgetKind::picture:
        return makePicture(widget);
    case WidgetKind::button:
        return Gtk::make_managed<Gtk::Button>(widget.text(), true);
    case WidgetKind::toolbarItem: {
        auto* button = Gtk::make_managed<Gtk::Button>(widget.text(), true);
        button->set_image(*makePicture(widget));
        button->set_always_show_image(true);
        return button;
    }
    case WidgetKind::checkBox: {
        auto* box = Gtk::make_managed<Gtk::CheckButton>(widget.text(), true);
        box->set_active(widget.flag());
        return box;
    }
    case WidgetKind::comboBoxMain: {
        auto* combo = Gtk::make_managed<Gtk::ComboBoxText>();
        for (const quelm::Widget* item : widget.items())
            combo->append(item->text());
        combo->set_active(widget.number());
        return combo;
    }
    case WidgetKind::textEntry: {
        auto* entry = Gtk::make_managed<Gtk::Entry>();
        entry->set_text(widget.text());
        return entry;
    }
    case WidgetKind::spinBox: {
        auto* spin = Gtk::make_managed<Gtk::SpinButton>();
        if (const auto range = widget.numberRange())
            spin->set_range(range->first, range->second);
        spin->set_value(widget.number());
        return spin;
    }
    case WidgetKind::listBox:
        return makeList(widget);
    case WidgetKind::notebookSet:
        return makeTabs(widget);
    default:
        return makeContainer(widget);
    }
}

Gtk::Widget* PlainWindow::makePicture(const quelm::Widget& picture)
{
    const std::string* file = picture.attribute("PicFile");
    return file == nullptr ? Gtk::make_managed<Gtk::Image>() : Gtk::make_managed<Gtk::Image>(home_ + *file);
}

Gtk::Widget* PlainWindow::makeList(const quelm::Widget& list)
{
    std::vector<Gtk::TreeModelColumn<Glib::ustring>> columns(list.rows().columnCount());
    Gtk::TreeModelColumnRecord record;
    for (auto& column : columns)
        record.add(column);
    auto* view = Gtk::make_managed<Gtk::TreeView>(Gtk::ListStore::create(record));
    for (std::size_t index = 0; index < columns.size(); ++index) {
        const std::string* title = list.attribute("AddListColumn" + std::to_string(index + 1));
        view->append_column(title == nullptr ? "" : *title, columns[index]);
    }
    return view;
}

Gtk::Widget* PlainWindow::makeTabs(const quelm::Widget& tabs)
{
    auto* notebook = Gtk::make_managed<Gtk::Notebook>();
    for (const quelm::Widget* page : tabs.items()) {
        auto* content = Gtk::make_managed<Gtk::Fixed>();
        putAll(*page, *content);
        notebook->append_page(*content, page->text());
    }
    return notebook;
}

Gtk::Widget* PlainWindow::makeContainer(const quelm::Widget& container)
{
    Gtk::Container* made = nullptr;
    switch (container.kind()) {
    case WidgetKind::toolbarMenu:
    case WidgetKind::boxContainer:
    case WidgetKind::tableContainer:
        made = Gtk::make_managed<Gtk::Box>();
        break;
    case WidgetKind::scrolledWindowContainer:
        made = Gtk::make_managed<Gtk::ScrolledWindow>();
        break;
    default:
        made = Gtk::make_managed<Gtk::Fixed>();
        break;
    }
    putAll(container, *made);
    return made;
}

void PlainWindow::putAll(const quelm::Widget& container, Gtk::Container& into)
{
    for (const auto& child : container.children()) {
        if (child->kind() != WidgetKind::radioButton) {
            put(*child, *make(*child), into);
            continue;
        }
        Gtk::RadioButton::Group group;
        for (const quelm::Widget* item : child->items()) {
            auto* button = Gtk::make_managed<Gtk::RadioButton>(group, item->text(), true);
            button->set_active(item->flag());
            put(*item, *button, into);
        }
    }
}

void PlainWindow::put(const quelm::Widget& widget, Gtk::Widget& made, Gtk::Container& into)
{
    if (auto* fixed = dynamic_cast<Gtk::Fixed*>(&into))
        fixed->put(made, definedNumber(widget, "XPos"), definedNumber(widget, "YPos"));
    else
        into.add(made);
}

} // namespace bench
