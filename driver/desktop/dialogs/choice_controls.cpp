// Shows choices and numbers, and chooses.
#include "driver/desktop/dialogs/choice_controls.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <gtkmm/adjustment.h>
#include <gtkmm/cellrenderertext.h>

#include <algorithm>

namespace quelm {

CheckBoxControl::CheckBoxControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), box(*Gtk::make_managed<Gtk::CheckButton>())
{
    box.set_use_underline(true);
    box.signal_toggled().connect([this] {
        act([&ticked = tree, on = box.get_active()](UserActions& actions) { actions.tick(ticked, on); });
    });
    describe(box, tree.name(), accessibleName(tree));
}

void CheckBoxControl::show()
{
    box.set_label(shownText(tree));
    box.set_active(tree.flag());
    showState(box);
}

RadioItemControl::RadioItemControl(Widget& treeWidget, DesktopContext& desktopContext,
                                   RadioItemControl* firstOfGroup)
    : Control(treeWidget, desktopContext), button(*Gtk::make_managed<Gtk::RadioButton>())
{
    if (firstOfGroup != nullptr)
        button.join_group(firstOfGroup->button);
    button.set_use_underline(true);
    button.signal_toggled().connect([this] {
        if (button.get_active())
            act([&chosen = tree](UserActions& actions) { actions.tick(chosen, true); });
    });
    describe(button, tree.name(), accessibleName(tree));
}

void RadioItemControl::show()
{
    button.set_label(shownText(tree));
    if (tree.flag())
        button.set_active(true);
    const Widget& group = *tree.parent();
    button.set_visible(tree.visible() && group.visible());
    button.set_sensitive(tree.sensitive() && group.sensitive());
}

void RadioGroupControl::show()
{
    for (Control* item : items)
        item->refresh();
}

ComboBoxControl::Columns::Columns()
{
    add(text);
    add(sensitive);
    add(index);
}

ComboBoxControl::ComboBoxControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), items(Gtk::ListStore::create(columns)),
      combo(*Gtk::make_managed<Gtk::ComboBox>())
{
    combo.set_model(items);
    auto* cell = Gtk::make_managed<Gtk::CellRendererText>();
    combo.pack_start(*cell);
    combo.add_attribute(*cell, "text", columns.text);
    combo.add_attribute(*cell, "sensitive", columns.sensitive);
    combo.signal_changed().connect([this] {
        if (const auto chosen = combo.get_active()) {
            const int index = (*chosen)[columns.index];
            act([&changed = tree, index](UserActions& actions) { actions.choose(changed, index); });
        }
    });
    describe(combo, tree.name(), accessibleName(tree));
}

void ComboBoxControl::show()
{
    showItems();
    const auto rows = items->children();
    const auto chosen = std::find_if(rows.begin(), rows.end(), [this](const Gtk::TreeRow& row) {
        return row[columns.index] == tree.number();
    });
    if (chosen == rows.end())
        combo.unset_active();
    else
        combo.set_active(chosen);
    showState(combo);
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
    if (wanted == shownItems)
        return;
    shownItems = wanted;
    items->clear();
    for (const Item& item : shownItems) {
        Gtk::TreeRow row = *items->append();
        row[columns.text] = item.text;
        row[columns.sensitive] = item.sensitive;
        row[columns.index] = item.index;
    }
}

SpinBoxControl::SpinBoxControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), spin(*Gtk::make_managed<Gtk::SpinButton>())
{
    const auto range = tree.numberRange();
    const int increment = std::max(definedNumber(tree, "AdjIncrement", 1), 1);
    spin.set_adjustment(
        Gtk::Adjustment::create(tree.number(), range->first, range->second, increment, 10.0 * increment));
    spin.set_numeric(true);
    spin.set_alignment(1);
    const auto digits =
        static_cast<int>(std::max(std::to_string(range->first).size(), std::to_string(range->second).size()));
    spin.set_width_chars(digits);
    spin.set_max_width_chars(digits);
    spin.set_activates_default(true);
    spin.signal_value_changed().connect([this] {
        act([&changed = tree, number = spin.get_value_as_int()](UserActions& actions) {
            actions.choose(changed, number);
        });
    });
    describe(spin, tree.name(), accessibleName(tree));
}

void SpinBoxControl::show()
{
    spin.set_value(tree.number());
    showState(spin);
}

} // namespace quelm
