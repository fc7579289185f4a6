// Calls who wants to interrupt the device's memory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/device_steps.h"

#include <utility>

namespace quelm::device {
namespace {

DeviceStepHook& hookOfProcess()
{
    static DeviceStepHook hook;
    return hook;
}

} // namespace

void setDeviceStepHook(DeviceStepHook hook) { hookOfProcess() = std::move(hook); }

void beforeDeviceStep(const char* step)
{
    if (hookOfProcess())
        hookOfProcess()(step);
}

} // namespace quelm::device
