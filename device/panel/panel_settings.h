// What the status pages are served with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_PANEL_SETTINGS_H
#define DEVICE_PANEL_PANEL_SETTINGS_H

#include "device/jobs/job_records.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace quelm::device {

/// How far a call is that is under way.
struct PanelProgress {
    int pagesSent = 0;
    std::chrono::milliseconds lineTime{0};
};

struct PanelSettings {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;                                 ///< 0 for any free one
    std::function<std::map<int, PanelProgress>()> progress; ///< by the calls' numbers
    std::function<Moment()> now;
    /// How long a browser may take to ask, and then to take what it gets.
    std::chrono::milliseconds patience{std::chrono::seconds(10)};
    std::size_t mostConnections = 32; ///< at once; behind that, the oldest one makes room
};

} // namespace quelm::device

#endif
