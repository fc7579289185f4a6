// Listeners and what they put their connections to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/listeners.h"

#include "tests/servers/loopback.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace servers {

namespace {

int newSocket(int flags = 0)
{
    const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | flags, 0);
    if (made < 0)
        throw std::system_error(errno, std::generic_category(), "socket");
    return made;
}

/// Waits until one of the two is readable; false when it is `stop`.
bool readable(int connection, int stop, int milliseconds = -1)
{
    std::array<pollfd, 2> both{{{connection, POLLIN, 0}, {stop, POLLIN, 0}}};
    while (poll(both.data(), both.size(), milliseconds) < 0 && errno == EINTR) {
    }
    return both[1].revents == 0;
}

bool sendAll(int connection, const char* bytes, std::size_t count)
{
    while (count > 0) {
        const ssize_t sent = send(connection, bytes, count, MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes += sent;
        count -= static_cast<std::size_t>(sent);
    }
    return true;
}

/// Drops what comes until the peer or the listener ends.
void holdOpen(int connection, int stop)
{
    std::array<char, 4096> dropped;
    while (readable(connection, stop))
        if (recv(connection, dropped.data(), dropped.size(), 0) <= 0)
            break;
}

void breakConnection(int connection)
{
    const linger atOnce{1, 0};
    setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

/// Passes on one chunk; false at the end of `from`. `left` bounds how much.
bool passOn(int from, int to, std::size_t& left)
{
    std::array<char, 16384> chunk;
    const ssize_t got = recv(from, chunk.data(), chunk.size(), 0);
    if (got <= 0)
        return false;
    const std::size_t most = std::min(left, static_cast<std::size_t>(got));
    left -= most;
    return sendAll(to, chunk.data(), most);
}

} // namespace

SilentListener::SilentListener() : SilentListener(SOMAXCONN) {}

SilentListener::SilentListener(int backlog) : listening_(newSocket())
{
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listening_, generic, size) != 0 || listen(listening_, backlog) != 0 ||
        getsockname(listening_, generic, &size) != 0) {
        close(listening_);
        throw std::system_error(errno, std::generic_category(), "listen");
    }
    number_ = ntohs(address.sin_port);
}

SilentListener::~SilentListener() { close(listening_); }

FullListener::FullListener() : SilentListener(0)
{
    for (int established = 0;;) {
        const int client = newSocket(SOCK_NONBLOCK);
        waiting_.push_back(client);
        connectTo(client, port());
        pollfd ready{client, POLLOUT, 0};
        // On the loopback address a connection is there at once, or never.
        constexpr int patience = 200;
        if (poll(&ready, 1, patience) == 0)
            return;
        constexpr int most = 16;
        if (++established == most)
            throw std::runtime_error("the listener's backlog does not fill up");
    }
}

FullListener::~FullListener()
{
    for (const int client : waiting_)
        close(client);
}

ServingListener::ServingListener(Service service)
    : serviceOfEach_(std::move(service)), stopped_(eventfd(0, EFD_CLOEXEC)), thread_([this] { serve(); })
{
}

ServingListener::~ServingListener()
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(stopped_, &one, sizeof one);
    thread_.join();
    close(stopped_);
}

void ServingListener::serve()
{
    while (readable(socket(), stopped_)) {
        const int connection = accept4(socket(), nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0)
            continue;
        ++accepted_;
        serviceOfEach_(connection, stopped_);
        close(connection);
    }
}

Service hangingUp()
{
    return [](int, int) {};
}

Service answering(std::string text)
{
    return [text = std::move(text)](int connection, int stop) {
        std::array<char, 4096> request;
        if (readable(connection, stop) && recv(connection, request.data(), request.size(), 0) > 0 &&
            sendAll(connection, text.data(), text.size()))
            holdOpen(connection, stop);
    };
}

