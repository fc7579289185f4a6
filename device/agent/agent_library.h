// Starts the library of SNMP agents without its habits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_AGENT_LIBRARY_H
#define DEVICE_AGENT_AGENT_LIBRARY_H

#include "device/agent/agent_objects.h"

#include <functional>
#include <string>

namespace quelm::device {

/// What an agent answers, and to whom. Asked on the agent's thread.
struct AgentAnswers {
    std::string community; ///< requests without it stay unanswered
    std::function<AgentValue(const ObjectName&)> value;
};

/// Makes net-snmp's agent ready, with the objects of a device, before the first listener is opened. It reads
/// no configuration and no MIB files, keeps no state in files, speaks to no other agents and sends no traps.
/// Whatever it wants to say goes to the program's log as information. Does nothing when it was called before.
void startAgentLibrary();

/// From now on the objects have these answers; null for none, and nobody may ask then. The answers stay the
/// caller's. No listener is open during the call.
void setAgentAnswers(const AgentAnswers* answers);

} // namespace quelm::device

#endif
