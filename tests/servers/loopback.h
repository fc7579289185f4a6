// The loopback address of IPv4.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_LOOPBACK_H
#define TESTS_SERVERS_LOOPBACK_H

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace servers {

/// A port of it, as the system takes it.
inline sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// Connects a socket of IPv4 to a port of it; true when it is connected.
inline bool connectTo(int socket, int port)
{
    const sockaddr_in address = loopback(port);
    return ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

} // namespace servers

#endif
