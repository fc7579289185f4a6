// The steps at which the device's memory can be interrupted, for tests that interrupt it at each.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_DEVICE_STEPS_H
#define DEVICE_JOBS_DEVICE_STEPS_H

#include <functional>

namespace quelm::device {

/// Called between any two steps that last: a file made durable, a name given, a change of the database. It
/// may end the process, or throw what the step would on a full disk.
using DeviceStepHook = std::function<void(const char* step)>;

/// Sets the hook of this process; empty for none. Not while a device runs.
void setDeviceStepHook(DeviceStepHook hook);

/// Calls the hook ahead of `step`.
void beforeDeviceStep(const char* step);

} // namespace quelm::device

#endif
