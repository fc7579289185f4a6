// TCP connections that stand within bounds, or not at all.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_NET_CONNECTOR_H
#define BASE_NET_CONNECTOR_H

#include "base/bounded_call.h"
#include "base/cancellation.h"
#include "base/file_handle.h"
#include "base/net/socket_address.h"

#include <chrono>
#include <optional>
#include <vector>

namespace quelm {

/// How long a connection is waited for. Where both bounds are set, the earlier one holds; with neither, the
/// system gives up, after minutes.
struct ConnectLimits {
    /// For all addresses together. Each has its share of the time that is left when its turn comes: one
    /// that leads nowhere must not cost the others theirs.
    std::optional<Deadline> all;
    /// For each address.
    std::optional<std::chrono::milliseconds> each;
};

/// A connection, or why there is none. Whoever wanted it puts that into words.
struct ConnectResult {
    enum class Kind {
        connected,
        failed,   ///< no address took a connection
        late,     ///< the time for all addresses was over
        cancelled ///< nobody wants the connection any more
    };

    Kind kind = Kind::failed;
    FileHandle
        connection; ///< open when connected: a non-blocking socket, which other programs do not inherit
    /// Of the addresses that were tried in vain, in their order: the system's error numbers. ETIMEDOUT also
    /// when an address did not answer in its time.
    std::vector<int> errors;
};

/// Connects to the first of `addresses`, of which there is one at least, that takes a connection.
ConnectResult connectToAny(const std::vector<SocketAddress>& addresses, const ConnectLimits& limits,
                           const Cancellation& cancelled = {});

} // namespace quelm

#endif
