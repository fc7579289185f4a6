// The UDP sockets on which an SNMP agent is asked.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_AGENT_TRANSPORT_H
#define DEVICE_AGENT_AGENT_TRANSPORT_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quelm::device {

/// Sockets on each of some addresses, which the library reads requests from until they are closed by the end
/// of this object. Opened, read and closed by one thread at a time; `startAgentLibrary` was called before.
class AgentTransport {
public:
    /// Addresses are numeric; port 0 is any that is free on all of them. Throws quelm::Error that names the
    /// address when it cannot listen there. An address of IPv6 is left out on a machine without it.
    AgentTransport(const std::vector<std::string>& addresses, std::uint16_t port);
    ~AgentTransport();
    AgentTransport(const AgentTransport&) = delete;
    AgentTransport& operator=(const AgentTransport&) = delete;

    /// Where they are bound: "127.0.0.1:161", "[::1]:161".
    [[nodiscard]] std::vector<std::string> addresses() const;

    /// Answers requests as they come until something can be read from `wakeDescriptor`.
    void serveUntil(int wakeDescriptor);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
