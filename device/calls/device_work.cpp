// Lets threads work, wait and tell.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/device_work.h"

#include "base/error.h"
#include "base/interruption.h"
#include "device/calls/event_lines.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quelm::device {

DeviceWork::DeviceWork(const StateFolder& stateFolder, DeviceLog& deviceLog, const Exchange& answering,
                       DeviceClock& deviceClock, DispatcherSettings given)
    : folder(stateFolder), log(deviceLog), exchange(answering), clock(deviceClock),
      settings(std::move(given)), renderings(settings.rest), sheets(settings.rest)
{
    settings.pages.ghostscript.stop = stopping_.get_token();
}

bool DeviceWork::isStopping() const { return stopping_.stop_requested() || Interruption::requested(); }

void DeviceWork::stop()
{
    stopping_.request_stop();
    changed();
}

void DeviceWork::changed()
{
    {
        const std::lock_guard lock(mutex_);
        ++changes_;
    }
    wakened_.notify_all();
}

bool DeviceWork::isWorking()
{
    const std::lock_guard lock(mutex_);
    return working_ > 0;
}

void DeviceWork::tell(const std::string& line)
{
    tellOf([&line] { return line; });
}

void DeviceWork::tellOf(const std::function<std::string()>& change)
{
    const std::lock_guard lock(telling_);
    const std::string line = change();
    if (settings.tell)
        settings.tell(line);
}

void DeviceWork::tellTrouble(const std::string& what, const std::exception& error)
{
    const std::string reason = error.what();
    {
        const std::lock_guard lock(mutex_);
        const bool isKnown =
            std::ranges::any_of(troubles_, [&](const auto& trouble) { return trouble.second == reason; });
        troubles_[what] = reason;
        if (isKnown)
            return;
    }
    tell(troubleLine(reason));
}

void DeviceWork::noTrouble(const std::string& what)
{
    const std::lock_guard lock(mutex_);
    troubles_.erase(what);
}

bool DeviceWork::rest(std::chrono::milliseconds duration)
{
    std::unique_lock lock(mutex_);
    return !wakened_.wait_for(lock, duration, [this] { return isStopping(); });
}

void DeviceWork::waitUntil(SteadyMoment moment)
{
    std::unique_lock lock(mutex_);
    wakened_.wait_until(lock, moment, [this] { return isStopping(); });
}

void DeviceWork::run(const std::string& name, const std::function<bool()>& work)
{
    Rest rests(settings.rest);
    while (!isStopping()) {
        std::uint64_t seen = 0;
        {
            const std::lock_guard lock(mutex_);
            seen = changes_;
            ++working_;
        }
        bool isRested = true;
        bool hasWorked = false;
        try {
            hasWorked = work();
            rests.over();
            noTrouble(name);
        } catch (const std::exception& error) {
            tellTrouble(name, error);
            isRested = false;
        }
        {
            const std::lock_guard lock(mutex_);
            --working_;
        }
        if (!isRested)
            (void)rest(rests.next());
        else if (hasWorked)
            changed();
        else
            waitForWork(name, seen);
    }
}

/// Simulated, the clock jumps to the next attempt when nothing is left to be done before.
void DeviceWork::waitForWork(const std::string& name, std::uint64_t seen)
{
    std::optional<Moment> next;
    bool isDue = false;
    try {
        const DeviceLoad load = log.load();
        next = load.nextAttempt;
        // It may have become so since it was looked for, and no change would tell of that.
        isDue = next && load.runningCalls == 0 && clock.now() >= *next;
        if (next && !clock.isRealTime() && load.toRender == 0 && load.runningCalls == 0 &&
            clock.now() < *next) {
            const std::lock_guard lock(mutex_);
            // Whoever comes here last finds nobody working any more.
            if (working_ == 0 && seen == changes_) {
                clock.advanceTo(*next);
                ++changes_;
                wakened_.notify_all();
                return;
            }
        }
    } catch (const Error& error) {
        tellTrouble(name, error);
        (void)rest(settings.rest);
        return;
    }
    // Another thread's work, or a job that is added, counts as a change; only time does not.
    using std::chrono::milliseconds;
    constexpr milliseconds longest = std::chrono::minutes(1);
    constexpr milliseconds shortest{10};
    auto pause = isDue ? shortest : longest;
    if (const auto now = clock.now(); next && now < *next)
        pause = std::min(pause, std::chrono::ceil<milliseconds>(*next - now));
    for (const JobClaims* claims : {&renderings, &sheets})
        if (const auto end = claims->nextEnd())
            pause = std::min(pause, std::chrono::ceil<milliseconds>(*end - std::chrono::steady_clock::now()));
    std::unique_lock lock(mutex_);
    wakened_.wait_for(lock, std::max(pause, shortest), [&] { return isStopping() || changes_ != seen; });
}

} // namespace quelm::device
