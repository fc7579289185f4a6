// Opens the sockets on which a server waits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/listening_sockets.h"

#include "base/error.h"
#include "base/net/network_address.h"
#include "base/net/socket_address.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>

namespace quelm {
namespace {

/// How often a free port is asked for: of one that is free on an address, another program may have the port
/// on the next.
constexpr int mostAttempts = 50;

SocketAddress numericAddress(const std::string& text)
{
    addrinfo wanted{};
    wanted.ai_flags = AI_NUMERICHOST | AI_PASSIVE;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (text.empty() || ::getaddrinfo(text.c_str(), nullptr, &wanted, &found) != 0)
        throw Error(
            localized("\"%s\" is no numeric address; write one such as 127.0.0.1 or ::1", shownText(text)));
    SocketAddress address;
    std::memcpy(&address.storage, found->ai_addr, found->ai_addrlen);
    address.size = found->ai_addrlen;
    ::freeaddrinfo(found);
    return address;
}

SocketAddress withPort(SocketAddress address, std::uint16_t port)
{
    if (address.family() == AF_INET6)
        reinterpret_cast<sockaddr_in6&>(address.storage).sin6_port = htons(port);
    else
        reinterpret_cast<sockaddr_in&>(address.storage).sin_port = htons(port);
    return address;
}

std::uint16_t portOf(const SocketAddress& address)
{
    return ntohs(address.family() == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6&>(address.storage).sin6_port
                     : reinterpret_cast<const sockaddr_in&>(address.storage).sin_port);
}

/// A machine without IPv6 has no such sockets, or has them and no address.
bool isWithoutIpv6(const SocketAddress& address, int error)
{
    if (address.family() != AF_INET6)
        return false;
    const auto& ipv6 = reinterpret_cast<const sockaddr_in6&>(address.storage).sin6_addr;
    return error == EAFNOSUPPORT ||
           (error == EADDRNOTAVAIL && (IN6_IS_ADDR_LOOPBACK(&ipv6) || IN6_IS_ADDR_UNSPECIFIED(&ipv6)));
}

/// A socket of that type. Not open when it fails, with errno as the system sets it.
FileHandle listening(const SocketAddress& address, int type)
{
    FileHandle socket(::socket(address.family(), type | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.isOpen())
        return socket;
    const int on = 1;
    // A server that is started again has its port at once, though former connections are still remembered.
    // With datagrams there are none, and two servers would share a port.
    if (type == SOCK_STREAM)
        ::setsockopt(socket.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (address.family() == AF_INET6)
        ::setsockopt(socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, &on, sizeof on);
    if (::bind(socket.get(), address.get(), address.size) == 0 &&
        (type != SOCK_STREAM || ::listen(socket.get(), SOMAXCONN) == 0))
        return socket;
    const int error = errno;
    socket.close();
    errno = error;
    return socket;
}

SocketAddress boundAddress(const FileHandle& socket)
{
    SocketAddress address;
    address.size = sizeof address.storage;
    if (::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address.storage), &address.size) != 0)
        throw Error(localized("the address of a socket cannot be read: %s", systemReason(errno)));
    return address;
}

std::string reasonAgainstListening(int error)
{
    if (error == EADDRINUSE)
        return localized("another program has this port; end it, or choose another port");
    if (error == EACCES)
        return localized("ports below 1024 take an administrator's rights; choose another port");
    if (error == EADDRNOTAVAIL)
        return localized("this computer has no such address; choose one that it has");
    return systemReason(error);
}

[[noreturn]] void refuse(const SocketAddress& address, int error)
{
    throw Error(
        localized("%s: cannot listen there: %s", numericText(address), reasonAgainstListening(error)));
}

/// Nothing when a port that was free on the first address is taken on another.
std::optional<std::vector<ListeningSocket>> tryToListen(const std::vector<SocketAddress>& addresses,
                                                        std::uint16_t wanted, int type)
{
    std::vector<ListeningSocket> sockets;
    std::optional<SocketAddress> without;
    std::uint16_t port = wanted;
    for (const auto& address : addresses) {
        const auto place = withPort(address, port);
        auto socket = listening(place, type);
        if (!socket.isOpen()) {
            const int error = errno;
            if (error == EADDRINUSE && wanted == 0 && port != 0)
                return std::nullopt;
            if (!isWithoutIpv6(place, error))
                refuse(place, error);
            without = place;
            continue;
        }
        const auto bound = boundAddress(socket);
        port = portOf(bound);
        sockets.push_back({std::move(socket), numericText(bound)});
    }
    if (sockets.empty() && without)
        refuse(*without, EADDRNOTAVAIL);
    return sockets;
}

std::vector<ListeningSocket> openAll(const std::vector<std::string>& addresses, std::uint16_t port, int type)
{
    std::vector<SocketAddress> places;
    std::vector<std::string> texts;
    for (const auto& text : addresses) {
        const auto place = numericAddress(text);
        if (const auto canonical = numericText(place); std::ranges::find(texts, canonical) == texts.end()) {
            texts.push_back(canonical);
            places.push_back(place);
        }
    }
    for (int attempt = 0; attempt < mostAttempts; ++attempt)
        if (auto sockets = tryToListen(places, port, type))
            return *std::move(sockets);
    throw Error(localized("no port is free on all addresses; choose one with --port"));
}

} // namespace

std::vector<ListeningSocket> listenOn(const std::vector<std::string>& addresses, std::uint16_t port)
{
    return openAll(addresses, port, SOCK_STREAM);
}

std::vector<ListeningSocket> receiveOn(const std::vector<std::string>& addresses, std::uint16_t port)
{
    return openAll(addresses, port, SOCK_DGRAM);
}

} // namespace quelm
