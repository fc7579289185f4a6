// Carries out what people do, and draws what came of it, once per turn of the main loop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_USER_TURNS_H
#define DRIVER_DESKTOP_TOOLKIT_USER_TURNS_H

#include <sigc++/connection.h>

#include <functional>
#include <string>
#include <vector>

namespace quelm {

/// Something on the screen that follows the widget tree.
class Refreshable {
public:
    virtual ~Refreshable() = default;
    /// Shows what the tree holds now.
    virtual void refresh() = 0;

private:
    friend class UserTurns;
    bool isTouched_ = false;
};

/// Actions run from the main loop, never from within a signal of the toolkit: assistive tools wait for
/// that signal, and a callback of the component may take its time. All that an action changed is drawn
/// once behind it: the component refills a list a thousand times to add a thousand recipients.
class UserTurns {
public:
    UserTurns() = default;
    ~UserTurns();
    UserTurns(const UserTurns&) = delete;
    UserTurns& operator=(const UserTurns&) = delete;

    /// Queues an action; it runs ahead of any further event. A quelm::Error that it throws goes to the
    /// trouble handler, and `origin`, which may be null, is refreshed, as it may show what was refused.
    void act(std::function<void()> action, Refreshable* origin = nullptr);

    /// Queues a refresh.
    void touch(Refreshable& view);

    /// Forgets something that leaves the screen.
    void forget(Refreshable& view);

    void setTrouble(std::function<void(const std::string& message)> show) { trouble_ = std::move(show); }

    /// Called when a turn with actions in it is over.
    void setSettled(std::function<void()> told) { settled_ = std::move(told); }

    /// Runs what is queued at once; for tests and for the end of the program.
    void runNow();

private:
    struct Action {
        std::function<void()> run;
        Refreshable* origin;
    };

    void schedule();
    void runActions();
    void refreshTouched();

    std::vector<Action> actions_;
    std::vector<Refreshable*> touched_;
    bool running_ = false;
    sigc::connection scheduled_;
    std::function<void(const std::string&)> trouble_;
    std::function<void()> settled_;
};

} // namespace quelm

#endif
