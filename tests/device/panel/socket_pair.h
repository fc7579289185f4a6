// Two ends of a connection within one process.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_PANEL_SOCKET_PAIR_H
#define TESTS_DEVICE_PANEL_SOCKET_PAIR_H

#include "base/file_handle.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quelm::tests {

class SocketPair {
public:
    SocketPair()
    {
        std::array<int, 2> ends{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
            throw std::runtime_error("no socket pair");
        server = FileHandle(ends[0]);
        browser = FileHandle(ends[1]);
        ::fcntl(server.get(), F_SETFL, O_NONBLOCK);
    }

    void send(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const auto sent = ::send(browser.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent < 0)
                return;
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
    }
    void endSending() const { ::shutdown(browser.get(), SHUT_WR); }

    /// What the server sends up to its end, which has to come within half a minute.
    std::string received() const
    {
        std::string all;
        std::array<char, 4096> piece{};
        while (true) {
            pollfd waiting{browser.get(), POLLIN, 0};
            if (::poll(&waiting, 1, 30'000) <= 0)
                throw std::runtime_error("the server does not end");
            const auto size = ::recv(browser.get(), piece.data(), piece.size(), 0);
            if (size <= 0)
                return all;
            all.append(piece.data(), static_cast<std::size_t>(size));
        }
    }

    FileHandle server;
    FileHandle browser;
};

} // namespace quelm::tests

#endif
