// The address of a print server as libcups is told of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_QUEUE_SERVER_ADDRESS_H
#define DRIVER_QUEUE_SERVER_ADDRESS_H

#include <string>

namespace quelm {

/// A print server as libcups is told of it.
struct PrintServer {
    std::string host; ///< without brackets; or the path of a socket
    int port = 0;     ///< 0 for a socket
};

/// Takes such a text apart as `currentPrintServer` returns. A host without a port has that of the user's
/// server.
[[nodiscard]] PrintServer printServerIn(const std::string& text);

/// What `currentPrintServer` returns.
[[nodiscard]] std::string serverOfNow();

} // namespace quelm

#endif
