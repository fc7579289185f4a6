// What an SNMP agent says, and where.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_AGENT_SETTINGS_H
#define DEVICE_AGENT_AGENT_SETTINGS_H

#include "device/agent/directory_settings.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quelm::device {

struct AgentSettings {
    std::vector<std::string> addresses = {"127.0.0.1", "::1"}; ///< numeric
    std::uint16_t port = 161;                              ///< 0 for any free one, the same for all addresses
    std::string description = "Quelm emulated fax device"; ///< 1.3.6.1.2.1.1.1.0
    std::string name = "Quelm fax";                        ///< as people call the device
    std::string community = "public";
    /// True while the device works on a job; idle when there is none to ask. Called on the agent's thread.
    std::function<bool()> isBusy;
    DirectorySettings directory;
};

} // namespace quelm::device

#endif
