// The widget side of the fake host's boundary: the director, widgets by name, and widget objects.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/director.h"
#include "host/fax_session.h"
#include "host/gtk_object.h"
#include "host/texts.h"
#include "host/widgets.h"
#include "tests/support/fake_host.h"

#include <algorithm>

using fake::fakeHost;
using fake::Journal;
using fake::Op;
using fake::quoted;
using fake::Slot;
using fake::Widget;

namespace {

ComponentDirector theDirector;

void effect(std::string entry) { fakeHost().journal.add(Journal::Kind::effect, std::move(entry)); }
void read(std::string entry) { fakeHost().journal.add(Journal::Kind::read, std::move(entry)); }

const char* onOff(bool flag) { return flag ? "on" : "off"; }

/// The values that a caller hands over for the slots that do not suit are to be 0.
std::string strayValues(Slot slot, const char* text, float number, int integer, bool flag)
{
    const bool stray = number != 0.0F || (slot != Slot::text && text != nullptr) ||
                       (slot != Slot::integer && integer != 0) || (slot != Slot::flag && flag);
    return stray ? " with stray values" : "";
}

std::string valueText(Slot slot, const char* text, int integer, bool flag)
{
    switch (slot) {
    case Slot::text:
        return fake::quoted(text);
    case Slot::integer:
        return std::to_string(integer);
    case Slot::flag:
        return onOff(flag);
    default:
        return "?";
    }
}

bool setProperty(Widget& widget, std::string_view property, const char* text, int integer, bool flag)
{
    const Slot slot = slotOf(widget, property);
    if (slot == Slot::none || (slot == Slot::text && text == nullptr))
        return false;
    if (property == "Visibility")
        widget.visible = flag;
    else if (property == "Sensitivity")
        widget.state.sensitive = flag;
    else if (property == "Title")
        widget.title = text;
    else if (property == "WidgetText")
        widget.state.text = fake::withLineBreaks(text);
    else if (slot == Slot::text)
        widget.state.text = text;
    else if (widget.kind == "RadioButtonItem" && flag)
        widget.parent->state.number = widget.indexInParent();
    else if (slot == Slot::flag)
        widget.state.ticked = flag;
    else if (widget.isList())
        widget.selection = integer < 0 ? std::vector<int>{} : std::vector<int>{integer};
    else
        widget.state.number = integer;
    return true;
}

/// Reads into the slot that suits; "failed" in the journal when there is none.
bool getProperty(Widget& widget, std::string_view property, char* text, int* integer, bool* flag,
                 std::string& shown)
{
    const Slot slot = slotOf(widget, property);
    if (slot == Slot::text && text != nullptr) {
        const std::string& value = property == "Title" ? widget.title : widget.state.text;
        fake::writeBounded(text, value);
        shown = fake::quoted(text);
        return true;
    }
    if (slot == Slot::integer && integer != nullptr) {
        *integer = fakeHost().number(widget.name);
        shown = std::to_string(*integer);
        return true;
    }
    if (slot == Slot::flag && flag != nullptr) {
        *flag = property == "Visibility"    ? widget.visible
                : property == "Sensitivity" ? widget.state.sensitive
                                            : fakeHost().ticked(widget.name);
        shown = onOff(*flag);
        return true;
    }
    return false;
}

/// A selected row of a multiple-selection list, one a call.
bool nextSelectedRow(Widget& list, int* number, bool first)
{
    if (first)
        list.walk = 0;
    if (number == nullptr || list.walk >= list.selection.size())
        return false;
    *number = list.selection[list.walk++];
    return true;
}

std::string nameOf(const GTKObject::Impl& object)
{
    return object.widget != nullptr && !object.widget->name.empty() ? object.widget->name : object.objectName;
}

} // namespace

