// The SNMP objects that a device has, with their values.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_AGENT_OBJECTS_H
#define DEVICE_AGENT_AGENT_OBJECTS_H

#include "device/agent/agent_settings.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace quelm::device {

/// The numbers of an object's name.
using ObjectName = std::vector<std::uint32_t>;

/// SNMP's Integer32.
struct AgentInteger {
    std::int32_t value = 0;
};
/// SNMP's TimeTicks.
struct AgentTicks {
    std::chrono::duration<std::uint32_t, std::centi> value{};
};
/// A text is an octet string, UTF-8.
using AgentValue = std::variant<std::string, AgentInteger, AgentTicks, ObjectName>;

/// The names of all objects, in ascending order. They are the same for every device.
[[nodiscard]] const std::vector<ObjectName>& agentObjects();

/// What a device with these settings answers for one of the objects, `uptime` after its start.
[[nodiscard]] AgentValue agentValue(const ObjectName& name, const AgentSettings& settings,
                                    std::chrono::milliseconds uptime);

} // namespace quelm::device

#endif
