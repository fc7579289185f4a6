// Brings what other threads have to say to the main loop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_MAIN_LOOP_CALLS_H
#define DRIVER_DESKTOP_TOOLKIT_MAIN_LOOP_CALLS_H

#include <functional>
#include <memory>

namespace quelm {

/// Calls functions on the default main loop, in the order in which they were handed over. Made and destroyed
/// on the thread of that loop; what was not called by the end of it never is.
class MainLoopCalls {
public:
    MainLoopCalls();
    ~MainLoopCalls();
    MainLoopCalls(const MainLoopCalls&) = delete;
    MainLoopCalls& operator=(const MainLoopCalls&) = delete;

    /// Has `call` called soon. May be used on any thread as long as this lives.
    void add(std::function<void()> call);

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace quelm

#endif
