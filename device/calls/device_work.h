// What all threads of a dispatcher share.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_DEVICE_WORK_H
#define DEVICE_CALLS_DEVICE_WORK_H

#include "device/calls/device_clock.h"
#include "device/calls/dispatcher_settings.h"
#include "device/calls/job_claims.h"
#include "device/exchange/exchange.h"
#include "device/jobs/device_log.h"

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <stop_token>
#include <string>

namespace quelm::device {

/// What there is to work with, what is told, and how threads wait for each other.
class DeviceWork {
public:
    /// All outlive it.
    DeviceWork(const StateFolder& stateFolder, DeviceLog& deviceLog, const Exchange& answering,
               DeviceClock& deviceClock, DispatcherSettings given);

    /// Does one piece of work after the other, and waits when there is none, until the device stops. `work`
    /// returns whether there was some. `name` tells its troubles from those of others.
    void run(const std::string& name, const std::function<bool()>& work);

    /// A terminal sends Ctrl-C to Ghostscript and its supervisor, too: what fails then is nothing that a job
    /// is to blame for, though nobody has asked for the stop yet.
    [[nodiscard]] bool isStopping() const;
    void stop();
    /// Something happened that another thread may wait for.
    void changed();
    /// True when a thread is at something.
    [[nodiscard]] bool isWorking();

    void tell(const std::string& line);
    /// Runs `change`, and tells the line that it returns ahead of all lines that others tell of what begins
    /// with it.
    void tellOf(const std::function<std::string()>& change);
    /// Tells of it, unless the last thing that was told of `what`, or of anything else that is still wrong,
    /// was the same.
    void tellTrouble(const std::string& what, const std::exception& error);
    void noTrouble(const std::string& what);

    /// Waits in real time; false when the device stops meanwhile.
    [[nodiscard]] bool rest(std::chrono::milliseconds duration);
    /// Waits until that moment, or until the device stops.
    void waitUntil(SteadyMoment moment);

    const StateFolder& folder;
    DeviceLog& log;
    const Exchange& exchange;
    DeviceClock& clock;
    DispatcherSettings settings;
    JobClaims renderings;
    JobClaims sheets;

private:
    void waitForWork(const std::string& name, std::uint64_t seen);

    std::stop_source stopping_;
    std::mutex telling_;
    std::mutex mutex_; // of all below
    std::condition_variable wakened_;
    std::uint64_t changes_ = 0;
    int working_ = 0; // threads that are at something
    std::map<std::string, std::string> troubles_;
};

} // namespace quelm::device

#endif
