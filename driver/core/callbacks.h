// Fires what a widget's AddCallback names: the component's functions and the driver's own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_CALLBACKS_H
#define DRIVER_CORE_CALLBACKS_H

#include "driver/boundary/host_state.h"
#include "driver/plugin/component_library.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

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

    /// Whether the component exports a function of that name.
    [[nodiscard]] bool has(const std::string& exportedName) const;

    /// Whether that function was called, by whatever way, and returned, since the component was started.
    [[nodiscard]] bool hasDone(std::string_view exportedName) const { return done_.contains(exportedName); }
    /// As if it had not been called.
    void forget(const std::string& exportedName) { done_.erase(exportedName); }

    /// The last call was the driver's own, in the place of a user.
    void noteUnseen(const std::string& exportedName) { unseen_.insert(exportedName); }
    /// Whether the last call since the start was somebody else's.
    [[nodiscard]] bool hasUserDone(std::string_view exportedName) const
    {
        return hasDone(exportedName) && !unseen_.contains(exportedName);
    }

    /// Runs `action` ahead of the first call into the component that comes now, and never again.
    void setBeforeFirst(std::function<void()> action) { beforeFirst_ = std::move(action); }

    /// Runs a handler that the component attached itself.
    void run(std::string_view what, HostState::Handler handler);

    /// The topic of the help button pressed last; empty before that.
    const std::string& helpTopic() const { return topic_; }

    /// Shows help on a topic when a help button is pressed; for front ends.
    void setHelp(std::function<void(const std::string& topic)> show) { showHelp_ = std::move(show); }

    /// The help button pressed last, which tells where help was asked for; null before that.
    const Widget* helpButton() const { return askedAt_; }

private:
    void run(const std::string& exportedName, const std::function<void()>& callback);
    void runFirst();

    HostState& state_;
    const ComponentLibrary& component_;
    std::set<std::string, std::less<>> done_;
    std::set<std::string, std::less<>> unseen_; // of these
    std::function<void()> beforeFirst_;
    std::string topic_;
    const Widget* askedAt_ = nullptr; // the tree keeps the widgets of dialogs until the driver ends
    std::function<void(const std::string&)> showHelp_;
};

} // namespace quelm

#endif
