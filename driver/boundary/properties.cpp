// Reading and setting the properties of a widget.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/properties.h"

#include "base/bounded_text.h"
#include "driver/boundary/host_state.h"

#include <algorithm>
#include <string>

namespace quelm {

namespace {

bool hasShownText(const Widget& widget)
{
    return widget.kind() == WidgetKind::label || widget.kind() == WidgetKind::textEntry ||
           widget.kind() == WidgetKind::dialogWindow;
}

/// A text with line breaks in place of the references that stand for them.
std::string withLineBreaks(std::string_view text)
{
    constexpr std::string_view references[] = {"&#10;", "&#13;"};
    std::string result;
    while (!text.empty()) {
        const auto* reference =
            std::find_if(std::begin(references), std::end(references),
                         [text](std::string_view candidate) { return text.starts_with(candidate); });
        const bool found = reference != std::end(references);
        result += found ? '\n' : text.front();
        text.remove_prefix(found ? reference->size() : 1);
    }
    return result;
}

bool writeText(Widget& widget, std::string_view property, std::string_view text)
{
    // Only a label shows lines. A text field holds what a user typed or a phonebook says, byte for
    // byte, and the job would otherwise carry something else.
    if (widget.kind() == WidgetKind::label && property == "WidgetText")
        widget.setText(withLineBreaks(text));
    else
        widget.setText(text);
    return true;
}

bool writeInteger(Widget& widget, int integer)
{
    const auto range = widget.numberRange();
    if (widget.kind() == WidgetKind::spinBox)
        return widget.setNumber(std::clamp(integer, range->first, range->second));
    return widget.setNumber(integer);
}

bool writeFlag(Widget& widget, std::string_view property, bool flag)
{
    const HostState* state = HostState::current();
    const bool isKept = widget.isWindow() && state != nullptr && state->keepsWindows;
    if (property == "Visibility" && isKept)
        return true;
    if (property == "Visibility")
        widget.setVisible(flag);
    else if (property == "Sensitivity")
        widget.setSensitive(flag);
    else
        widget.setFlag(flag);
    return true;
}

} // namespace

std::optional<Slot> slotOf(const Widget& widget, std::string_view property)
{
    if (property == "Visibility" || property == "Sensitivity")
        return Slot::flag;
    if (property == "WidgetText" || property == "Title")
        return hasShownText(widget) ? std::optional(Slot::text) : std::nullopt;
    if (property != "Value")
        return std::nullopt;
    if (widget.hasFlag())
        return Slot::flag;
    if (widget.hasNumber())
        return Slot::integer;
    const bool holdsText =
        widget.kind() == WidgetKind::textEntry || widget.kind() == WidgetKind::fileSelection;
    return holdsText ? std::optional(Slot::text) : std::nullopt;
}

bool readProperty(const Widget& widget, std::string_view property, char* text, int* integer, bool* flag)
{
    const std::optional<Slot> slot = slotOf(widget, property);
    if (slot == Slot::text && text != nullptr) {
        copyBounded(widget.text(), text, boundedTextSize);
        return true;
    }
    if (slot == Slot::integer && integer != nullptr) {
        *integer = widget.number();
        return true;
    }
    if (slot == Slot::flag && flag != nullptr) {
        *flag = property == "Visibility"    ? widget.visible()
                : property == "Sensitivity" ? widget.sensitive()
                                            : widget.flag();
        return true;
    }
    return false;
}

bool writeProperty(Widget& widget, std::string_view property, const char* text, int integer,
                   bool flag) noexcept
{
    return atBoundary(false, [&] {
        const std::optional<Slot> slot = slotOf(widget, property);
        if (slot == Slot::text)
            return writeText(widget, property, text == nullptr ? "" : text);
        if (slot == Slot::integer)
            return writeInteger(widget, integer);
        return slot == Slot::flag && writeFlag(widget, property, flag);
    });
}

} // namespace quelm
