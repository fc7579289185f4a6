// Work on a thread of its own, whose end the main loop is told of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_BACKGROUND_TASK_H
#define DRIVER_DESKTOP_TOOLKIT_BACKGROUND_TASK_H

#include <functional>
#include <list>
#include <memory>
#include <stop_token>

namespace quelm {

/// Runs one piece of work at a time that matters: starting the next one gives up the one before. All
/// members are called on the thread of the default main loop.
class BackgroundTask {
public:
    /// Runs on a thread of its own, and must not throw. Ends soon after `stop` is requested.
    using Work = std::function<void(std::stop_token stop)>;

    BackgroundTask() = default;
    /// Gives up what is running and waits for its end; nobody is told.
    ~BackgroundTask();
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;

    /// Starts `work`. `ended` is called on the main loop when it has returned, also after `cancel`, but
    /// not when it was given up.
    void start(Work work, std::function<void()> ended);

    /// Asks the work to stop; its end is told as usual.
    void cancel();

    /// Asks the work to stop, and forgets it.
    void giveUp();

    bool running() const { return current_ != nullptr; }

private:
    struct Run;
    static int tellEnd(void* run);

    Run* current_ = nullptr;
    std::list<std::shared_ptr<Run>> runs_; ///< the current one and those that were given up and still end
};

} // namespace quelm

#endif
