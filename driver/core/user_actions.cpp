// Checks and carries out user actions.
#include "driver/core/user_actions.h"

#include "driver/core/error.h"
#include "driver/core/gtk_handle.h"

#include <algorithm>
#include <string>

#include <glib.h>

namespace quelm {

namespace {

std::string quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

std::string described(const Widget& widget)
{
    return std::string(kindName(widget.kind())) + " " + quoted(widget.name());
}

/// The nearest widget, itself or one that it stands in, for which `test` fails.
template <class Test>
const Widget& culprit(const Widget& widget, Test test)
{
    const Widget* candidate = &widget;
    while (test(*candidate)) {
        candidate = candidate->parent();
    }
    return *candidate;
}

[[noreturn]] void refuseHidden(const Widget& widget)
{
    const Widget& hidden = culprit(widget, [](const Widget& candidate) { return candidate.visible(); });
    const std::string where = &hidden == &widget ? "" : ": its " + described(hidden) + " is hidden";
    throw Error(described(widget) + " is not visible" + where);
}

[[noreturn]] void refuseInsensitive(const Widget& widget)
{
    const Widget& insensitive =
        culprit(widget, [](const Widget& candidate) { return candidate.sensitive(); });
    const std::string where =
        &insensitive == &widget ? "" : ": its " + described(insensitive) + " is insensitive";
    throw Error(described(widget) + " is insensitive" + where);
}

void requireTypable(const Widget& field, std::string_view text)
{
    if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) == FALSE) {
        throw Error("the text for " + described(field) + " is not UTF-8");
    }
    const bool hasControl = std::any_of(text.begin(), text.end(), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < 0x20 || code == 0x7F;
    });
    if (hasControl) {
        throw Error("the text for " + described(field) + " holds a line end or another control character");
    }
    const auto length =
        static_cast<std::size_t>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
    if (length > field.maximumLength()) {
        throw Error("the text for " + described(field) + " has " + std::to_string(length) +
                    " characters; the field takes " + std::to_string(field.maximumLength()));
    }
}

} // namespace

void UserActions::requireNoQuestion() const
{
    if (state.questions.top() != nullptr) {
        throw Error("a question is waiting for an answer; answer it first");
    }
}

Widget& UserActions::existing(std::string_view name) const
{
    Widget* widget = state.tree.find(name);
    if (widget == nullptr) {
        throw Error("there is no widget " + quoted(name));
    }
    return *widget;
}

Widget& UserActions::operable(std::string_view name) const
{
    requireNoQuestion();
    Widget& widget = existing(name);
    if (!widget.onScreen()) {
        refuseHidden(widget);
    }
    if (!widget.active()) {
        refuseInsensitive(widget);
    }
    return widget;
}

void UserActions::requireUsableItem(const Widget& item) const
{
    if (!item.visible()) {
        refuseHidden(item);
    }
    if (!item.sensitive()) {
        refuseInsensitive(item);
    }
}

void UserActions::press(std::string_view name)
{
    Widget& widget = operable(name);
    if (widget.kind() == WidgetKind::fileSelection) {
        pressOk(widget);
    } else if (widget.kind() == WidgetKind::button || widget.kind() == WidgetKind::toolbarItem) {
        callbacks.fire(widget);
    } else {
        throw Error(described(widget) + " cannot be pressed; it is no button");
    }
    state.features.keep();
}

void UserActions::pressOk(Widget& chooser)
{
    // The component starts its choosers with a pattern, from which a user first chooses a file.
    const std::string& path = chooser.text();
    const std::string_view file = std::string_view(path).substr(path.rfind('/') + 1);
    if (file.empty() || file.find_first_of("*?[") != std::string_view::npos) {
        throw Error("no file is chosen in " + described(chooser) + "; type its path first");
    }
    if (const HostState::Handler handler = state.handlerFor(chooser, okPart)) {
        callbacks.run(okPart, handler);
    } else {
        chooser.setVisible(false);
    }
}