extern "C" {
ComponentDirector* pDriverDirector = &theDirector;
Tarvik40Fax* pFaxSession = nullptr;

GTKObject* GetWidgetByName(char* name)
{
    GTKObject* handle = fakeHost().handleOf(name);
    read("find " + fake::quoted(name) + (handle != nullptr ? "" : " -> none"));
    return handle;
}

bool GetWidgetPropertyByName(char* name, char* property, char* text, float*, int* integer, bool* flag)
{
    Widget* widget = fakeHost().lookUp(name);
    std::string shown = "failed";
    const bool done = widget != nullptr && !fakeHost().faults.hits(Op::readProperty, name) &&
                      getProperty(*widget, property, text, integer, flag, shown);
    read("get " + fake::quoted(name) + " " + property + " -> " + shown);
    return done;
}

bool SetWidgetPropertyByName(char* name, char* property, char* text, float number, int integer, bool flag)
{
    Widget* widget = fakeHost().lookUp(name);
    const Slot slot = widget != nullptr ? slotOf(*widget, property) : Slot::none;
    effect("set " + fake::quoted(name) + " " + property + " " + valueText(slot, text, integer, flag) +
           strayValues(slot, text, number, integer, flag));
    return widget != nullptr && !fakeHost().faults.hits(Op::setProperty, name) &&
           setProperty(*widget, property, text, integer, flag);
}
}

bool ComponentDirector::parseXMLBuffer(char* text)
{
    effect("parseXMLBuffer");
    fakeHost().parsedText = text;
    return !fakeHost().faults.hits(Op::parse, {}) && fakeHost().tree.build(text);
}

bool ComponentDirector::registerResource(char* name, void* object)
{
    effect("registerResource " + fake::quoted(name));
    if (fakeHost().faults.hits(Op::registerResource, name))
        return false;
    fakeHost().resources[name] = object;
    return true;
}

GTKObject::Impl& GTKObject::Impl::of(GTKObject& object) { return *object.impl; }

std::unique_ptr<GTKObject> GTKObject::Impl::handleFor(Widget& widget)
{
    auto handle = std::make_unique<GTKObject>();
    handle->impl->widget = &widget;
    return handle;
}

GTKObject::GTKObject() : impl(new Impl) {}
GTKObject::~GTKObject() { delete impl; }

bool GTKObject::createObject(GTKObject* parent, char* type, char** columns)
{
    Widget* list = parent != nullptr ? parent->impl->widget : nullptr;
    if (list == nullptr || !list->isList() || std::string_view(type) != "ListItem")
        return false;
    std::vector<std::string> cells;
    std::string shown;
    std::size_t written = 0; // cells in `shown`
    const std::size_t most = fakeHost().readsRowsByColumnCount ? list->columns.size() : 64;
    for (std::size_t i = 0; i < most; ++i) {
        const char* cell = columns[i];
        if (cell == nullptr && !fakeHost().readsRowsByColumnCount)
            break;
        cells.emplace_back(cell != nullptr ? cell : "");
        if (cell == nullptr)
            continue;
        for (; written < i; ++written)
            shown += " null";
        shown += " " + (cell == pEmptyString ? "empty" : fake::quoted(cell));
        ++written;
    }
    effect("addRow " + fake::quoted(list->name) + shown);
    fakeHost().rowFactories.insert(this);
    if (fakeHost().faults.hits(Op::createRow, list->name))
        return false;
    cells.resize(list->columns.size());
    list->rows.push_back(std::move(cells));
    return true;
}

bool GTKObject::createObject(GTKObject* parent, char* type, char* title, bool flag)
{
    effect("createFileChooser " + fake::quoted(title) + " over " +
           fake::quoted(parent != nullptr ? nameOf(*parent->impl) : "") + (flag ? " flag" : ""));
    if (std::string_view(type) != "FileSelection" || fakeHost().faults.hits(Op::createChooser, {}))
        return false;
    impl->ownWidget = std::make_unique<Widget>();
    impl->widget = impl->ownWidget.get();
    impl->widget->kind = type;
    impl->widget->title = title;
    impl->widget->visible = false;
    return true;
}

void GTKObject::clearListItems()
{
    if (impl->widget == nullptr)
        return;
    effect("clearRows " + fake::quoted(impl->widget->name));
    impl->widget->rows.clear();
    impl->widget->selection.clear();
    impl->widget->walk = 0;
}

void GTKObject::setObjectName(char* name)
{
    effect("nameObject " + fake::quoted(name));
    impl->objectName = name;
    if (impl->ownWidget)
        impl->ownWidget->name = name;
}

char* GTKObject::getObjectName()
{
    impl->objectName = nameOf(*impl);
    read("objectName -> " + fake::quoted(impl->objectName));
    return impl->objectName.data();
}

void GTKObject::addGTKObjectToList(char* name)
{
    effect("registerObject " + fake::quoted(name));
    fakeHost().registeredObjects[name] = this;
}

