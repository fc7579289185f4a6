// Accepts connections and does with them what the manner says.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/print_listener.h"

#include "tests/servers/loopback.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <system_error>

namespace servers {

namespace {

constexpr std::chrono::minutes patience{1};

void require(bool condition, const char* what)
{
    if (!condition)
        throw std::system_error(errno, std::generic_category(), what);
}

/// A listening socket on a free port of a loopback address.
int listenOnLoopback(bool ipv6, int& port)
{
    const int made = socket(ipv6 ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    require(made >= 0, "socket");
    // A small window, so that a device that stops reading is felt soon.
    const int window = 4096;
    setsockopt(made, SOL_SOCKET, SO_RCVBUF, &window, sizeof window);
    sockaddr_in v4 = loopback(0);
    sockaddr_in6 v6{};
    v6.sin6_family = AF_INET6;
    v6.sin6_addr = in6addr_loopback;
    auto* address = ipv6 ? reinterpret_cast<sockaddr*>(&v6) : reinterpret_cast<sockaddr*>(&v4);
    socklen_t size = ipv6 ? sizeof v6 : sizeof v4;
    require(bind(made, address, size) == 0, "bind");
    require(listen(made, 16) == 0, "listen");
    require(getsockname(made, address, &size) == 0, "getsockname");
    port = ntohs(ipv6 ? v6.sin6_port : v4.sin_port);
    return made;
}

void resetOnClose(int connection)
{
    const linger atOnce{1, 0};
    setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

} // namespace

PrintListener::PrintListener(Manner how, std::size_t bytes, bool ipv6)
    : manner_(how), mostBytes_(bytes), onIpv6_(ipv6), listening_(listenOnLoopback(ipv6, number_)),
      stopped_(eventfd(0, EFD_CLOEXEC)), thread_([this] { serve(); })
{
}

PrintListener::~PrintListener()
{
    stop();
    close(listening_);
    close(stopped_);
}

void PrintListener::stop()
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(stopped_, &one, sizeof one);
    if (thread_.joinable())
        thread_.join();
}

std::string PrintListener::address() const
{
    return (onIpv6_ ? "[::1]:" : "127.0.0.1:") + std::to_string(number_);
}

std::string PrintListener::received()
{
    const std::lock_guard lock(mutex_);
    return content_;
}

bool PrintListener::waitForBytes(std::size_t count)
{
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [&] { return content_.size() >= count; });
}

Ending PrintListener::waitForEnding()
{
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [&] { return ending_ != Ending::open; });
    return ending_;
}

int PrintListener::connections()
{
    const std::lock_guard lock(mutex_);
    return accepted_;
}

void PrintListener::note(Ending how)
{
    const std::lock_guard lock(mutex_);
    ending_ = how;
    changed_.notify_all();
}

void PrintListener::serve()
{
    for (;;) {
        std::array<pollfd, 2> waits{{{listening_, POLLIN, 0}, {stopped_, POLLIN, 0}}};
        while (poll(waits.data(), waits.size(), -1) < 0 && errno == EINTR) {
        }
        if (waits[1].revents != 0)
            return;
        const int connection = accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (connection < 0)
            continue;
        {
            const std::lock_guard lock(mutex_);
            content_.clear();
            ending_ = Ending::open;
            ++accepted_;
        }
        take(connection);
        close(connection);
    }
}

/// Reads until the sender or the device ends, or `most` bytes are there. False when there is nothing
/// more to be had of the connection.
bool PrintListener::readOn(int connection, std::size_t most)
{
    constexpr std::size_t little = 16384;
    constexpr int pause = 10; // milliseconds
    const bool slow = manner_ == Manner::slow;
    std::array<char, 65536> block;
    std::size_t total = 0;
    while (total < most) {
        if (!waitFor(connection, POLLIN) || (slow && isStopped(pause)))
            return false;
        const auto wanted = std::min(slow ? little : block.size(), most - total);
        const auto count = recv(connection, block.data(), wanted, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        if (count <= 0) {
            note(count == 0 ? Ending::closed : Ending::reset);
            return count == 0;
        }
        total += static_cast<std::size_t>(count);
        const std::lock_guard lock(mutex_);
        content_.append(block.data(), static_cast<std::size_t>(count));
        changed_.notify_all();
    }
    return true;
}

/// More than the buffers on both sides of a connection have room for.
bool PrintListener::answer(int connection)
{
    const std::string status(65536, '@');
    for (std::size_t left = std::size_t{16} << 20U; left > 0;) {
        if (!waitFor(connection, POLLOUT))
            return false;
        const auto count =
            send(connection, status.data(), std::min(status.size(), left), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        left -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return true;
}

/// Waits for the connection; false when the device is to end.
bool PrintListener::waitFor(int connection, short events) const
{
    std::array<pollfd, 2> waits{{{connection, events, 0}, {stopped_, POLLIN, 0}}};
    while (poll(waits.data(), waits.size(), -1) < 0 && errno == EINTR) {
    }
    return waits[1].revents == 0;
}

bool PrintListener::isStopped(int milliseconds) const
{
    pollfd wait{stopped_, POLLIN, 0};
    return poll(&wait, 1, milliseconds) > 0;
}

void PrintListener::take(int connection)
{
    constexpr auto everything = static_cast<std::size_t>(-1);
    const bool partly = manner_ == Manner::stalls || manner_ == Manner::closes || manner_ == Manner::resets ||
                        manner_ == Manner::halfClosesThenResets;
    if (manner_ == Manner::answersFirst && !answer(connection))
        return;
    if (manner_ == Manner::halfClosesThenResets) {
        constexpr int untilItIsSeen = 200; // milliseconds
        shutdown(connection, SHUT_WR);
        if (isStopped(untilItIsSeen))
            return;
    }
    if (!readOn(connection, partly ? mostBytes_ : everything))
        return;
    switch (manner_) {
    case Manner::resets:
    case Manner::resetsAtTheEnd:
    case Manner::halfClosesThenResets:
        return resetOnClose(connection);
    case Manner::stalls:
    case Manner::neverCloses:
        waitFor(connection, 0);
        // Without reading, the only event is that the sender breaks off.
        if (pollfd reset{connection, 0, 0}; poll(&reset, 1, 0) > 0)
            note(Ending::reset);
        return;
    default:
        return;
    }
}

} // namespace servers
