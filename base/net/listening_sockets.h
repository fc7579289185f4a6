// The sockets on which a server waits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_NET_LISTENING_SOCKETS_H
#define BASE_NET_LISTENING_SOCKETS_H

#include "base/file_handle.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quelm {

/// A socket that listens, or receives datagrams, non-blocking and closed in other programs.
struct ListeningSocket {
    FileHandle socket;
    std::string address; ///< "127.0.0.1:9100", "[::1]:9100"
};

/// Listens on the same TCP port of each numeric address; on port 0, on one that is free on all of them. An
/// address of IPv6 is left out on a machine without it, as long as another one is left; one that is named
/// twice counts once. Throws quelm::Error that names the address where it cannot listen, and why.
std::vector<ListeningSocket> listenOn(const std::vector<std::string>& addresses, std::uint16_t port);

/// The same with UDP, for datagrams.
std::vector<ListeningSocket> receiveOn(const std::vector<std::string>& addresses, std::uint16_t port);

} // namespace quelm

#endif
