// Shows choices and numbers, and chooses.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/choice_controls.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <gtkmm/adjustment.h>
#include <gtkmm/cellrenderertext.h>

#include <algorithm>

namespace quelm {

CheckBoxControl::CheckBoxControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), box_(*Gtk::make_managed<Gtk::CheckButton>())
{
    box_.set_use_underline(true);
    box_.signal_toggled().connect([this] {
        act([&ticked = tree, on = box_.get_active()](UserActions& actions) { actions.tick(ticked, on); });
    });
    describe(box_, tree.name(), accessibleName(tree));
}

void CheckBoxControl::show()
{
    box_.set_label(shownText(tree));
    box_.set_active(tree.flag());
    showState(box_);
}

RadioItemControl::RadioItemControl(Widget& treeWidget, DesktopContext& desktopContext,
                                   RadioItemControl* firstOfGroup)
    : Control(treeWidget, desktopContext), button_(*Gtk::make_managed<Gtk::RadioButton>())
{
    if (firstOfGroup != nullptr)
        button_.join_group(firstOfGroup->button_);
    button_.set_use_underline(true);
    button_.signal_toggled().connect([this] {
        if (button_.get_active())
            act([&chosen = tree](UserActions& actions) { actions.tick(chosen, true); });
    });
    describe(button_, tree.name(), accessibleName(tree));
}

void RadioItemControl::show()
{
    button_.set_label(shownText(tree));
    if (tree.flag())
        button_.set_active(true);
    const Widget& group = *tree.parent();
    button_.set_visible(tree.visible() && group.visible());
    button_.set_sensitive(tree.sensitive() && group.sensitive());
}

void RadioGroupControl::show()
{
    for (Control* item : items_)
        item->refresh();
}

ComboBoxControl::Columns::Columns()
{
    add(text);
    add(sensitive);
    add(index);
}

ComboBoxControl::ComboBoxControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), items_(Gtk::ListStore::create(columns_)),
      combo_(*Gtk::make_managed<Gtk::ComboBox>())
{
    combo_.set_model(items_);
    auto* cell = Gtk::make_managed<Gtk::CellRendererText>();
    combo_.pack_start(*cell);
    combo_.add_attribute(*cell, "text", columns_.text);
    combo_.add_attribute(*cell, "sensitive", columns_.sensitive);
    combo_.signal_changed().connect([this] {
        if (const auto chosen = combo_.get_active()) {
            const int index = (*chosen)[columns_.index];
            act([&changed = tree, index](UserActions& actions) { actions.choose(changed, index); });
        }
    });
    describe(combo_, tree.name(), accessibleName(tree));
}

void ComboBoxControl::show()
{
    showItems();
    const auto rows = items_->children();
    const auto chosen = std::find_if(rows.begin(), rows.end(), [this](const Gtk::TreeRow& row) {
        return row[columns_.index] == tree.number();
    });
    if (chosen == rows.end())
        combo_.unset_active();
    else
        combo_.set_active(chosen);
    showState(combo_);
}

void ComboBoxControl::showItems()
{
    std::vector<Item> wanted;
    int index = 0;
    for (const Widget* item : tree.items()) {
        if (item->visible())
            wanted.push_back({shownText(*item), item->sensitive(), index});
        ++index;
    }
    if (wanted == shownItems_)
        return;
    shownItems_ = wanted;
    items_->clear();
    for (const Item& item : shownItems_) {
        Gtk::TreeRow row = *items_->append();
        row[columns_.text] = item.text;
        row[columns_.sensitive] = item.sensitive;
        row[columns_.index] = item.index;
    }
}

SpinBoxControl::SpinBoxControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), spin_(*Gtk::make_managed<Gtk::SpinButton>())
{
    const auto range = tree.numberRange();
    const int increment = std::max(definedNumber(tree, "AdjIncrement", 1), 1);
    spin_.set_adjustment(
        Gtk::Adjustment::create(tree.number(), range->first, range->second, increment, 10.0 * increment));
    spin_.set_numeric(true);
    spin_.set_alignment(1);
    const auto digits =
        static_cast<int>(std::max(std::to_string(range->first).size(), std::to_string(range->second).size()));
    spin_.set_width_chars(digits);
    spin_.set_max_width_chars(digits);
    spin_.set_activates_default(true);
    spin_.signal_value_changed().connect([this] {
        act([&changed = tree, number = spin_.get_value_as_int()](UserActions& actions) {
            actions.choose(changed, number);
        });
    });
    describe(spin_, tree.name(), accessibleName(tree));
}

void SpinBoxControl::show()
{
    spin_.set_value(tree.number());
    showState(spin_);
}

} // namespace quelm
