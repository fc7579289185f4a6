// What a user can do to the dialogs, and when it is impossible.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_USER_ACTIONS_H
#define DRIVER_CORE_USER_ACTIONS_H

#include "base/error.h"
#include "driver/boundary/host_state.h"
#include "driver/core/callbacks.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// A value that somebody typed or chose does not fit where it belongs.
class UnsuitableValue : public Error {
public:
    using Error::Error;
};

/// The error for a widget that no dialog has: with its name for those who write scripts.
[[nodiscard]] Error missingWidget(std::string_view name, bool isNamed);

/// The user actions of `Driver`, which documents them. Each throws quelm::Error, with nothing
/// changed, when a person at a desktop could not do it. A widget is given by its name, which means
/// the first one of that name, or as itself. Messages call a widget what people see it called, unless
/// `nameWidgets` was asked for; one about a value is an UnsuitableValue.
class UserActions {
public:
    UserActions(HostState& hostState, Callbacks& widgetCallbacks)
        : state_(hostState), callbacks_(widgetCallbacks)
    {
    }

    void press(std::string_view name);
    void press(Widget& widget);
    void type(std::string_view name, std::string_view text);
    void type(Widget& widget, std::string_view text);
    void tick(std::string_view name, bool on);
    void tick(Widget& widget, bool on);
    void choose(std::string_view name, int value);
    void choose(Widget& widget, int value);
    void select(std::string_view name, const std::vector<int>& rows);
    void select(Widget& list, const std::vector<int>& rows);
    void closeWindow(std::string_view name);
    void closeWindow(Widget& window);
    void answer(bool yes);
    void call(std::string_view exportedName);
    /// Whether `call` takes the function: it is exported, and needs no check box that fires it.
    [[nodiscard]] bool canCall(std::string_view exportedName) const;

    /// From now on messages give the kind and name of a widget: for those who write scripts, which go by
    /// them.
    void nameWidgets() { namesWidgets_ = true; }

    [[nodiscard]] bool namesWidgets() const { return namesWidgets_; }

    /// What messages call a widget.
    [[nodiscard]] std::string described(const Widget& widget) const;

    /// Throws quelm::Error while a question waits for an answer, as every action but the answer does.
    void requireNoQuestion() const;

private:
    Widget& existing(std::string_view name) const;
    void requireOperable(const Widget& widget) const;
    void requireUsableItem(const Widget& item) const;
    void requireTypable(const Widget& field, std::string_view text) const;
    bool firedByBox(std::string_view exportedName) const;
    void pressOk(Widget& chooser);
    [[noreturn]] void refuseHidden(const Widget& widget) const;
    [[noreturn]] void refuseInsensitive(const Widget& widget) const;

    HostState& state_;
    Callbacks& callbacks_;
    bool namesWidgets_ = false;
};

} // namespace quelm

#endif
