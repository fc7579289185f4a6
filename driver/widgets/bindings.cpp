// The table of bindings, and applying it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/bindings.h"

#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quelm {

namespace {

/// An option that must have a value: an index, or 1 for a ticked box.
struct Condition {
    std::string_view option;
    int value = 0;
};

/// `targets` are sensitive exactly when all conditions hold. Unused places are empty.
struct Rule {
    std::array<Condition, 2> conditions;
    std::array<std::string_view, 3> targets;
};

constexpr std::array<Rule, 7> rules{{
    {{{{widget_names::lanFaxCoverSheetOption, 1}}},
     {widget_names::lanFaxSetupCoverSheetButton, widget_names::lanFaxCoverSheetNotes}},
    {{{{widget_names::showRcptInfoCheckbox, 1}}},
     {widget_names::showAllRcptInfo, widget_names::showCustomText}},
    // Item 1 of "Show Rcpt Info" is "Show Custom Text".
    {{{{widget_names::showRcptInfoCheckbox, 1}, {widget_names::showRcptInfo, 1}}},
     {widget_names::coverSheetCustomText}},
    {{{{widget_names::showSenderInfoCheckbox, 1}}},
     {widget_names::senderPropertiesButton, widget_names::senderInfo}},
    {{{{widget_names::lanFaxSendTime, 1}}},
     {widget_names::sendAtHr, widget_names::sendAtMin, widget_names::sendAtAmPm}},
    {{{{widget_names::lanFaxDialingPrefix, 1}}}, {widget_names::lanFaxDialingPrefixInfo}},
    {{{{widget_names::lanFaxCreditCard, 1}}}, {widget_names::lanFaxCreditCardInfo}},
}};

int valueOf(const Widget& option) { return option.hasFlag() ? (option.flag() ? 1 : 0) : option.number(); }

bool holds(const WidgetTree& tree, const Condition& condition)
{
    if (condition.option.empty())
        return true;
    const Widget* option = tree.find(condition.option);
    return option != nullptr && valueOf(*option) == condition.value;
}

void apply(const WidgetTree& tree, const Rule& rule)
{
    const bool sensitive =
        std::all_of(rule.conditions.begin(), rule.conditions.end(),
                    [&tree](const Condition& condition) { return holds(tree, condition); });
    for (const std::string_view name : rule.targets)
        if (Widget* target = tree.find(name))
            target->setSensitive(sensitive);
}

} // namespace

Bindings::Bindings(WidgetTree& widgetTree) : tree_(widgetTree) { tree_.addObserver(*this); }

Bindings::~Bindings() { tree_.removeObserver(*this); }

void Bindings::applyAll()
{
    for (const Rule& rule : rules)
        apply(tree_, rule);
}

void Bindings::changed(Widget& widget, WidgetChange what)
{
    if (what != WidgetChange::value)
        return;
    for (const Rule& rule : rules) {
        const bool dependsOnIt = std::any_of(
            rule.conditions.begin(), rule.conditions.end(), [&widget](const Condition& condition) {
                return !condition.option.empty() && condition.option == widget.name();
            });
        if (dependsOnIt)
            apply(tree_, rule);
    }
}

} // namespace quelm
