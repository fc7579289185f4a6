// Copies between two connections, and stops in the middle of one direction.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/holding_proxy.h"

#include "tests/servers/loopback.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace servers {

namespace {

/// Passes on at most `most` bytes of what is there. How many it were; none at the end of either connection.
std::size_t passOn(int from, int to, std::size_t most)
{
    std::array<char, 16384> bytes;
    const auto count = recv(from, bytes.data(), std::min(bytes.size(), most), 0);
    if (count <= 0)
        return 0;
    const auto size = static_cast<std::size_t>(count);
    for (std::size_t done = 0; done < size;) {
        const auto sent = send(to, bytes.data() + done, size - done, MSG_NOSIGNAL);
        if (sent <= 0)
            return 0;
        done += static_cast<std::size_t>(sent);
    }
    return size;
}

} // namespace

HoldingProxy::HoldingProxy(int port, std::size_t bytes)
    : serverPort_(port), mostBytes_(bytes), listener_([this](int client, int stop) { serve(client, stop); })
{
}

void HoldingProxy::serve(int client, int stop)
{
    const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::size_t left = mostBytes_;
    for (bool open = connectTo(server, serverPort_); open;) {
        holding_ = holding_ || left == 0;
        const bool held = left == 0 && !released_;
        constexpr int untilNextLook = 10; // milliseconds
        std::array<pollfd, 3> waits{
            {{held ? -1 : client, POLLIN, 0}, {server, POLLIN, 0}, {stop, POLLIN, 0}}};
        poll(waits.data(), waits.size(), held ? untilNextLook : -1);
        if (waits[2].revents != 0)
            break;
        if (waits[0].revents != 0) {
            const auto passed = passOn(client, server, released_ ? static_cast<std::size_t>(-1) : left);
            left -= std::min(left, passed);
            open = passed > 0;
        }
        if (open && waits[1].revents != 0)
            open = passOn(server, client, static_cast<std::size_t>(-1)) > 0;
    }
    if (server >= 0)
        close(server);
}

} // namespace servers
