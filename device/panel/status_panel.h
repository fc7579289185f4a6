// The device's status pages: what it was sent, whom it calls, what was received.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_STATUS_PANEL_H
#define DEVICE_PANEL_STATUS_PANEL_H

#include "device/jobs/device_log.h"
#include "device/panel/panel_settings.h"

#include <memory>
#include <string>

namespace quelm::device {

/// Serves pages over HTTP from its construction to its destruction, on threads of its own. It only shows: no
/// request changes anything. They are for people at this computer, and are not given to browsers that call
/// them by a stranger's name.
class StatusPanel {
public:
    /// Throws quelm::Error that names the address when it cannot listen there.
    StatusPanel(const StateFolder& folder, DeviceLog& log, PanelSettings settings);
    ~StatusPanel();
    StatusPanel(const StatusPanel&) = delete;
    StatusPanel& operator=(const StatusPanel&) = delete;

    /// "http://127.0.0.1:8080/"
    [[nodiscard]] std::string address() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
