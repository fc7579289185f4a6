// Runs queued actions and refreshes.
#include "driver/desktop/toolkit/user_turns.h"

#include "base/error.h"

#include <glibmm/main.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace quelm {

UserTurns::~UserTurns() { scheduled.disconnect(); }

void UserTurns::act(std::function<void()> action, Refreshable* origin)
{
    actions.push_back({std::move(action), origin});
    schedule();
}

void UserTurns::touch(Refreshable& view)
{
    if (!std::exchange(view.isTouched, true)) {
        touched.push_back(&view);
        schedule();
    }
}

void UserTurns::forget(Refreshable& view)
{
    view.isTouched = false;
    std::replace(touched.begin(), touched.end(), &view, static_cast<Refreshable*>(nullptr));
    for (Action& action : actions)
        if (action.origin == &view)
            action.origin = nullptr;
}

void UserTurns::schedule()
{
    if (!running && !scheduled.connected()) {
        scheduled = Glib::signal_idle().connect(
            [this] {
                runNow();
                return false;
            },
            Glib::PRIORITY_HIGH);
    }
}

void UserTurns::runNow()
{
    scheduled.disconnect();
    if (std::exchange(running, true))
        return;
    const bool acted = !actions.empty();
    // Drawing may make a control speak up again; what that queues belongs to the same turn.
    while (!actions.empty() || !touched.empty()) {
        runActions();
        refreshTouched();
    }
    running = false;
    if (acted && settled)
        settled();
}

void UserTurns::runActions()
{
    while (!actions.empty()) {
        const std::function<void()> run = actions.front().run;
        std::string message;
        try {
            run();
        } catch (const std::exception& exception) {
            message = exception.what();
        }
        // The action stays queued until here, so that an origin that left the screen meanwhile is forgotten.
        Refreshable* origin = actions.front().origin;
        actions.erase(actions.begin());
        if (!message.empty()) {
            if (origin != nullptr)
                touch(*origin);
            if (trouble)
                trouble(message);
        }
    }
}

void UserTurns::refreshTouched()
{
    // A window that appears for the first time touches its controls, which come behind it.
    std::size_t next = 0;
    while (next < touched.size()) {
        if (Refreshable* view = std::exchange(touched[next++], nullptr)) {
            view->isTouched = false;
            view->refresh();
        }
    }
    touched.clear();
}

} // namespace quelm
