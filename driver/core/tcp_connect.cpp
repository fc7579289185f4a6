// Resolves a name and connects, both within bounds.
#include "driver/core/tcp_connect.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <memory>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;

using Addresses = std::shared_ptr<const addrinfo>;

struct Resolution {
    int error = 0;
    int systemError = 0; ///< with EAI_SYSTEM
    Addresses addresses;
};

Resolution resolve(const std::string& host, int port, int flags)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICSERV | flags;
    addrinfo* list = nullptr;
    Resolution result;
    result.error = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &list);
    result.systemError = errno;
    if (result.error == 0)
        result.addresses = Addresses(list, freeaddrinfo);
    return result;
}

[[noreturn]] void failForTime() { throw ConnectError(ConnectProblem::timedOut, std::strerror(ETIMEDOUT)); }

Addresses addressesOf(const std::string& host, int port, Deadline deadline)
{
    if (const Resolution numeric = resolve(host, port, AI_NUMERICHOST); numeric.error == 0)
        return numeric.addresses;
    auto lookup = startCall([host, port] { return resolve(host, port, AI_IDN); });
    if (!lookup.isBackBefore(deadline))
        throw ConnectError(ConnectProblem::nameTimedOut, std::strerror(ETIMEDOUT));
    const Resolution found = lookup.get();
    if (found.error == 0)
        return found.addresses;
    const char* reason =
        found.error == EAI_SYSTEM ? std::strerror(found.systemError) : gai_strerror(found.error);
    throw ConnectError(ConnectProblem::unknownName, reason);
}

/// Waits until the connection is established or failed; 0 or an error number.
int outcome(int connecting, Deadline deadline)
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd established{connecting, POLLOUT, 0};
        const int answer = poll(&established, 1, static_cast<int>(std::max<long long>(0, left.count())));
        if (answer > 0)
            break;
        if (answer == 0)
            return ETIMEDOUT;
        if (errno != EINTR)
            return errno;
    }
    int error = 0;
    socklen_t size = sizeof error;
    getsockopt(connecting, SOL_SOCKET, SO_ERROR, &error, &size);
    return error;
}

/// A connected socket, or -1 with the reason in `error`.
int connectTo(const addrinfo& address, Deadline deadline, int& error)
{
    const int made =
        socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol);
    if (made < 0) {
        error = errno;
        return -1;
    }
    error = connect(made, address.ai_addr, address.ai_addrlen) == 0 ? 0 : errno;
    if (error == EINPROGRESS || error == EINTR)
        error = outcome(made, deadline);
    if (error != 0) {
        close(made);
        return -1;
    }
    // Requests are short and wait for their answers.
    const int on = 1;
    setsockopt(made, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return made;
}

} // namespace

int connectTcp(const std::string& host, int port, Deadline deadline)
{
    const Addresses addresses = addressesOf(host, port, deadline);
    int untried = 0;
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next)
        ++untried;
    int error = 0;
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
        const auto now = Clock::now();
        if (now >= deadline)
            failForTime();
        // One address that leads nowhere must not cost the others their turn.
        const int connected = connectTo(*address, now + (deadline - now) / untried--, error);
        if (connected >= 0)
            return connected;
    }
    if (error == ETIMEDOUT && Clock::now() >= deadline)
        failForTime();
    throw ConnectError(error == ECONNREFUSED ? ConnectProblem::refused : ConnectProblem::unreachable,
                       std::strerror(error));
}

} // namespace quelm
