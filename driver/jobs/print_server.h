// Where a print server is.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_PRINT_SERVER_H
#define DRIVER_JOBS_PRINT_SERVER_H

#include <string>

namespace quelm {

/// The user's print server of now, which CUPS_SERVER names, or the files of settings of libcups: "HOST:PORT",
/// "[2001:db8::1]:631" or the path of a socket. Nobody is asked whether it runs. `QueueTarget::server` holds
/// such a text, which means the same server in another environment, too.
[[nodiscard]] std::string currentPrintServer();

/// A print server as libcups is told of it.
struct PrintServer {
    std::string host; ///< without brackets; or the path of a socket
    int port = 0;     ///< 0 for a socket
};

/// Takes such a text apart. A host without a port has that of the user's server.
[[nodiscard]] PrintServer printServerIn(const std::string& text);

} // namespace quelm

#endif
