// The limits and the safety of the connection to a directory server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_SETTINGS_H
#define DRIVER_DIRECTORY_DIRECTORY_SETTINGS_H

#include <chrono>
#include <string>

namespace quelm {

/// How directory servers are talked to, whichever server it is.
struct DirectorySettings {
    /// The most time that reaching a server may take, its name's resolution and TLS included.
    std::chrono::milliseconds connectTimeout{std::chrono::seconds(5)};
    /// The most time from a search's request to its last result.
    std::chrono::milliseconds searchTimeout{std::chrono::seconds(15)};
    /// The most results of a search; at least 1.
    int sizeLimit = 1000;
    /// Asks the server for TLS on a plain connection, and gives up when it refuses. An "ldaps://"
    /// address has TLS in any case.
    bool startTls = false;
    /// A file of the certificate authorities (PEM) to trust; empty for the system's. A server whose
    /// certificate does not hold, or is not for its name, is not talked to.
    std::string certificateAuthorities;
};

} // namespace quelm

#endif
