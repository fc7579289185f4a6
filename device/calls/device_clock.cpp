// Reads the device's clock, and puts it forward.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/device_clock.h"

#include <algorithm>

namespace quelm::device {
namespace {

Moment systemNow()
{
    return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

} // namespace

DeviceClock::DeviceClock(bool realTime, std::optional<Moment> latest) : realTime_(realTime)
{
    if (latest) {
        latest_ = *latest;
        ahead_ = std::max(std::chrono::milliseconds(0), *latest - systemNow());
    }
}

Moment DeviceClock::now() const
{
    const std::lock_guard lock(mutex_);
    // The system's clock may be put back.
    latest_ = std::max(latest_, systemNow() + ahead_);
    return latest_;
}

void DeviceClock::advanceTo(Moment moment)
{
    if (realTime_)
        return;
    const std::lock_guard lock(mutex_);
    ahead_ = std::max(ahead_, moment - systemNow());
}

} // namespace quelm::device
