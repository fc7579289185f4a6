// What a dispatcher is told of its device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_DISPATCHER_SETTINGS_H
#define DEVICE_CALLS_DISPATCHER_SETTINGS_H

#include "device/pages/page_bounds.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace quelm::device {

struct DispatcherSettings {
    int lines = 1;
    int renderings = 3;                       ///< at once: a document that takes long holds nobody up
    std::string identity = "+1 555 010 0000"; ///< of the device
    PageBounds pages;
    /// The pauses behind calls that found nobody (busy, no answer): when all are used up, the recipient has
    /// failed.
    std::vector<std::chrono::milliseconds> pauses = {std::chrono::seconds(60), std::chrono::seconds(120),
                                                     std::chrono::seconds(240)};
    /// How long the device rests, in real time, when its disk or its memory fails it; twice as long each time
    /// again, up to 32 times as long.
    std::chrono::milliseconds rest = std::chrono::seconds(1);
    /// Receives each thing that happens as one line, on any thread, one at a time; device/calls/event_lines.h
    /// has their forms.
    std::function<void(const std::string& line)> tell;
};

} // namespace quelm::device

#endif
