// Resolves a name and connects, both within bounds.
#include "base/net/tcp_connect.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>
#include <vector>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "base/net/name_service.h"

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void failForTime() { throw ConnectError(ConnectProblem::timedOut, std::strerror(ETIMEDOUT)); }

std::vector<SocketAddress> addressesOf(const NetworkAddress& host, Deadline deadline)
{
    if (HostAnswer numeric = readNumericAddress(host, SOCK_STREAM); numeric.kind == HostAnswer::Kind::found)
        return std::move(numeric.addresses);
    auto lookup = startCall([host] { return askNameService(host, SOCK_STREAM); });
    if (!lookup.isBackBefore(deadline))
        throw ConnectError(ConnectProblem::nameServiceSilent, std::strerror(ETIMEDOUT));
    HostAnswer answer = lookup.get();
    if (answer.kind == HostAnswer::Kind::unavailable)
        throw ConnectError(ConnectProblem::nameServiceSilent, answer.reason);
    if (answer.kind != HostAnswer::Kind::found)
        throw ConnectError(ConnectProblem::unknownName, answer.reason);
    return std::move(answer.addresses);
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
int connectTo(const SocketAddress& address, Deadline deadline, int& error)
{
    const int made = socket(address.family(), SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made < 0) {
        error = errno;
        return -1;
    }
    error = connect(made, address.get(), address.size) == 0 ? 0 : errno;
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

int connectTcp(const NetworkAddress& host, Deadline deadline)
{
    const std::vector<SocketAddress> addresses = addressesOf(host, deadline);
    auto untried = static_cast<int>(addresses.size());
    int error = 0;
    for (const SocketAddress& address : addresses) {
        const auto now = Clock::now();
        if (now >= deadline)
            failForTime();
        // One address that leads nowhere must not cost the others their turn.
        const int connected = connectTo(address, now + (deadline - now) / untried--, error);
        if (connected >= 0)
            return connected;
    }
    if (error == ETIMEDOUT && Clock::now() >= deadline)
        failForTime();
    throw ConnectError(error == ECONNREFUSED ? ConnectProblem::refused : ConnectProblem::unreachable,
                       std::strerror(error));
}

} // namespace quelm
