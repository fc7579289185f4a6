// Calls the recipients whose turn it is.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_CALLING_WORK_H
#define DEVICE_CALLS_CALLING_WORK_H

#include "device/calls/device_work.h"
#include "device/calls/fax_dialler.h"

#include <map>
#include <mutex>
#include <optional>

namespace quelm::device {

/// Each line is a thread that makes one call after the other.
class CallingWork {
public:
    explicit CallingWork(DeviceWork& work) : work_(work) {}

    /// Makes the call whose turn it is; false when there is none.
    bool callNext();
    /// The calls that are under way, by their numbers.
    [[nodiscard]] std::map<int, CallProgress> progress();

private:
    class OpenCall;

    void call(const DueCall& due);
    std::optional<CallEnd> connect(const DueCall& due);
    bool follow(const DueCall& due, SteadyMoment begun, const CallProgress& progress);
    void end(const DueCall& due, const CallEnd& ended);

    DeviceWork& work_;
    std::mutex mutex_;
    std::map<int, CallProgress> calls_;
};

} // namespace quelm::device

#endif
