// Answers what printer drivers ask a device over SNMP.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_DEVICE_AGENT_H
#define DEVICE_AGENT_DEVICE_AGENT_H

#include "device/agent/agent_settings.h"

#include <memory>
#include <string>
#include <vector>

namespace quelm::device {

/// Serves versions 1 and 2c, read-only, from its construction to its destruction, on a thread of its own. It
/// reads no configuration of the machine's and keeps nothing. One at a time in a program (the library has one
/// agent), but as many as one likes one after the other.
class DeviceAgent {
public:
    /// Throws quelm::Error that names the address when it cannot listen there. An address of IPv6 is left out
    /// on a machine without it.
    explicit DeviceAgent(AgentSettings settings);
    ~DeviceAgent();
    DeviceAgent(const DeviceAgent&) = delete;
    DeviceAgent& operator=(const DeviceAgent&) = delete;

    /// Where it listens: "127.0.0.1:161", "[::1]:161".
    [[nodiscard]] std::vector<std::string> addresses() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
