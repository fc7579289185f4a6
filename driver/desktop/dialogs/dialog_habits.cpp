// Finds the buttons behind keys, and the names of controls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/dialog_habits.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace quelm {

namespace {

/// The buttons that keys press in a list; of the two that open a row, the visible one counts.
struct ListKeys {
    std::string_view list;
    std::array<std::string_view, 2> opens;
    std::string_view removes;
};

constexpr std::array<ListKeys, 3> listKeys{{
    {widget_names::lanFaxRecipientList,
     {widget_names::lanFaxDetailsButton, ""},
     widget_names::lanFaxRemoveButton},
    {widget_names::faxPbList, {widget_names::addButton, widget_names::addButton2}, ""},
    {widget_names::faxCurRecipientList,
     {widget_names::curRcptPropButton, ""},
     widget_names::curRcptRemoveButton},
}};

/// Controls that no label stands by.
struct OwnName {
    std::string_view control;
    const char* name;
};

constexpr std::array<OwnName, 4> ownNames{{
    {widget_names::sendAtHr, forTranslation("Hour")},
    {widget_names::sendAtMin, forTranslation("Minute")},
    {widget_names::sendAtAmPm, forTranslation("AM or PM")},
    {widget_names::faxPbList, forTranslation("Phonebook Entries")},
}};

const Widget& windowOf(const Widget& widget)
{
    const Widget* top = &widget;
    while (top->parent() != nullptr)
        top = top->parent();
    return *top;
}

/// All that stands in a widget, in document order.
void collect(const Widget& within, std::vector<Widget*>& found)
{
    for (const auto& child : within.children()) {
        found.push_back(child.get());
        collect(*child, found);
    }
}

std::vector<Widget*> allIn(const Widget& widget)
{
    std::vector<Widget*> found;
    collect(widget, found);
    return found;
}

Widget* named(const Widget& window, std::string_view name)
{
    for (Widget* widget : allIn(window))
        if (!name.empty() && widget->name() == name)
            return widget;
    return nullptr;
}

const ListKeys* keysOf(const Widget& list)
{
    const auto* found = std::find_if(listKeys.begin(), listKeys.end(),
                                     [&list](const ListKeys& keys) { return keys.list == list.name(); });
    return found == listKeys.end() ? nullptr : found;
}

int coordinate(const Widget& widget, std::string_view key)
{
    const std::string* given = widget.attribute(key);
    int value = 0;
    if (given != nullptr)
        std::from_chars(given->data(), given->data() + given->size(), value);
    return value;
}

std::string asName(std::string text)
{
    text = withoutMnemonic(text);
    std::replace(text.begin(), text.end(), '\n', ' ');
    const std::size_t last = text.find_last_not_of(": ");
    return text.substr(0, last == std::string::npos ? 0 : last + 1);
}

bool isField(const Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::textEntry:
    case WidgetKind::comboBoxMain:
    case WidgetKind::spinBox:
    case WidgetKind::scrolledWindowContainer:
        return true;
    default:
        return false;
    }
}

/// The field that a label belongs to: the nearest one that begins right of it or below it.
const Widget* fieldOf(const Widget& label)
{
    constexpr int furthestBelow = 40;
    constexpr int sameColumn = 5;
    constexpr int sameRow = 6;
    const int x = coordinate(label, "XPos");
    const int y = coordinate(label, "YPos");
    const Widget* best = nullptr;
    int bestDistance = 0;
    for (const auto& sibling : label.parent()->children()) {
        if (!isField(*sibling))
            continue;
        const int right = coordinate(*sibling, "XPos") - x;
        const int down = coordinate(*sibling, "YPos") - y;
        const bool isBelow = std::abs(right) <= sameColumn && down > 0 && down <= furthestBelow;
        const bool isBeside = std::abs(down) <= sameRow && right > 0;
        const int distance = isBelow ? down : right;
        if ((isBelow || isBeside) && (best == nullptr || distance < bestDistance)) {
            best = sibling.get();
            bestDistance = distance;
        }
    }
    return best;
}

/// The text of the label that belongs to a field; empty when there is none.
std::string labelText(const Widget& field)
{
    for (const auto& sibling : field.parent()->children())
        if (sibling->kind() == WidgetKind::label && sibling->attribute("Text") != nullptr &&
            fieldOf(*sibling) == &field)
            return shownText(*sibling);
    return "";
}

/// The text of the check box or choice that a field completes: the last one ahead of it.
std::string boxText(const Widget& field)
{
    std::string text;
    for (const auto& sibling : field.parent()->children()) {
        if (sibling.get() == &field)
            break;
        if (sibling->kind() == WidgetKind::checkBox)
            text = shownText(*sibling);
        else if (sibling->kind() == WidgetKind::radioButton && !sibling->items().empty())
            text = shownText(*sibling->items().back());
    }
    return text;
}

bool showsItsName(const Widget& control)
{
    switch (control.kind()) {
    case WidgetKind::button:
    case WidgetKind::toolbarItem:
    case WidgetKind::checkBox:
    case WidgetKind::radioButtonItem:
    case WidgetKind::label:
    case WidgetKind::notebookPage:
        return true;
    default:
        return false;
    }
}

} // namespace

Widget* defaultButton(const Widget& window)
{
    Widget* only = nullptr;
    int count = 0;
    for (Widget* widget : allIn(window)) {
        if (widget->kind() != WidgetKind::button)
            continue;
        if (withoutMnemonic(widget->text()) == "Ok")
            return widget;
        only = widget;
        ++count;
    }
    return count == 1 ? only : nullptr;
}

Widget* buttonBeside(const Widget& field)
{
    const auto& siblings = field.parent()->children();
    const auto self = std::find_if(siblings.begin(), siblings.end(),
                                   [&field](const auto& sibling) { return sibling.get() == &field; });
    const auto next = std::next(self);
    const bool isBeside = next != siblings.end() && (*next)->kind() == WidgetKind::button &&
                          coordinate(**next, "YPos") == coordinate(field, "YPos");
    return isBeside ? next->get() : nullptr;
}

Widget* openingButton(const Widget& list)
{
    const ListKeys* keys = keysOf(list);
    if (keys == nullptr)
        return nullptr;
    for (const std::string_view name : keys->opens) {
        Widget* button = named(windowOf(list), name);
        if (button != nullptr && button->visible())
            return button;
    }
    return nullptr;
}

Widget* removingButton(const Widget& list)
{
    const ListKeys* keys = keysOf(list);
    return keys == nullptr ? nullptr : named(windowOf(list), keys->removes);
}

std::string accessibleName(const Widget& control)
{
    const auto* own = std::find_if(ownNames.begin(), ownNames.end(), [&control](const OwnName& entry) {
        return entry.control == control.name();
    });
    if (own != ownNames.end())
        return translated(own->name);
    if (showsItsName(control) && !control.text().empty())
        return asName(shownText(control));
    if (control.parent() == nullptr)
        return asName(shownText(control));
    // A list is named by what stands at the frame that it scrolls in.
    const bool scrolls = control.parent()->kind() == WidgetKind::scrolledWindowContainer;
    const Widget& placed = scrolls ? *control.parent() : control;
    std::string name = labelText(placed);
    if (name.empty() && control.kind() == WidgetKind::textEntry)
        name = boxText(placed);
    return asName(name.empty() ? shownText(windowOf(control)) : name);
}

bool takesNewFiles(const Widget& chooser) { return chooser.name() == "PersonalPBSelectFileDialog"; }

} // namespace quelm
