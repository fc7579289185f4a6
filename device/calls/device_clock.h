// The device's clock, which runs as fast as calls compute, or in real time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_DEVICE_CLOCK_H
#define DEVICE_CALLS_DEVICE_CLOCK_H

#include "device/jobs/job_records.h"

#include <mutex>
#include <optional>

namespace quelm::device {

/// The system's clock, put forward by line time where that is simulated. It never goes back. Safe on every
/// thread.
class DeviceClock {
public:
    /// `latest` is the latest moment that the device remembers: the clock does not begin before it.
    explicit DeviceClock(bool realTime, std::optional<Moment> latest = {});

    [[nodiscard]] Moment now() const;
    [[nodiscard]] bool isRealTime() const { return realTime_; }
    /// Simulated, the clock then shows `moment` at least; in real time nothing happens.
    void advanceTo(Moment moment);

private:
    bool realTime_;
    mutable std::mutex mutex_;
    mutable Moment latest_{};
    std::chrono::milliseconds ahead_{0}; // of the system's clock
};

} // namespace quelm::device

#endif
