// A socket and a thread that serves it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/udp_device.h"

#include "tests/servers/loopback.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace servers {

namespace {

constexpr std::size_t largestDatagram = 65536;

const sockaddr* general(const sockaddr_in& address) { return reinterpret_cast<const sockaddr*>(&address); }

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

/// A client's socket, connected to a server on the loopback address.
class Client {
public:
    explicit Client(int port) : number_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        const sockaddr_in address = loopback(port);
        if (number_ < 0 || connect(number_, general(address), sizeof address) != 0)
            fail("cannot reach the server behind");
    }
    ~Client() { close(number_); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// What the server answers; empty when it does not within five seconds.
    std::string ask(const std::string& datagram) const
    {
        constexpr int patience = 5000;
        std::string answer(largestDatagram, '\0');
        pollfd waiting{number_, POLLIN, 0};
        send(number_, datagram.data(), datagram.size(), 0);
        if (poll(&waiting, 1, patience) <= 0)
            return "";
        const ssize_t size = recv(number_, answer.data(), answer.size(), 0);
        answer.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return answer;
    }

private:
    int number_;
};

} // namespace

UdpDevice::UdpDevice(DatagramHandler handler)
    : handle_(std::move(handler)), bound_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)),
      stopped_(eventfd(0, EFD_CLOEXEC))
{
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    if (bound_ < 0 || stopped_ < 0 || bind(bound_, general(address), size) != 0 ||
        getsockname(bound_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        fail("cannot bind a UDP socket");
    number_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

UdpDevice::~UdpDevice()
{
    ending_ = true;
    eventfd_write(stopped_, 1);
    thread_.join();
    close(bound_);
    close(stopped_);
}

void UdpDevice::serve()
{
    std::string datagram;
    for (;;) {
        std::array<pollfd, 2> waiting{{{bound_, POLLIN, 0}, {stopped_, POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[1].revents != 0)
            return;
        datagram.resize(largestDatagram);
        sockaddr_in from{};
        socklen_t size = sizeof from;
        const ssize_t got =
            recvfrom(bound_, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&from), &size);
        if (got < 0)
            continue; // a refusal of an earlier answer
        datagram.resize(static_cast<std::size_t>(got));
        ++count_;
        handle_(datagram, [&](const std::string& answer) {
            sendto(bound_, answer.data(), answer.size(), 0, general(from), sizeof from);
            return !ending_;
        });
    }
}

DatagramHandler beingSilent()
{
    return [](const std::string&, const Reply&) {};
}

DatagramHandler answeringWith(std::string text)
{
    return [text = std::move(text)](const std::string&, const Reply& reply) { reply(text); };
}

DatagramHandler floodingWith(std::string text)
{
    return [text = std::move(text)](const std::string&, const Reply& reply) {
        while (reply(text)) {
        }
    };
}

namespace {

/// Hands the datagrams of which `isLost` is false to the server at 127.0.0.1:`port`, its answers back.
template <class IsLost>
DatagramHandler handingOn(int port, IsLost isLost)
{
    return [isLost, client = std::make_shared<Client>(port)](const std::string& datagram,
                                                             const Reply& reply) mutable {
        if (isLost(datagram))
            return;
        if (const std::string answer = client->ask(datagram); !answer.empty())
            reply(answer);
    };
}

} // namespace

DatagramHandler losing(int lost, int port)
{
    return handingOn(port, [left = lost](const std::string&) mutable { return left-- > 0; });
}

DatagramHandler silentAbout(std::string bytes, int port)
{
    return handingOn(port, [bytes = std::move(bytes)](const std::string& datagram) {
        return datagram.find(bytes) != std::string::npos;
    });
}

} // namespace servers
