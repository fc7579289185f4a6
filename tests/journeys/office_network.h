// An office in networks of its own: a server's with everything that serves, and one for each desk.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_OFFICE_NETWORK_H
#define TESTS_JOURNEYS_OFFICE_NETWORK_H

#include "tests/servers/server_process.h"

#include <memory>
#include <string>
#include <vector>

namespace journeys {

/// Networks that nothing else of this machine is in, joined by cables of their own. A process holds each of
/// them, and is killed with the test: nothing of them stays behind, however the test ends. Takes root.
class OfficeNetwork {
public:
    /// The addresses of the server, and of as many more in its network. Desks have 10.77.0.101 and on.
    static constexpr const char* server = "10.77.0.1";
    static constexpr const char* firstDevice = "10.77.0.21";
    static constexpr const char* secondDevice = "10.77.0.22";

    /// Throws std::runtime_error when this machine does not make networks.
    explicit OfficeNetwork(int desks, const std::string& logFile);

    /// A command line, as it is run in the server's network, or at a desk (from 0).
    std::vector<std::string> atServer(const std::vector<std::string>& arguments) const;
    std::vector<std::string> atDesk(int desk, const std::vector<std::string>& arguments) const;

private:
    using Holder = std::unique_ptr<servers::ServerProcess>;

    Holder hold() const;
    void run(const std::vector<std::string>& arguments) const;

    std::string log_;
    Holder server_;
    std::vector<Holder> desks_;
};

} // namespace journeys

#endif
