// A socket that has a port and takes nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/refused_port.h"

#include "tests/servers/loopback.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace servers {

RefusedPort::RefusedPort(Transport transport)
    : bound_(socket(AF_INET, (transport == Transport::tcp ? SOCK_STREAM : SOCK_DGRAM) | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = loopback(0);
    auto* const general = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    // One of TCP refuses as long as it does not listen. One of UDP takes datagrams from its peer alone: from
    // itself.
    if (bound_ < 0 || bind(bound_, general, size) != 0 || getsockname(bound_, general, &size) != 0 ||
        (transport == Transport::udp && connect(bound_, general, size) != 0)) {
        const int reason = errno;
        close(bound_);
        throw std::system_error(reason, std::generic_category(), "cannot hold a port");
    }
    number_ = ntohs(address.sin_port);
}

RefusedPort::~RefusedPort() { close(bound_); }

} // namespace servers
