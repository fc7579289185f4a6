// What host/gtk_object.h declares: handles on widgets, factories of rows, file choosers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/gtk_object.h"

#include "base/bounded_text.h"
#include "driver/boundary/gtk_handle.h"
#include "driver/boundary/host_state.h"
#include "driver/boundary/properties.h"

#include <cstring>
#include <string>
#include <string_view>

struct GTKObject::Impl {
    std::weak_ptr<const void> lifetime;
    quelm::HostState* state = nullptr;
    quelm::Widget* target = nullptr;
    bool isChooser = false; // the widget was made for this object, and goes with it
    std::string name;       // of an object that stands for no widget

    quelm::Widget* widget() const { return lifetime.expired() ? nullptr : target; }

    static Impl* of(GTKObject* object) { return object == nullptr ? nullptr : object->impl; }
};

namespace quelm {

namespace {

std::string_view textOf(const char* text) { return text == nullptr ? std::string_view() : text; }

Widget* listOf(GTKObject* handle)
{
    Widget* widget = widgetOf(handle);
    return widget != nullptr && widget->isList() ? widget : nullptr;
}

} // namespace

void pointHandleAt(GTKObject& handle, HostState& state, Widget& widget)
{
    GTKObject::Impl& impl = *GTKObject::Impl::of(&handle);
    impl.lifetime = state.lifetime();
    impl.state = &state;
    impl.target = &widget;
}

Widget* widgetOf(GTKObject* handle)
{
    const GTKObject::Impl* impl = GTKObject::Impl::of(handle);
    return impl == nullptr ? nullptr : impl->widget();
}

} // namespace quelm

using quelm::atBoundary;
using quelm::listOf;
using quelm::textOf;
using quelm::Widget;

GTKObject::GTKObject() : impl(new Impl) {}

GTKObject::~GTKObject()
{
    Widget* widget = impl->widget();
    if (impl->isChooser && widget != nullptr) {
        impl->state->forget(*widget);
        impl->state->tree.removeFileChooser(*widget);
    }
    delete impl;
}

bool GTKObject::createObject(GTKObject* parent, char* type, char** columns)
{
    Widget* list = listOf(parent);
    if (list == nullptr || textOf(type) != "ListItem")
        return false;
    return atBoundary(false, [&] {
        list->addRow(columns);
        return true;
    });
}

bool GTKObject::createObject(GTKObject* parent, char* type, char* title, bool /*flag*/)
{
    const Widget* owner = quelm::widgetOf(parent);
    if (owner == nullptr || textOf(type) != "FileSelection" || impl->widget() != nullptr)
        return false;
    return atBoundary(false, [&] {
        quelm::HostState& state = *Impl::of(parent)->state;
        Widget& chooser = state.tree.addFileChooser(*owner, std::string(textOf(title)));
        chooser.rename(impl->name);
        quelm::pointHandleAt(*this, state, chooser);
        impl->isChooser = true;
        state.adoptHandle(chooser, *this);
        return true;
    });
}

void GTKObject::clearListItems()
{
    if (Widget* list = listOf(this))
        list->clearRows();
}

void GTKObject::setObjectName(char* name)
{
    atBoundary(false, [&] {
        // A widget of the definition keeps its name: the driver finds callbacks and features by it.
        Widget* widget = impl->widget();
        if (widget == nullptr)
            impl->name = textOf(name);
        else if (impl->isChooser)
            widget->rename(std::string(textOf(name)));
        return true;
    });
}

char* GTKObject::getObjectName()
{
    const Widget* widget = impl->widget();
    return const_cast<char*>((widget != nullptr ? widget->name() : impl->name).c_str());
}

void GTKObject::addGTKObjectToList(char* name)
{
    atBoundary(false, [&] {
        Widget* widget = impl->widget();
        if (widget != nullptr)
            impl->state->tree.registerName(std::string(textOf(name)), *widget);
        return widget != nullptr;
    });
}

bool GTKObject::setWidgetProperty(char* property, char* part, void (*callback)())
{
    const Widget* widget = impl->widget();
    const bool knownPart = textOf(part) == quelm::okPart || textOf(part) == quelm::cancelPart;
    if (widget == nullptr || !impl->isChooser || textOf(property) != "FileSelButtonCBFunc" || !knownPart)
        return false;
    return atBoundary(false, [&] {
        impl->state->setHandler(*widget, part, callback);
        return true;
    });
}

bool GTKObject::setWidgetProperty(char* property, char* value)
{
    Widget* widget = impl->widget();
    return widget != nullptr && quelm::slotOf(*widget, textOf(property)) == quelm::Slot::text &&
           quelm::writeProperty(*widget, textOf(property), value, 0, false);
}

bool GTKObject::setWidgetProperty(char* property, bool value)
{
    Widget* widget = impl->widget();
    return widget != nullptr && quelm::slotOf(*widget, textOf(property)) == quelm::Slot::flag &&
           quelm::writeProperty(*widget, textOf(property), nullptr, 0, value);
}

bool GTKObject::getWidgetProperty(char* property, bool* value)
{
    const Widget* widget = impl->widget();
    return widget != nullptr && quelm::readProperty(*widget, textOf(property), nullptr, nullptr, value);
}

bool GTKObject::getWidgetProperty(char* property, char* text, float* /*real*/, int* number, bool* flag)
{
    Widget* widget = impl->widget();
    if (widget == nullptr)
        return false;
    if (!widget->isMultipleSelection() || textOf(property) != "Value")
        return quelm::readProperty(*widget, textOf(property), text, number, flag);
    if (number == nullptr)
        return false;
    const std::optional<int> row = widget->nextSelected(flag == nullptr || *flag);
    if (row)
        *number = *row;
    return row.has_value();
}

void GTKObject::setSignalHandler(void (*callback)(), char* signal)
{
    atBoundary(false, [&] {
        const Widget* widget = impl->widget();
        if (widget != nullptr)
            impl->state->setHandler(*widget, std::string(textOf(signal)), callback);
        return widget != nullptr;
    });
}

void GTKObject::setListFreezeState(bool frozen)
{
    if (Widget* list = listOf(this))
        list->freeze(frozen);
}

bool GTKObject::getListItemData(char** text, int column, int row)
{
    const Widget* list = listOf(this);
    if (text == nullptr || list == nullptr || column < 0 || row < 0)
        return false;
    const quelm::Rows& rows = list->rows();
    const auto columnIndex = static_cast<std::size_t>(column);
    const auto rowIndex = static_cast<std::size_t>(row);
    if (columnIndex >= rows.columnCount() || rowIndex >= rows.count())
        return false;
    const char* cell = rows.cell(rowIndex, columnIndex);
    if (*text == nullptr)
        *text = const_cast<char*>(cell);
    else
        quelm::copyBounded(cell, *text, quelm::boundedTextSize);
    return true;
}

bool GTKObject::getListSelectionCount(int& count)
{
    const Widget* list = listOf(this);
    if (list != nullptr)
        count = static_cast<int>(list->selection().size());
    return list != nullptr;
}

void GTKObject::sortIntegerGList(bool ascending)
{
    if (Widget* list = listOf(this))
        list->sortSelection(ascending);
}
