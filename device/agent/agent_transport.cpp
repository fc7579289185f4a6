// Opens sockets, hands them to net-snmp's agent, and waits for requests.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/agent_transport.h"

#include "base/error.h"
#include "base/net/listening_sockets.h"
#include "base/snmp/read_set.h"
#include "base/translation.h"

#include <net-snmp/net-snmp-config.h>
// The library's headers need one another in this order.
#include <net-snmp/net-snmp-includes.h>
// clang-format off
#include <net-snmp/agent/net-snmp-agent-includes.h>
// clang-format on

namespace quelm::device {

namespace {

/// Null when it cannot be opened.
netsnmp_transport* openTransport(const std::string& address)
{
    const std::string name = (address.starts_with('[') ? "udp6:" : "udp:") + address;
    return netsnmp_transport_open_server("quelm-device", name.c_str());
}

/// Where such sockets can be bound now: the library opens its own, and does not say why when it cannot.
std::vector<std::string> freePlaces(const std::vector<std::string>& addresses, std::uint16_t port)
{
    std::vector<std::string> places;
    for (const ListeningSocket& bound : receiveOn(addresses, port))
        places.push_back(bound.address);
    return places;
}

} // namespace

struct AgentTransport::State {
    std::vector<netsnmp_session*> sessions;
    std::vector<std::string> addresses;

    ~State() { closeAll(); }

    void closeAll()
    {
        for (netsnmp_session* session : sessions)
            snmp_close(session);
        sessions.clear();
        addresses.clear();
    }

    bool open(const std::string& address)
    {
        netsnmp_transport* transport = openTransport(address);
        if (transport == nullptr)
            return false;
        netsnmp_session wanted;
        snmp_sess_init(&wanted);
        wanted.version = SNMP_DEFAULT_VERSION;
        wanted.callback = handle_snmp_packet;
        wanted.isAuthoritative = SNMP_SESS_AUTHORITATIVE;
        // Not the library's own way to open an agent's listener, which asks the machine's lists of who may
        // use its services.
        netsnmp_session* session = snmp_add(&wanted, transport, nullptr, nullptr);
        if (session == nullptr)
            return false; // the transport is closed already
        sessions.push_back(session);
        addresses.push_back(address);
        return true;
    }

    /// False when somebody else took one of the places since they were free.
    bool openAll(const std::vector<std::string>& places)
    {
        for (const std::string& place : places)
            if (!open(place)) {
                closeAll();
                return false;
            }
        return true;
    }
};

AgentTransport::AgentTransport(const std::vector<std::string>& addresses, std::uint16_t port)
    : state_(std::make_unique<State>())
{
    constexpr int mostAttempts = 20;
    for (int attempt = 0; attempt < mostAttempts; ++attempt)
        if (state_->openAll(freePlaces(addresses, port)))
            return;
    throw Error(localized("the SNMP agent finds no free port; choose one with --snmp"));
}

AgentTransport::~AgentTransport() = default;

std::vector<std::string> AgentTransport::addresses() const { return state_->addresses; }

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): it reads what this object opened
void AgentTransport::serveUntil(int wakeDescriptor)
{
    for (;;) {
        SnmpReadSet readable;
        int descriptors = wakeDescriptor + 1;
        timeval timeout{};
        int block = 1; // until somebody asks, unless the library has an appointment before
        snmp_select_info2(&descriptors, readable.get(), &timeout, &block);
        netsnmp_large_fd_setfd(wakeDescriptor, readable.get());
        const int ready = netsnmp_large_fd_set_select(descriptors, readable.get(), nullptr, nullptr,
                                                      block != 0 ? nullptr : &timeout);
        if (ready > 0 && netsnmp_large_fd_is_set(wakeDescriptor, readable.get()) != 0)
            return;
        if (ready > 0)
            snmp_read2(readable.get());
        else
            snmp_timeout();
        run_alarms();
        netsnmp_check_outstanding_agent_requests();
    }
}

} // namespace quelm::device