void UserActions::type(std::string_view name, std::string_view text)
{
    Widget& widget = operable(name);
    const bool isField = widget.kind() == WidgetKind::textEntry;
    if (!isField && widget.kind() != WidgetKind::fileSelection) {
        throw Error(described(widget) + " takes no text");
    }
    const std::string* editable = widget.attribute("Editable");
    if (editable != nullptr && *editable == "false") {
        throw Error(described(widget) + " is read-only");
    }
    requireTypable(widget, text);
    widget.setText(text);
    callbacks.fire(widget);
    state.features.keep();
}

void UserActions::tick(std::string_view name, bool on)
{
    Widget& widget = operable(name);
    if (!widget.hasFlag()) {
        throw Error(described(widget) + " cannot be ticked; it is no check box");
    }
    if (widget.kind() == WidgetKind::radioButtonItem && !on) {
        throw Error(described(widget) + " cannot be unticked; choose another item of its group");
    }
    widget.setFlag(on);
    if (!callbacks.fire(widget) && widget.kind() == WidgetKind::radioButtonItem) {
        callbacks.fire(*widget.parent());
    }
    state.features.keep();
}

void UserActions::choose(std::string_view name, int value)
{
    Widget& widget = operable(name);
    if (!widget.hasNumber() || widget.isList()) {
        throw Error(described(widget) + " offers no choice");
    }
    const auto range = widget.numberRange();
    if (!range || value < range->first || value > range->second) {
        throw Error(
            described(widget) + " has no " + std::to_string(value) +
            (range ? "; it goes from " + std::to_string(range->first) + " to " + std::to_string(range->second)
                   : "; it is empty"));
    }
    if (widget.kind() != WidgetKind::spinBox) {
        requireUsableItem(*widget.items()[static_cast<std::size_t>(value)]);
    }
    widget.setNumber(value);
    callbacks.fire(widget);
    state.features.keep();
}

void UserActions::select(std::string_view name, const std::vector<int>& rows)
{
    Widget& list = operable(name);
    if (!list.isList()) {
        throw Error(described(list) + " has no rows; it is no list");
    }
    if (rows.size() > 1 && !list.isMultipleSelection()) {
        throw Error("only one row of " + described(list) + " can be selected");
    }
    const auto count = list.rows().count();
    std::vector<bool> chosen(count);
    for (const int row : rows) {
        if (row < 0 || static_cast<std::size_t>(row) >= count) {
            throw Error(described(list) + " has no row " + std::to_string(row) + "; it has " +
                        std::to_string(count) + " rows, counted from 0");
        }
        if (chosen[static_cast<std::size_t>(row)]) {
            throw Error("row " + std::to_string(row) + " of " + described(list) + " is named twice");
        }
        chosen[static_cast<std::size_t>(row)] = true;
    }
    list.setSelection(rows);
    callbacks.fire(list);
    state.features.keep();
}

void UserActions::closeWindow(std::string_view name)
{
    requireNoQuestion();
    Widget& window = existing(name);
    if (!window.isWindow()) {
        throw Error(described(window) + " is no window");
    }
    if (!window.visible()) {
        throw Error(described(window) + " is not open");
    }
    if (const HostState::Handler handler = state.handlerFor(window, closeSignal)) {
        callbacks.run(closeSignal, handler);
    } else if (!callbacks.fire(window)) {
        window.setVisible(false);
    }
    state.features.keep();
}

void UserActions::answer(bool yes)
{
    if (!state.questions.answerTop(yes)) {
        throw Error("no question is waiting for an answer");
    }
    state.features.keep();
}

void UserActions::call(std::string_view exportedName)
{
    requireNoQuestion();
    // The one callback that looks at the widget that fired, and cannot do without.
    if (exportedName == "T40LanFaxPreferencesCB") {
        throw Error("T40LanFaxPreferencesCB cannot be called by itself; tick one of its check boxes");
    }
    if (!callbacks.call(std::string(exportedName))) {
        throw Error("the component's export list has no function " + quoted(exportedName));
    }
    state.features.keep();
}

} // namespace quelm
