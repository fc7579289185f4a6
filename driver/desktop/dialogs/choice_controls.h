// Controls with a choice or a number: check boxes, radio groups, combo boxes, spin boxes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_CHOICE_CONTROLS_H
#define DRIVER_DESKTOP_DIALOGS_CHOICE_CONTROLS_H

#include "driver/desktop/dialogs/control.h"

#include <gtkmm/checkbutton.h>
#include <gtkmm/combobox.h>
#include <gtkmm/liststore.h>
#include <gtkmm/radiobutton.h>
#include <gtkmm/spinbutton.h>

#include <string>
#include <vector>

namespace quelm {

class CheckBoxControl : public Control {
public:
    CheckBoxControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &box_; }

protected:
    void show() override;

private:
    Gtk::CheckButton& box_;
};

/// One choice of a radio group; the group itself has nothing on the screen. Groups are told apart by their
/// first item's control, null when this is the first.
class RadioItemControl : public Control {
public:
    RadioItemControl(Widget& treeWidget, DesktopContext& desktopContext, RadioItemControl* firstOfGroup);
    Gtk::Widget* onScreen() override { return &button_; }

protected:
    void show() override;

private:
    Gtk::RadioButton& button_;
};

/// A radio group: it shows itself through its items.
class RadioGroupControl : public Control {
public:
    /// The items' controls live as long as this one.
    RadioGroupControl(Widget& treeWidget, DesktopContext& desktopContext, std::vector<Control*> itemControls)
        : Control(treeWidget, desktopContext), items_(std::move(itemControls))
    {
    }
    /// The first item's; there is nothing else.
    Gtk::Widget* onScreen() override { return items_.empty() ? nullptr : items_.front()->onScreen(); }

protected:
    void show() override;

private:
    std::vector<Control*> items_;
};

class ComboBoxControl : public Control {
public:
    ComboBoxControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &combo_; }

protected:
    void show() override;

private:
    struct Columns : Gtk::TreeModelColumnRecord {
        Columns();
        Gtk::TreeModelColumn<Glib::ustring> text;
        Gtk::TreeModelColumn<bool> sensitive;
        Gtk::TreeModelColumn<int> index; // among all items; invisible ones are not in the list
    };

    struct Item {
        std::string text;
        bool sensitive;
        int index;
        bool operator==(const Item&) const = default;
    };

    void showItems();

    Columns columns_;
    Glib::RefPtr<Gtk::ListStore> items_;
    std::vector<Item> shownItems_;
    Gtk::ComboBox& combo_;
};

class SpinBoxControl : public Control {
public:
    SpinBoxControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &spin_; }

protected:
    void show() override;

private:
    Gtk::SpinButton& spin_;
};

} // namespace quelm

#endif
