// Keeps the windows and finds widgets by name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_tree.h"

#include "driver/widgets/definition.h"

#include <algorithm>

namespace quelm {

WidgetTree::WidgetTree()
{
    auto mainWindow = std::make_unique<Widget>(listener(), WidgetKind::mainWindow, mainWindowName,
                                               Widget::Attributes{}, nullptr);
    addWindow(std::move(mainWindow));
}

WidgetTree::~WidgetTree() = default;

bool WidgetTree::build(std::string_view definition)
{
    bool added = false;
    for (std::unique_ptr<Widget>& window : windowsOfDefinition(listener(), definition)) {
        const auto hasThisName = [&window](const std::unique_ptr<Widget>& other) {
            return other->isWindow() && other->name() == window->name();
        };
        if (std::none_of(topLevel_.begin(), topLevel_.end(), hasThisName)) {
            addWindow(std::move(window));
            added = true;
        }
    }
    return added;
}

Widget& WidgetTree::addFileChooser(const Widget& owner, const std::string& title)
{
    Widget::Attributes attributes{{"Title", title}, {"Parent", owner.name()}, {"Visibility", "false"}};
    addWindow(
        std::make_unique<Widget>(listener(), WidgetKind::fileSelection, "", std::move(attributes), nullptr));
    return *topLevel_.back();
}

void WidgetTree::removeFileChooser(Widget& chooser)
{
    for (WidgetObserver* observer : observers_)
        observer->windowRemoved(chooser);
    std::erase_if(names_, [&chooser](const auto& entry) { return entry.second == &chooser; });
    std::erase_if(topLevel_, [&chooser](const auto& window) { return window.get() == &chooser; });
}

void WidgetTree::registerName(const std::string& name, Widget& widget)
{
    if (!name.empty())
        names_.emplace(name, &widget);
}

Widget* WidgetTree::find(std::string_view name) const
{
    const auto found = names_.find(name);
    return found == names_.end() ? nullptr : found->second;
}

void WidgetTree::addObserver(WidgetObserver& observer) { observers_.push_back(&observer); }

void WidgetTree::removeObserver(WidgetObserver& observer) { std::erase(observers_, &observer); }

void WidgetTree::widgetChanged(Widget& widget, WidgetChange what)
{
    for (WidgetObserver* observer : observers_)
        observer->changed(widget, what);
}

void WidgetTree::rowsChanged(Widget& list)
{
    for (WidgetObserver* observer : observers_)
        observer->rowsChanged(list);
}

void WidgetTree::registerNames(Widget& widget)
{
    registerName(widget.name(), widget);
    for (const auto& child : widget.children())
        registerNames(*child);
}

void WidgetTree::addWindow(std::unique_ptr<Widget> window)
{
    topLevel_.push_back(std::move(window));
    registerNames(*topLevel_.back());
    for (WidgetObserver* observer : observers_)
        observer->windowAdded(*topLevel_.back());
}

} // namespace quelm
