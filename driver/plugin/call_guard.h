// Guards calls into the component: what it throws ends there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_CALL_GUARD_H
#define DRIVER_PLUGIN_CALL_GUARD_H

#include <functional>
#include <string_view>
#include <utility>

namespace quelm {

/// Runs calls into the component. An exception that leaves one is logged with the name of what
/// was called, and counted.
class CallGuard {
public:
    /// False when the call ended in an exception.
    bool run(std::string_view what, const std::function<void()>& call);

    /// How many calls ended in an exception.
    int failures() const { return failureCount_; }

    /// `action` runs ahead of each call from now on, but not ahead of calls within a call: once for
    /// each thing that a user does. An empty one is none.
    void setBeforeCall(std::function<void()> action) { beforeCall_ = std::move(action); }

private:
    int failureCount_ = 0;
    int depth_ = 0;
    std::function<void()> beforeCall_;
};

} // namespace quelm

#endif
