// Runs queued actions and refreshes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/user_turns.h"

#include "base/error.h"

#include <glibmm/main.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace quelm {

UserTurns::~UserTurns() { scheduled_.disconnect(); }

void UserTurns::act(std::function<void()> action, Refreshable* origin)
{
    actions_.push_back({std::move(action), origin});
    schedule();
}

void UserTurns::touch(Refreshable& view)
{
    if (!std::exchange(view.isTouched_, true)) {
        touched_.push_back(&view);
        schedule();
    }
}

void UserTurns::forget(Refreshable& view)
{
    view.isTouched_ = false;
    std::replace(touched_.begin(), touched_.end(), &view, static_cast<Refreshable*>(nullptr));
    for (Action& action : actions_)
        if (action.origin == &view)
            action.origin = nullptr;
}

void UserTurns::schedule()
{
    if (!running_ && !scheduled_.connected()) {
        scheduled_ = Glib::signal_idle().connect(
            [this] {
                runNow();
                return false;
            },
            Glib::PRIORITY_HIGH);
    }
}

void UserTurns::runNow()
{
    scheduled_.disconnect();
    if (std::exchange(running_, true))
        return;
    const bool acted = !actions_.empty();
    // Drawing may make a control speak up again; what that queues belongs to the same turn.
    while (!actions_.empty() || !touched_.empty()) {
        runActions();
        refreshTouched();
    }
    running_ = false;
    if (acted && settled_)
        settled_();
}

void UserTurns::runActions()
{
    while (!actions_.empty()) {
        const std::function<void()> run = actions_.front().run;
        std::string message;
        try {
            run();
        } catch (const std::exception& exception) {
            message = exception.what();
        }
        // The action stays queued until here, so that an origin that left the screen meanwhile is forgotten.
        Refreshable* origin = actions_.front().origin;
        actions_.erase(actions_.begin());
        if (!message.empty()) {
            if (origin != nullptr)
                touch(*origin);
            if (trouble_)
                trouble_(message);
        }
    }
}

void UserTurns::refreshTouched()
{
    // A window that appears for the first time touches its controls, which come behind it.
    std::size_t next = 0;
    while (next < touched_.size()) {
        if (Refreshable* view = std::exchange(touched_[next++], nullptr)) {
            view->isTouched_ = false;
            view->refresh();
        }
    }
    touched_.clear();
}

} // namespace quelm
