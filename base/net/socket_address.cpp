// Writes addresses in digits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/socket_address.h"

#include <netdb.h>

#include <array>

namespace quelm {

std::string numericText(const SocketAddress& address)
{
    std::array<char, NI_MAXHOST> host{};
    std::array<char, NI_MAXSERV> port{};
    if (::getnameinfo(address.get(), address.size, host.data(), host.size(), port.data(), port.size(),
                      NI_NUMERICHOST | NI_NUMERICSERV) != 0)
        return {};
    const std::string name = host.data();
    return (address.family() == AF_INET6 ? "[" + name + "]" : name) + ":" + port.data();
}

} // namespace quelm
