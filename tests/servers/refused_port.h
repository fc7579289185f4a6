// A port of the loopback address that nobody serves, and nobody else comes to serve meanwhile.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_REFUSED_PORT_H
#define TESTS_SERVERS_REFUSED_PORT_H

#include "tests/servers/server_process.h"

#include <string>

namespace servers {

/// Holds a port of 127.0.0.1: as long as it lives, whoever asks there is refused at once.
class RefusedPort {
public:
    explicit RefusedPort(Transport transport);
    ~RefusedPort();
    RefusedPort(const RefusedPort&) = delete;
    RefusedPort& operator=(const RefusedPort&) = delete;

    int port() const { return number_; }
    /// "127.0.0.1:PORT"
    std::string address() const { return "127.0.0.1:" + std::to_string(number_); }

private:
    int bound_;
    int number_ = 0;
};

} // namespace servers

#endif
