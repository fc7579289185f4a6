// Accepts connections, and lets none of them stay for long.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/http_connections.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace quelm::device {
namespace {

/// How long nobody is accepted when the process has no descriptor or thread left.
constexpr int pauseWhenFull = 100; // ms

/// When so many times the most are open, of which one at least was shut down for each that came, others wait
/// for one to end.
constexpr std::size_t crowd = 2;

} // namespace

HttpConnections::HttpConnections(FileHandle listening, std::size_t most, Serve serve)
    : listening_(std::move(listening)), bell_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), most_(most),
      serve_(std::move(serve))
{
    if (!bell_.isOpen())
        throw Error(localized("the status pages cannot be served: %s", systemReason(errno)));
    acceptor_ = std::thread([this] { acceptAll(); });
}

HttpConnections::~HttpConnections()
{
    isStopping_ = true;
    ring();
    acceptor_.join();
    for (auto& connection : connections_)
        ::shutdown(connection.socket.get(), SHUT_RDWR);
    for (auto& connection : connections_)
        connection.thread.join();
}

bool HttpConnections::isCrowded() const { return connections_.size() >= crowd * most_; }

void HttpConnections::ring() const
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(bell_.get(), &one, sizeof one);
}

void HttpConnections::acceptAll()
{
    bool isFull = false;
    while (!isStopping_) {
        const bool hasRoom = !isFull && !isCrowded();
        std::array<pollfd, 2> waiting = {
            {{bell_.get(), POLLIN, 0}, {hasRoom ? listening_.get() : -1, POLLIN, 0}}};
        ::poll(waiting.data(), waiting.size(), isFull ? pauseWhenFull : -1);
        std::uint64_t rings = 0;
        [[maybe_unused]] const auto taken = ::read(bell_.get(), &rings, sizeof rings);
        removeDone();
        isFull = false;
        if (isStopping_ || isCrowded())
            continue;
        FileHandle socket(::accept4(listening_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        isFull = !socket.isOpen() && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR &&
                 errno != ECONNABORTED;
        if (!socket.isOpen())
            continue;
        makeRoom();
        try {
            take(std::move(socket));
        } catch (const std::system_error&) {
            isFull = true; // no thread is to be had: the browser sees the connection closed
            connections_.pop_back();
        }
    }
}

void HttpConnections::makeRoom()
{
    if (connections_.size() < most_)
        return;
    for (auto& connection : connections_) {
        if (connection.isShutDown || connection.isDone)
            continue;
        connection.isShutDown = true;
        ::shutdown(connection.socket.get(), SHUT_RDWR);
        return;
    }
}

void HttpConnections::take(FileHandle socket)
{
    auto& connection = connections_.emplace_back();
    connection.socket = std::move(socket);
    connection.thread = std::thread([this, &connection] {
        serve_(connection.socket);
        ::shutdown(connection.socket.get(), SHUT_RDWR);
        connection.isDone = true;
        ring();
    });
}

void HttpConnections::removeDone()
{
    for (auto connection = connections_.begin(); connection != connections_.end();) {
        if (!connection->isDone) {
            ++connection;
            continue;
        }
        connection->thread.join();
        connection = connections_.erase(connection);
    }
}

} // namespace quelm::device
