// The system's name service, which knows no time-out of ours.
#ifndef BASE_NET_NAME_SERVICE_H
#define BASE_NET_NAME_SERVICE_H

#include "base/net/network_address.h"

#include <string>
#include <vector>

#include <sys/socket.h>

namespace quelm {

/// One address as the system takes it.
struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t size = 0;

    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&storage); }
    int family() const { return storage.ss_family; }
};

/// What the name service says about a host.
struct HostAnswer {
    enum class Kind {
        found,
        unknown,     ///< there is no host of that name, or it has no address
        unavailable, ///< the name service itself does not answer
        failed       ///< anything else
    };

    Kind kind = Kind::failed;
    std::string reason;                   ///< the system's, in the user's language; empty when found
    std::vector<SocketAddress> addresses; ///< in the order in which they are to be tried; some when found
};

/// Asks for the addresses of a host, which may have letters beyond ASCII, for sockets of a type
/// (SOCK_STREAM, SOCK_DGRAM). Waits for as long as the name service likes to.
HostAnswer askNameService(const NetworkAddress& host, int socketType);

/// The same for a host that is a numeric address itself; otherwise nothing is found. Asks nobody.
HostAnswer readNumericAddress(const NetworkAddress& host, int socketType);

/// "127.0.0.1:161" or "[::1]:161"; empty when it is none.
std::string numericText(const SocketAddress& address);

} // namespace quelm

#endif
