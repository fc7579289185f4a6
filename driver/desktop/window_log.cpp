// Holds messages until there is a window, and brings later ones to the main loop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/window_log.h"

#include <glib.h>

#include <mutex>
#include <utility>
#include <vector>

namespace quelm {
namespace {

struct Message {
    Severity severity;
    std::string line;
};

} // namespace

/// What the threads that log and the main loop look at.
struct WindowLog::State {
    std::mutex lock; ///< of `waits` and `waiting`
    bool waits = true;
    std::vector<Message> waiting;
    ShowMessage later; ///< for the main loop alone; empty when nothing is to be shown

    static void take(const std::shared_ptr<State>& state, Message message)
    {
        const std::lock_guard guard(state->lock);
        if (state->waits)
            return state->waiting.push_back(std::move(message));
        using Shown = std::pair<std::shared_ptr<State>, Message>;
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer data) {
                const auto& [shared, shown] = *static_cast<Shown*>(data);
                if (shared->later)
                    shared->later(shown.severity, shown.line);
                return gboolean{G_SOURCE_REMOVE};
            },
            new Shown(state, std::move(message)), [](gpointer data) { delete static_cast<Shown*>(data); });
    }
};

WindowLog::WindowLog() : state_(std::make_shared<State>())
{
    before_ = setLogSink([state = state_](Severity severity, const std::string& line) {
        logToStandardError(severity, line);
        if (severity != Severity::information)
            State::take(state, {severity, line});
    });
}

WindowLog::~WindowLog()
{
    setLogSink(std::move(before_));
    state_->later = {};
}

void WindowLog::showWith(const ShowMessage& waited, ShowMessage later)
{
    std::vector<Message> messages;
    {
        const std::lock_guard guard(state_->lock);
        messages.swap(state_->waiting);
        state_->later = std::move(later);
        state_->waits = false;
    }
    for (const auto& message : messages)
        waited(message.severity, message.line);
}

} // namespace quelm
