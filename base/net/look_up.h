// From a host's name to its addresses, within bounds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_NET_LOOK_UP_H
#define BASE_NET_LOOK_UP_H

#include "base/bounded_call.h"
#include "base/cancellation.h"
#include "base/net/network_address.h"
#include "base/net/socket_address.h"

#include <string>
#include <vector>

namespace quelm {

/// What a look-up came to. Whoever asked puts it into words.
struct HostAnswer {
    enum class Kind {
        found,
        unknown,     ///< there is no host of that name, or it has no address
        unavailable, ///< the name service itself cannot be reached
        late,        ///< nothing was answered by the deadline
        cancelled,   ///< nobody wants the answer any more
        failed       ///< anything else
    };

    Kind kind = Kind::failed;
    std::string reason;                   ///< the system's words when it answered, and nothing was found
    std::vector<SocketAddress> addresses; ///< in the order in which they are to be tried; some when found
};

/// Asks for the addresses of a host, which may have letters beyond ASCII, for sockets of a type
/// (SOCK_STREAM, SOCK_DGRAM). A numeric address is its own answer: nobody is asked, whatever the deadline.
///
/// The system's look-up has no time limit that a program could set, and cannot be called off. It runs on a
/// thread of its own, which is left to itself when the answer comes too late; it needs nothing of the
/// caller's. Throws std::system_error when no thread can be had.
HostAnswer lookUp(const NetworkAddress& host, int socketType, Deadline deadline,
                  const Cancellation& cancelled = {});

} // namespace quelm

#endif
