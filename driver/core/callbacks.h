// Fires what a widget's AddCallback names: the component's functions and the driver's own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_CALLBACKS_H
#define DRIVER_CORE_CALLBACKS_H

#include "driver/boundary/host_state.h"
#include "driver/plugin/component_library.h"

#include <functional>
#include <string>
#include <string_view>

namespace quelm {

/// Looks a callback's name up in the component's export list, then among the driver's own, and calls
/// it guarded.
class Callbacks {
public:
    /// Both outlive this object.
    Callbacks(HostState& hostState, const ComponentLibrary& library);

    /// Fires the callback of `widget`. False when it has none, or none of that name exists anywhere:
    /// the driver then does what it does by default.
    bool fire(Widget& widget);

    /// Calls a function of the export list that needs no widget; false when there is none.
    bool call(const std::string& exportedName);

    /// Runs a handler that the component attached itself.
    void run(std::string_view what, HostState::Handler handler);

    /// The topic of the help button pressed last; empty before that.
    const std::string& helpTopic() const { return topic_; }

    /// Shows help on a topic when a help button is pressed; for front ends.
    void setHelp(std::function<void(const std::string& topic)> show) { showHelp_ = std::move(show); }

    /// The help button pressed last, which tells where help was asked for; null before that.
    const Widget* helpButton() const { return askedAt_; }

private:
    HostState& state_;
    const ComponentLibrary& component_;
    std::string topic_;
    const Widget* askedAt_ = nullptr; // the tree keeps the widgets of dialogs until the driver ends
    std::function<void(const std::string&)> showHelp_;
};

} // namespace quelm

#endif
