// Sends print jobs, well and badly.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/job_sender.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <utility>

namespace servers {
namespace {

bool waitFor(int socket, short events, std::chrono::milliseconds patience)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (true) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd one{socket, events, 0};
        const int ready = poll(&one, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
        if (ready > 0)
            return true;
        if (ready == 0 && left.count() <= 0)
            return false;
    }
}

} // namespace

JobSender::JobSender(const std::string& address)
{
    const auto colon = address.rfind(':');
    auto host = address.substr(0, colon);
    if (host.starts_with('['))
        host = host.substr(1, host.size() - 2);
    addrinfo wanted{};
    wanted.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.c_str(), address.substr(colon + 1).c_str(), &wanted, &found) != 0)
        throw std::runtime_error(address + " is no address");
    socket_ = socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected = connect(socket_, found->ai_addr, found->ai_addrlen) == 0;
    wasReset_ = !connected && errno == ECONNRESET; // as soon as it was taken
    freeaddrinfo(found);
    if (!connected && !wasReset_) {
        close();
        throw std::runtime_error("cannot connect to " + address);
    }
}

JobSender::JobSender(JobSender&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)), wasReset_(other.wasReset_), answer_(std::move(other.answer_))
{
}

JobSender::~JobSender() { close(); }

bool JobSender::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        if (!waitFor(socket_, POLLOUT, std::chrono::minutes(1)))
            return false;
        const auto sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        else if (errno != EAGAIN && errno != EINTR) {
            wasReset_ = true; // the system says so once
            return false;
        }
    }
    return true;
}

void JobSender::end() { shutdown(socket_, SHUT_WR); }

void JobSender::breakOff()
{
    const linger reset{1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
    close();
}

void JobSender::close()
{
    if (socket_ >= 0)
        ::close(std::exchange(socket_, -1));
}

DeviceEnding JobSender::waitForEnding(std::chrono::milliseconds patience)
{
    if (wasReset_)
        return DeviceEnding::reset;
    std::array<char, 4096> bytes;
    while (waitFor(socket_, POLLIN, patience)) {
        const auto count = recv(socket_, bytes.data(), bytes.size(), 0);
        if (count == 0)
            return DeviceEnding::closed;
        if (count < 0)
            return DeviceEnding::reset;
        answer_.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return DeviceEnding::open;
}

DeviceEnding sendJob(const std::string& address, std::string_view job)
{
    JobSender sender(address);
    sender.send(job);
    sender.end();
    return sender.waitForEnding();
}

} // namespace servers
