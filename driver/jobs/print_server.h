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

} // namespace quelm

#endif
