// A TCP connection that is there by a deadline, or not at all.
#ifndef BASE_NET_TCP_CONNECT_H
#define BASE_NET_TCP_CONNECT_H

#include <string>

#include "base/bounded_call.h"
#include "base/error.h"
#include "base/net/network_address.h"

namespace quelm {

enum class ConnectProblem {
    unknownName,       ///< there is no such host
    nameServiceSilent, ///< the name service did not answer, or not before the deadline
    timedOut,          ///< the deadline passed while connecting
    refused,           ///< nobody listens there
    unreachable        ///< anything else
};

/// Why there is no connection; `what()` is the system's reason.
class ConnectError : public Error {
public:
    ConnectError(ConnectProblem kind, const std::string& reason) : Error(reason), problem(kind) {}

    const ConnectProblem problem;
};

/// Connects to a host, by name or address, and returns the socket, which the caller closes. It is
/// non-blocking and not passed on to other programs. The addresses of a name are tried in turn,
/// each with its share of the time that is left. The name's resolution counts too: when it takes
/// longer it is given up here, and ends on a thread of its own. Throws ConnectError.
int connectTcp(const NetworkAddress& host, Deadline deadline);

} // namespace quelm

#endif
