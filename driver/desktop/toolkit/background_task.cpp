// Threads whose ends are told through the default main loop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/background_task.h"

#include <glib.h>

#include <thread>
#include <utility>

namespace quelm {

struct BackgroundTask::Run {
    BackgroundTask* owner = nullptr; ///< null when the owner is gone
    std::function<void()> ended;
    std::jthread thread;
};

BackgroundTask::~BackgroundTask()
{
    for (const auto& run : runs_)
        run->thread.request_stop();
    for (const auto& run : runs_) {
        run->thread.join();
        run->owner = nullptr;
    }
}

int BackgroundTask::tellEnd(void* data)
{
    const auto run = *static_cast<std::shared_ptr<Run>*>(data);
    BackgroundTask* owner = run->owner;
    if (owner == nullptr)
        return G_SOURCE_REMOVE;
    run->thread.join();
    owner->runs_.remove(run);
    if (owner->current_ == run.get()) {
        owner->current_ = nullptr;
        run->ended();
    }
    return G_SOURCE_REMOVE;
}

void BackgroundTask::start(Work work, std::function<void()> ended)
{
    giveUp();
    const auto run = std::make_shared<Run>();
    run->owner = this;
    run->ended = std::move(ended);
    runs_.push_back(run);
    current_ = run.get();
    run->thread = std::jthread([run, work = std::move(work)](const std::stop_token& stop) {
        work(stop);
        g_idle_add_full(G_PRIORITY_DEFAULT, &BackgroundTask::tellEnd, new std::shared_ptr<Run>(run),
                        [](void* data) { delete static_cast<std::shared_ptr<Run>*>(data); });
    });
}

void BackgroundTask::cancel()
{
    if (current_ != nullptr)
        current_->thread.request_stop();
}

void BackgroundTask::giveUp()
{
    cancel();
    current_ = nullptr;
}

} // namespace quelm
