// Walks the dialogs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_list.h"

#include "driver/cli/script/script_json.h"
#include "driver/cli/script/script_parser.h"
#include "driver/core/driver.h"
#include "driver/core/user_actions.h"
#include "driver/plugin/component_library.h"
#include "driver/widgets/widget_label.h"
#include "driver/widgets/widget_names.h"
#include "driver/widgets/widget_tree.h"

#include <algorithm>

namespace quelm {
namespace {

/// What can be done with a widget of that kind, beside `show`; nothing for one that only holds others.
std::vector<std::string> verbsOf(const Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::dialogWindow:
        return {"close"};
    case WidgetKind::button:
    case WidgetKind::toolbarItem:
        return {"press"};
    case WidgetKind::checkBox:
    case WidgetKind::radioButtonItem:
        return {"tick"};
    case WidgetKind::radioButton:
    case WidgetKind::comboBoxMain:
    case WidgetKind::spinBox:
    case WidgetKind::notebookSet:
        return {"choose"};
    case WidgetKind::textEntry: {
        const std::string* editable = widget.attribute("Editable");
        return editable != nullptr && *editable == "false" ? std::vector<std::string>()
                                                           : std::vector<std::string>{"type"};
    }
    case WidgetKind::listBox:
        return {"select", "rows"};
    default:
        return {};
    }
}

bool isListed(const Widget& widget)
{
    return widget.kind() == WidgetKind::label || widget.kind() == WidgetKind::textEntry ||
           !verbsOf(widget).empty();
}

ListedWidget listed(const Widget& widget)
{
    ListedWidget result;
    result.view = viewOf(widget);
    if (widget.name() == widget_names::lanFaxCreditCardInfo)
        result.view.text.reset();
    result.window = windowOf(widget).name();
    result.label = labelText(widget);
    result.verbs = verbsOf(widget);
    if (std::ranges::find(result.verbs, "choose") != result.verbs.end())
        result.numbers = widget.numberRange();
    if (std::ranges::find(result.verbs, "type") != result.verbs.end())
        result.longest = widget.maximumLength();
    result.verbs.emplace_back("show");
    if (const std::string* callback = widget.attribute("AddCallback"))
        result.callback = *callback;
    return result;
}

/// A name that occurs more than once means the first widget: the others cannot be named.
void collect(const Widget& widget, const WidgetTree& tree, std::vector<ListedWidget>& widgets)
{
    if (isListed(widget) && !widget.name().empty() && tree.find(widget.name()) == &widget)
        widgets.push_back(listed(widget));
    for (const auto& child : widget.children())
        collect(*child, tree, widgets);
}

std::string textOf(const ListedWidget& widget)
{
    std::string line = "widget " + inQuotes(widget.view.name) + " kind " + widget.view.kind + " window " +
                       inQuotes(widget.window) + " label " + inQuotes(widget.label);
    for (const auto& verb : widget.verbs)
        line += " " + verb;
    if (widget.view.ticked)
        line += std::string(" ticked ") + (*widget.view.ticked ? "yes" : "no");
    if (widget.view.value && widget.numbers)
        line += " value " + std::to_string(*widget.view.value) + " from " +
                std::to_string(widget.numbers->first) + " to " + std::to_string(widget.numbers->second);
    if (!widget.view.items.empty())
        line += " items";
    for (const auto& item : widget.view.items)
        line += " " + inQuotes(item);
    if (widget.longest && widget.view.text)
        line += " text " + inQuotes(*widget.view.text);
    if (widget.longest)
        line += " longest " + std::to_string(*widget.longest);
    if (!widget.callback.empty())
        line += " fires " + widget.callback;
    return line + "\n";
}

} // namespace

ScriptNames scriptNames(Driver& driver)
{
    ScriptNames names;
    for (const auto& window : driver.widgets().windows())
        if (window->isWindow())
            collect(*window, driver.widgets(), names.widgets);
    std::ranges::copy_if(driver.component().exportList(), std::back_inserter(names.functions),
                         [&](const auto& function) { return driver.actions().canCall(function); });
    return names;
}

std::string namesText(const ScriptNames& names)
{
    std::string text;
    for (const auto& widget : names.widgets)
        text += textOf(widget);
    for (const auto& function : names.functions)
        text += "function " + function + "\n";
    return text;
}

std::string namesJson(const ScriptNames& names)
{
    using Json = nlohmann::ordered_json;
    Json json = {{"widgets", Json::array()}, {"functions", names.functions}};
    for (const auto& widget : names.widgets) {
        Json one = widgetObject(widget.view);
        one["window"] = widget.window;
        one["label"] = widget.label;
        one["verbs"] = widget.verbs;
        if (widget.numbers)
            one["numbers"] = {widget.numbers->first, widget.numbers->second};
        if (widget.longest)
            one["longest"] = *widget.longest;
        if (!widget.callback.empty())
            one["fires"] = widget.callback;
        json["widgets"].push_back(one);
    }
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace quelm
