// Finds the buttons behind keys, and the names of controls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/dialog_habits.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/widgets/widget_label.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <array>
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
    const Widget& label = labelOf(control);
    const std::string text = shownText(label);
    // What the component left without a text.
    return plainLabel(text.empty() ? shownText(windowOf(control)) : text);
}

bool takesNewFiles(const Widget& chooser) { return chooser.name() == "PersonalPBSelectFileDialog"; }

} // namespace quelm
