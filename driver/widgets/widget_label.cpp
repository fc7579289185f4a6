// Finds the texts that stand by widgets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_label.h"

#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace quelm {
namespace {

bool isField(const Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::textEntry:
    case WidgetKind::comboBoxMain:
    case WidgetKind::radioButton:
    case WidgetKind::spinBox:
    case WidgetKind::scrolledWindowContainer:
        return true;
    default:
        return false;
    }
}

/// Where a field begins: a group of choices with its first one.
const Widget& beginningOf(const Widget& field)
{
    const bool isGroup = field.kind() == WidgetKind::radioButton && !field.items().empty();
    return isGroup ? *field.items().front() : field;
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
        const int right = coordinate(beginningOf(*sibling), "XPos") - x;
        const int down = coordinate(beginningOf(*sibling), "YPos") - y;
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

/// The label that belongs to a field; null when there is none.
const Widget* labelBy(const Widget& field)
{
    for (const auto& sibling : field.parent()->children())
        if (sibling->kind() == WidgetKind::label && sibling->attribute("Text") != nullptr &&
            fieldOf(*sibling) == &field)
            return sibling->text().empty() ? nullptr : sibling.get();
    return nullptr;
}

/// The check box or choice that a field completes: the last one ahead of it.
const Widget* boxBy(const Widget& field)
{
    const Widget* box = nullptr;
    for (const auto& sibling : field.parent()->children()) {
        if (sibling.get() == &field)
            break;
        if (sibling->kind() == WidgetKind::checkBox)
            box = sibling.get();
        else if (sibling->kind() == WidgetKind::radioButton && !sibling->items().empty())
            box = sibling->items().back();
    }
    return box != nullptr && box->text().empty() ? nullptr : box;
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

const Widget& windowOf(const Widget& widget)
{
    const Widget* top = &widget;
    while (top->parent() != nullptr)
        top = top->parent();
    return *top;
}

const Widget& labelOf(const Widget& control)
{
    if (control.parent() == nullptr || (showsItsName(control) && !control.text().empty()))
        return control;
    // A list is named by what stands at the frame that it scrolls in.
    const bool scrolls = control.parent()->kind() == WidgetKind::scrolledWindowContainer;
    const Widget& placed = scrolls ? *control.parent() : control;
    if (placed.parent() == nullptr)
        return placed;
    if (const Widget* label = labelBy(placed))
        return *label;
    if (control.kind() == WidgetKind::textEntry)
        if (const Widget* box = boxBy(placed))
            return *box;
    return windowOf(control);
}

std::string labelText(const Widget& control)
{
    const Widget& label = labelOf(control);
    if (label.kind() == WidgetKind::fileSelection) {
        const std::string* title = label.attribute("Title");
        return title == nullptr ? std::string() : oneLine(*title);
    }
    return oneLine(plainLabel(translated(label.text().c_str())));
}

int coordinate(const Widget& widget, std::string_view key)
{
    const std::string* given = widget.attribute(key);
    int value = 0;
    if (given != nullptr)
        std::from_chars(given->data(), given->data() + given->size(), value);
    return value;
}

std::string plainLabel(std::string text)
{
    text = withoutMnemonic(text);
    std::replace(text.begin(), text.end(), '\n', ' ');
    const std::size_t last = text.find_last_not_of(": ");
    return text.substr(0, last == std::string::npos ? 0 : last + 1);
}

std::string withoutMnemonic(std::string_view text)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '_' && index + 1 < text.size())
            ++index;
        result += text[index];
    }
    return result;
}

} // namespace quelm
