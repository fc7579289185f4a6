// One address of a host as the system takes it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_NET_SOCKET_ADDRESS_H
#define BASE_NET_SOCKET_ADDRESS_H

#include <sys/socket.h>

#include <string>

namespace quelm {

/// An IPv4 or IPv6 address and a port.
struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t size = 0;

    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&storage); }
    int family() const { return storage.ss_family; }
};

/// "127.0.0.1:161" or "[::1]:161"; empty when it is none.
std::string numericText(const SocketAddress& address);

} // namespace quelm

#endif
