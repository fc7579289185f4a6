// Checks and carries out user actions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/user_actions.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/boundary/gtk_handle.h"
#include "driver/widgets/widget_label.h"

#include <glib.h>

#include <algorithm>
#include <string>

namespace quelm {

namespace {

/// The nearest widget, itself or one that it stands in, for which `test` fails.
template <class Test>
const Widget& culprit(const Widget& widget, Test test)
{
    const Widget* candidate = &widget;
    while (test(*candidate))
        candidate = candidate->parent();
    return *candidate;
}

} // namespace

Error missingWidget(std::string_view name, bool isNamed)
{
    return Error(isNamed
                     ? localized("there is no widget \"%s\"", name)
                     : localized("the component's dialogs lack something that the driver needs; install the "
                                 "component that came with it"));
}

namespace {

/// Whether a check box in `container` fires a callback of that name.
bool boxFires(const Widget& container, std::string_view callback)
{
    return std::ranges::any_of(container.children(), [callback](const auto& child) {
        const std::string* fired = child->attribute("AddCallback");
        return (child->kind() == WidgetKind::checkBox && fired != nullptr && *fired == callback) ||
               boxFires(*child, callback);
    });
}

} // namespace

std::string UserActions::described(const Widget& widget) const
{
    if (namesWidgets_)
        // Translators: the kind and the name of a widget: Button "LanFax OK Button".
        return localized("%s \"%s\"", kindName(widget.kind()), widget.name());
    // Translators: a text on the screen, as the subject or object of a sentence: "Fax Number".
    return localized("\"%s\"", labelText(widget));
}

void UserActions::refuseHidden(const Widget& widget) const
{
    if (!namesWidgets_)
        throw Error(localized("%s is not on the screen", described(widget)));
    const Widget& hidden = culprit(widget, [](const Widget& candidate) { return candidate.visible(); });
    throw Error(&hidden == &widget
                    ? localized("%s is not visible", described(widget))
                    : localized("%s is not visible: its %s is hidden", described(widget), described(hidden)));
}

void UserActions::refuseInsensitive(const Widget& widget) const
{
    if (!namesWidgets_)
        throw Error(localized("%s cannot be used now", described(widget)));
    const Widget& insensitive =
        culprit(widget, [](const Widget& candidate) { return candidate.sensitive(); });
    throw Error(&insensitive == &widget ? localized("%s is insensitive", described(widget))
                                        : localized("%s is insensitive: its %s is insensitive",
                                                    described(widget), described(insensitive)));
}

void UserActions::requireTypable(const Widget& field, std::string_view text) const
{
    if (!isUtf8(text))
        throw UnsuitableValue(localized("the text for %s is not UTF-8", described(field)));
    if (hasControlCharacter(text))
        throw UnsuitableValue(
            localized("the text for %s holds a line end or another control character", described(field)));
    const auto length =
        static_cast<std::size_t>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
    if (length > field.maximumLength())
        throw UnsuitableValue(localizedCount("the text for %s has %d character; the field takes %d",
                                             "the text for %s has %d characters; the field takes %d", length,
                                             described(field), length, field.maximumLength()));
}

void UserActions::requireNoQuestion() const
{
    if (state_.questions.top() != nullptr)
        throw Error(localized("a question is waiting for an answer; answer it first"));
}

Widget& UserActions::existing(std::string_view name) const
{
    requireNoQuestion();
    Widget* widget = state_.tree.find(name);
    if (widget == nullptr)
        throw missingWidget(name, namesWidgets_);
    return *widget;
}

void UserActions::requireOperable(const Widget& widget) const
{
    requireNoQuestion();
    if (!widget.onScreen())
        refuseHidden(widget);
    if (!widget.active())
        refuseInsensitive(widget);
}

void UserActions::requireUsableItem(const Widget& item) const
{
    if (!item.visible())
        refuseHidden(item);
    if (!item.sensitive())
        refuseInsensitive(item);
}

void UserActions::press(std::string_view name) { press(existing(name)); }

void UserActions::press(Widget& widget)
{
    requireOperable(widget);
    if (widget.kind() == WidgetKind::fileSelection)
        pressOk(widget);
    else if (widget.kind() == WidgetKind::button || widget.kind() == WidgetKind::toolbarItem)
        callbacks_.fire(widget);
    else
        throw Error(localized("%s cannot be pressed; it is no button", described(widget)));
    state_.features.keep();
}

void UserActions::pressOk(Widget& chooser)
{
    // The component starts its choosers with a pattern, from which a user first chooses a file.
    const std::string& path = chooser.text();
    const std::string_view file = std::string_view(path).substr(path.rfind('/') + 1);
    if (file.empty() || file.find_first_of("*?[") != std::string_view::npos)
        throw Error(localized("no file is chosen in %s; type its path first", described(chooser)));
    if (const HostState::Handler handler = state_.handlerFor(chooser, okPart))
        callbacks_.run(okPart, handler);
    else
        chooser.setVisible(false);
}

void UserActions::type(std::string_view name, std::string_view text) { type(existing(name), text); }

void UserActions::type(Widget& widget, std::string_view text)
{
    requireOperable(widget);
    const bool isField = widget.kind() == WidgetKind::textEntry;
    if (!isField && widget.kind() != WidgetKind::fileSelection)
        throw Error(localized("%s takes no text", described(widget)));
    const std::string* editable = widget.attribute("Editable");
    if (editable != nullptr && *editable == "false")
        throw Error(localized("%s is read-only", described(widget)));
    requireTypable(widget, text);
    widget.setText(text);
    state_.features.settle(widget.name());
    callbacks_.fire(widget);
    state_.features.keep();
}

void UserActions::tick(std::string_view name, bool on) { tick(existing(name), on); }

void UserActions::tick(Widget& widget, bool on)
{
    requireOperable(widget);
    if (!widget.hasFlag())
        throw Error(localized("%s cannot be ticked; it is no check box", described(widget)));
    if (widget.kind() == WidgetKind::radioButtonItem && !on)
        throw Error(localized("%s cannot be unticked; choose another item of its group", described(widget)));
    widget.setFlag(on);
    state_.features.settle(widget.kind() == WidgetKind::radioButtonItem ? widget.parent()->name()
                                                                        : widget.name());
    if (!callbacks_.fire(widget) && widget.kind() == WidgetKind::radioButtonItem)
        callbacks_.fire(*widget.parent());
    state_.features.keep();
}

void UserActions::choose(std::string_view name, int value) { choose(existing(name), value); }

void UserActions::choose(Widget& widget, int value)
{
    requireOperable(widget);
    if (!widget.hasNumber() || widget.isList())
        throw Error(localized("%s offers no choice", described(widget)));
    const auto range = widget.numberRange();
    if (!range)
        throw UnsuitableValue(localized("%s has no %d; it is empty", described(widget), value));
    if (value < range->first || value > range->second) {
        throw UnsuitableValue(localized("%s has no %d; it goes from %d to %d", described(widget), value,
                                        range->first, range->second));
    }
    if (widget.kind() != WidgetKind::spinBox)
        requireUsableItem(*widget.items()[static_cast<std::size_t>(value)]);
    widget.setNumber(value);
    state_.features.settle(widget.name());
    callbacks_.fire(widget);
    state_.features.keep();
}

void UserActions::select(std::string_view name, const std::vector<int>& rows)
{
    select(existing(name), rows);
}

void UserActions::select(Widget& list, const std::vector<int>& rows)
{
    requireOperable(list);
    if (!list.isList())
        throw Error(localized("%s has no rows; it is no list", described(list)));
    if (rows.size() > 1 && !list.isMultipleSelection())
        throw Error(localized("only one row of %s can be selected", described(list)));
    const auto count = list.rows().count();
    std::vector<bool> chosen(count);
    for (const int row : rows) {
        if (row < 0 || static_cast<std::size_t>(row) >= count) {
            throw UnsuitableValue(localizedCount("%s has no row %d; it has %d row, counted from 0",
                                                 "%s has no row %d; it has %d rows, counted from 0", count,
                                                 described(list), row, count));
        }
        if (chosen[static_cast<std::size_t>(row)])
            throw Error(localized("row %d of %s is named twice", row, described(list)));
        chosen[static_cast<std::size_t>(row)] = true;
    }
    list.setSelection(rows);
    callbacks_.fire(list);
    state_.features.keep();
}

void UserActions::closeWindow(std::string_view name) { closeWindow(existing(name)); }

void UserActions::closeWindow(Widget& window)
{
    requireNoQuestion();
    if (!window.isWindow())
        throw Error(localized("%s is no window", described(window)));
    if (!window.visible())
        throw Error(localized("%s is not open", described(window)));
    if (const HostState::Handler handler = state_.handlerFor(window, closeSignal))
        callbacks_.run(closeSignal, handler);
    else if (!callbacks_.fire(window))
        window.setVisible(false);
    state_.features.keep();
}

void UserActions::answer(bool yes)
{
    if (!state_.questions.answerTop(yes))
        throw Error(localized("no question is waiting for an answer"));
    state_.features.keep();
}

bool UserActions::firedByBox(std::string_view exportedName) const
{
    // What a check box fires looks at that box, and cannot do without.
    return std::ranges::any_of(state_.tree.windows(),
                               [&](const auto& window) { return boxFires(*window, exportedName); });
}

bool UserActions::canCall(std::string_view exportedName) const
{
    return callbacks_.has(std::string(exportedName)) && !firedByBox(exportedName);
}

void UserActions::call(std::string_view exportedName)
{
    requireNoQuestion();
    if (firedByBox(exportedName))
        throw Error(localized("%s cannot be called by itself; tick one of its check boxes", exportedName));
    if (!callbacks_.call(std::string(exportedName)))
        throw Error(localized("the component's export list has no function \"%s\"", exportedName));
    state_.features.keep();
}

} // namespace quelm
