// Builds the fake host's widgets from the dialog definition.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/widget_tree.h"

#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace fake {

namespace {

bool isFlag(const std::string& text) { return text == "true"; }

std::unique_ptr<Widget> buildWidget(const rapidxml::xml_node<>& element, Widget* parent)
{
    auto widget = std::make_unique<Widget>();
    widget->kind.assign(element.name(), element.name_size());
    widget->parent = parent;
    for (const auto* a = element.first_attribute(); a != nullptr; a = a->next_attribute())
        widget->attributes[std::string(a->name(), a->name_size())] = std::string(a->value(), a->value_size());

    auto attribute = [&widget](const char* key, const char* otherwise) {
        auto found = widget->attributes.find(key);
        return found == widget->attributes.end() ? std::string(otherwise) : found->second;
    };
    widget->name = attribute("Name", "");
    widget->title = attribute("Title", "");
    widget->callback = attribute("AddCallback", "");
    widget->visible = isFlag(attribute("Visibility", "true"));
    widget->state.sensitive = isFlag(attribute("Sensitivity", "true"));
    if (widget->kind == "TextEntry" || widget->kind == "Label")
        widget->state.text = attribute("Text", "");
    if (widget->kind == "SpinBox")
        widget->state.number = std::atoi(attribute("AdjDefaultValue", "0").c_str());
    for (int column = 1; column <= 6; ++column) {
        std::string key = "AddListColumn" + std::to_string(column);
        if (widget->attributes.contains(key))
            widget->columns.push_back(widget->attributes[key]);
    }
    // The defaults that are not "off": the fastest speed, and asking before doing.
    if (widget->name == "LanFax Send Speed")
        widget->state.number = 2;
    if (widget->name == "LanFax Pref Duplicates" || widget->name == "LanFax Pref Remove One")
        widget->state.ticked = true;
    widget->initial = widget->state;
    widget->handle = GTKObject::Impl::handleFor(*widget);

    for (const auto* child = element.first_node(); child != nullptr; child = child->next_sibling())
        if (child->type() == rapidxml::node_element)
            widget->children.push_back(buildWidget(*child, widget.get()));
    return widget;
}

void visit(const std::vector<std::unique_ptr<Widget>>& widgets, const std::function<void(Widget&)>& use)
{
    for (const auto& widget : widgets) {
        use(*widget);
        visit(widget->children, use);
    }
}

} // namespace

bool Widget::hasMultipleSelection() const
{
    auto mode = attributes.find("SelectionMode");
    return mode != attributes.end() && mode->second == "Multiple";
}

int Widget::lowestSelectedRow() const
{
    return selection.empty() ? -1 : *std::min_element(selection.begin(), selection.end());
}

int Widget::indexInParent() const
{
    int index = 0;
    for (const auto& sibling : parent->children) {
        if (sibling.get() == this)
            return index;
        if (sibling->kind == kind)
            ++index;
    }
    return -1;
}

bool Widget::isShown() const { return visible && (parent == nullptr || parent->isShown()); }
bool Widget::isOperable() const { return state.sensitive && (parent == nullptr || parent->isOperable()); }

Slot slotOf(const Widget& widget, std::string_view property)
{
    const std::string& kind = widget.kind;
    if (property == "Visibility" || property == "Sensitivity")
        return Slot::flag;
    if (property == "WidgetText")
        return kind == "Label" || kind == "TextEntry" ? Slot::text : Slot::none;
    if (property == "Title")
        return kind == "DialogWindow" ? Slot::text : Slot::none;
    if (property != "Value")
        return Slot::none;
    if (kind == "TextEntry" || kind == "FileSelection")
        return Slot::text;
    if (kind == "CheckBox" || kind == "RadioButtonItem")
        return Slot::flag;
    if (kind == "NotebookSet" || kind == "RadioButton" || kind == "ComboBoxMain" || kind == "SpinBox" ||
        kind == "ListBox")
        return Slot::integer;
    return Slot::none;
}

bool WidgetTree::build(const std::string& definition)
{
    std::string copy = definition; // rapidxml parses in place
    rapidxml::xml_document<> document;
    try {
        document.parse<0>(copy.data());
    } catch (const rapidxml::parse_error&) {
        return false;
    }
    const auto* root = document.first_node("XmlGuiDefinition");
    if (root == nullptr)
        return false;
    roots_.clear();
    for (const auto* window = root->first_node(); window != nullptr; window = window->next_sibling())
        if (window->type() == rapidxml::node_element)
            roots_.push_back(buildWidget(*window, nullptr));
    return true;
}

Widget* WidgetTree::find(std::string_view name) const
{
    Widget* found = nullptr;
    visit(roots_, [&](Widget& widget) {
        if (found == nullptr && widget.name == name)
            found = &widget;
    });
    return found;
}

int WidgetTree::countNamed(std::string_view name) const
{
    int count = 0;
    visit(roots_, [&](Widget& widget) { count += widget.name == name ? 1 : 0; });
    return count;
}

std::string withLineBreaks(std::string text)
{
    for (const char* reference : {"&#10;", "&#13;"})
        for (auto at = text.find(reference); at != std::string::npos; at = text.find(reference, at))
            text.replace(at, 5, "\n");
    return text;
}

} // namespace fake