Service answeringPosts(std::vector<std::string> texts)
{
    return [texts = std::move(texts)](int connection, int stop) {
        constexpr std::string_view start = "POST ";
        std::string unanswered;
        for (const std::string& text : texts) {
            std::size_t at = 0;
            while ((at = unanswered.find(start)) == std::string::npos) {
                std::array<char, 4096> bytes;
                if (!readable(connection, stop))
                    return;
                const auto count = recv(connection, bytes.data(), bytes.size(), 0);
                if (count <= 0)
                    return;
                unanswered.append(bytes.data(), static_cast<std::size_t>(count));
            }
            unanswered.erase(0, at + start.size());
            if (!sendAll(connection, text.data(), text.size()))
                return;
        }
        holdOpen(connection, stop);
    };
}

Service dripping(std::string text)
{
    return [text = std::move(text)](int connection, int stop) {
        std::array<char, 4096> request;
        if (!readable(connection, stop) || recv(connection, request.data(), request.size(), 0) <= 0)
            return;
        constexpr int pause = 5;
        for (std::size_t at = 0; sendAll(connection, &text[at], 1); at = (at + 1) % text.size()) {
            pollfd end{stop, POLLIN, 0};
            if (poll(&end, 1, pause) != 0)
                return;
        }
    };
}

Service flooding(std::string text)
{
    return [text = std::move(text)](int connection, int stop) {
        std::array<char, 4096> request;
        if (!readable(connection, stop) || recv(connection, request.data(), request.size(), 0) <= 0)
            return;
        for (std::size_t at = 0;;) {
            const ssize_t sent = send(connection, &text[at], text.size() - at, MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent < 0 && errno != EAGAIN)
                return;
            at = (at + static_cast<std::size_t>(std::max<ssize_t>(sent, 0))) % text.size();
            std::array<pollfd, 2> both{{{connection, POLLOUT, 0}, {stop, POLLIN, 0}}};
            poll(both.data(), both.size(), -1);
            if (both[1].revents != 0)
                return;
        }
    };
}

Service cuttingProxy(int port, std::size_t bytes, Cut how)
{
    return [port, bytes, how](int client, int stop) {
        const int server = newSocket();
        std::size_t left = bytes;
        std::size_t unbounded = SIZE_MAX;
        if (connectTo(server, port)) {
            while (left > 0) {
                std::array<pollfd, 3> ends{{{client, POLLIN, 0}, {server, POLLIN, 0}, {stop, POLLIN, 0}}};
                if (poll(ends.data(), ends.size(), -1) < 0 && errno == EINTR)
                    continue;
                if (ends[2].revents != 0 || (ends[0].revents != 0 && !passOn(client, server, unbounded)) ||
                    (ends[1].revents != 0 && !passOn(server, client, left)))
                    break;
            }
        }
        close(server);
        if (left == 0 && how == Cut::silence)
            holdOpen(client, stop);
        if (left == 0 && how == Cut::reset)
            breakConnection(client);
    };
}

Service alteringProxy(int port, Alteration toServer, Alteration toClient)
{
    return [port, toServer = std::move(toServer), toClient = std::move(toClient)](int client, int stop) {
        const int server = newSocket();
        const auto passAltered = [](int from, int to, const Alteration& alter) {
            std::string bytes(16384, '\0');
            const ssize_t got = recv(from, bytes.data(), bytes.size(), 0);
            if (got <= 0)
                return false;
            bytes.resize(static_cast<std::size_t>(got));
            alter(bytes);
            return sendAll(to, bytes.data(), bytes.size());
        };
        for (bool open = connectTo(server, port); open;) {
            std::array<pollfd, 3> ends{{{client, POLLIN, 0}, {server, POLLIN, 0}, {stop, POLLIN, 0}}};
            if (poll(ends.data(), ends.size(), -1) < 0 && errno == EINTR)
                continue;
            open = ends[2].revents == 0 && (ends[0].revents == 0 || passAltered(client, server, toServer)) &&
                   (ends[1].revents == 0 || passAltered(server, client, toClient));
        }
        close(server);
    };
}

} // namespace servers
