// From a host's name to the addresses to connect to.
#ifndef BASE_NET_HOST_LOOKUP_H
#define BASE_NET_HOST_LOOKUP_H

#include "base/cancellation.h"
#include "base/net/name_service.h"

#include <chrono>
#include <string>
#include <vector>

namespace quelm {

/// All addresses of a host, in the order in which they are to be tried; at least one. Throws quelm::Error
/// with a line that begins with `who` when there is no such host, the name service does not answer within
/// `limit`, or it is `cancelled`. A name service that answers later still keeps a thread busy until
/// then, which does no harm.
std::vector<SocketAddress> lookUpHost(const NetworkAddress& address, const std::string& who,
                                      std::chrono::milliseconds limit, const Cancellation& cancelled);

} // namespace quelm

#endif
