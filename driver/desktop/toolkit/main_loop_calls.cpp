// Hands functions over with the loop's own sources.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/main_loop_calls.h"

#include <glib.h>

#include <utility>

namespace quelm {

/// For the main loop alone.
struct MainLoopCalls::State {
    bool isOver = false;
};

MainLoopCalls::MainLoopCalls() : state_(std::make_shared<State>()) {}

MainLoopCalls::~MainLoopCalls() { state_->isOver = true; }

void MainLoopCalls::add(std::function<void()> call)
{
    using Waiting = std::pair<std::shared_ptr<State>, std::function<void()>>;
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) {
            const auto& [state, waiting] = *static_cast<Waiting*>(data);
            if (!state->isOver)
                waiting();
            return gboolean{G_SOURCE_REMOVE};
        },
        new Waiting(state_, std::move(call)), [](gpointer data) { delete static_cast<Waiting*>(data); });
}

} // namespace quelm