bool GTKObject::setWidgetProperty(char* property, char* part, void (*callback)())
{
    effect("connect " + fake::quoted(nameOf(*impl)) + " " + property + " " + fake::quoted(part));
    if (impl->widget == nullptr || std::string_view(property) != "FileSelButtonCBFunc")
        return false;
    if (std::string_view(part) == "ok_button")
        impl->widget->onOk = callback;
    else if (std::string_view(part) == "cancel_button")
        impl->widget->onCancel = callback;
    else
        return false;
    return true;
}

bool GTKObject::setWidgetProperty(char* property, char* value)
{
    effect("set " + fake::quoted(nameOf(*impl)) + " " + property + " " + fake::quoted(value));
    return impl->widget != nullptr && !fakeHost().faults.hits(Op::setProperty, nameOf(*impl)) &&
           setProperty(*impl->widget, property, value, 0, false);
}

bool GTKObject::setWidgetProperty(char* property, bool value)
{
    effect("set " + fake::quoted(nameOf(*impl)) + " " + property + " " + onOff(value));
    return impl->widget != nullptr && !fakeHost().faults.hits(Op::setProperty, nameOf(*impl)) &&
           slotOf(*impl->widget, property) == Slot::flag &&
           setProperty(*impl->widget, property, nullptr, 0, value);
}

bool GTKObject::getWidgetProperty(char* property, bool* value)
{
    return getWidgetProperty(property, nullptr, nullptr, nullptr, value);
}

bool GTKObject::getWidgetProperty(char* property, char* text, float*, int* number, bool* flag)
{
    Widget* widget = impl->widget;
    std::string shown = "failed";
    bool done = false;
    if (widget != nullptr && !fakeHost().faults.hits(Op::readProperty, widget->name)) {
        if (widget->isList() && widget->hasMultipleSelection() && std::string_view(property) == "Value" &&
            flag != nullptr) {
            done = nextSelectedRow(*widget, number, *flag);
            shown = done ? std::to_string(*number) : "none left";
        } else {
            done = getProperty(*widget, property, text, number, flag, shown);
        }
    }
    read("get " + fake::quoted(nameOf(*impl)) + " " + property + " -> " + shown);
    return done;
}

void GTKObject::setSignalHandler(void (*callback)(), char* signal)
{
    effect("connect " + fake::quoted(nameOf(*impl)) + " signal " + fake::quoted(signal));
    if (impl->widget != nullptr && std::string_view(signal) == "delete_event")
        impl->widget->onDelete = callback;
}

void GTKObject::setListFreezeState(bool frozen)
{
    effect((frozen ? "freeze " : "unfreeze ") + fake::quoted(nameOf(*impl)));
    if (impl->widget != nullptr)
        impl->widget->frozen = frozen;
}

bool GTKObject::getListItemData(char** text, int column, int row)
{
    read("cell " + fake::quoted(nameOf(*impl)) + " " + std::to_string(column) + " of row " +
         std::to_string(row));
    if (impl->widget == nullptr || fakeHost().faults.hits(Op::readCell, nameOf(*impl)))
        return false;
    auto& rows = impl->widget->rows;
    if (row < 0 || row >= static_cast<int>(rows.size()))
        return false;
    auto& cells = rows[static_cast<std::size_t>(row)];
    if (column < 0 || column >= static_cast<int>(cells.size()))
        return false;
    std::string& cell = cells[static_cast<std::size_t>(column)];
    if (fakeHost().pointsAtCells)
        *text = cell.data();
    else
        fake::writeBounded(*text, cell);
    return true;
}

bool GTKObject::getListSelectionCount(int& count)
{
    if (impl->widget == nullptr || !impl->widget->isList() ||
        fakeHost().faults.hits(Op::countSelection, nameOf(*impl))) {
        read("selectionCount " + fake::quoted(nameOf(*impl)) + " -> failed");
        return false;
    }
    count = static_cast<int>(impl->widget->selection.size());
    read("selectionCount " + fake::quoted(nameOf(*impl)) + " -> " + std::to_string(count));
    return true;
}

void GTKObject::sortIntegerGList(bool ascending)
{
    effect("sortSelection " + fake::quoted(nameOf(*impl)) + (ascending ? " ascending" : " descending"));
    if (impl->widget == nullptr)
        return;
    auto& selection = impl->widget->selection;
    std::sort(selection.begin(), selection.end());
    if (!ascending)
        std::reverse(selection.begin(), selection.end());
}
