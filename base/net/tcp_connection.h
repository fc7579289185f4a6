// Connecting to a device.
#ifndef BASE_NET_TCP_CONNECTION_H
#define BASE_NET_TCP_CONNECTION_H

#include "base/cancellation.h"
#include "base/file_io.h"
#include "base/net/host_lookup.h"

#include <chrono>
#include <string>
#include <vector>

namespace quelm {

/// A non-blocking TCP connection to the first of `addresses` that takes one; each is waited for at most
/// `limit`. Throws quelm::Error with a line that begins with `who` and tells the most telling of the
/// reasons when none does, or when it is `cancelled`.
FileHandle connectToAny(const std::vector<SocketAddress>& addresses, const std::string& who,
                        std::chrono::milliseconds limit, const Cancellation& cancelled);

} // namespace quelm

#endif
