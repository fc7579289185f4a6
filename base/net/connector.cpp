// Tries address after address.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/connector.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Until when one address is waited for, with `untried` of them left, this one included.
Deadline deadlineFor(const ConnectLimits& limits, Deadline now, std::size_t untried)
{
    Deadline deadline = Deadline::max();
    if (limits.all)
        deadline = now + (*limits.all - now) / static_cast<int>(untried);
    if (limits.each)
        deadline = std::min(deadline, now + *limits.each);
    return deadline;
}

/// Waits for a connection that is being made: 0 when it stands, otherwise the system's error number.
int finishConnecting(int connection, Deadline deadline, const Cancellation& cancelled)
{
    for (;;) {
        if (isCancelled(cancelled))
            return ECANCELED;
        const auto left = deadline - Clock::now();
        if (left <= Clock::duration::zero())
            return ETIMEDOUT;
        const auto pause =
            std::chrono::ceil<milliseconds>(std::min<Clock::duration>(left, cancellationInterval));
        pollfd ready{connection, POLLOUT, 0};
        const int count = ::poll(&ready, 1, static_cast<int>(pause.count()));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count <= 0)
            continue; // nothing yet, or a signal, which may be a cancellation
        int error = 0;
        socklen_t size = sizeof error;
        ::getsockopt(connection, SOL_SOCKET, SO_ERROR, &error, &size);
        return error;
    }
}

/// 0 and a connection, or the system's error number; ECANCELED when it was cancelled.
int tryToConnect(const SocketAddress& address, FileHandle& connection, Deadline deadline,
                 const Cancellation& cancelled)
{
    connection = FileHandle(::socket(address.family(), SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!connection.isOpen())
        return errno;
    if (::connect(connection.get(), address.get(), address.size) == 0)
        return 0;
    // Interrupted by a signal it goes on being made, too.
    return errno == EINPROGRESS || errno == EINTR ? finishConnecting(connection.get(), deadline, cancelled)
                                                  : errno;
}

} // namespace

ConnectResult connectToAny(const std::vector<SocketAddress>& addresses, const ConnectLimits& limits,
                           const Cancellation& cancelled)
{
    using Kind = ConnectResult::Kind;
    ConnectResult result;
    const auto isOver = [&limits](Deadline now) { return limits.all && now >= *limits.all; };
    for (std::size_t next = 0; next < addresses.size(); ++next) {
        const auto now = Clock::now();
        if (isOver(now)) {
            result.kind = Kind::late;
            return result;
        }
        FileHandle connection;
        const int error = tryToConnect(addresses[next], connection,
                                       deadlineFor(limits, now, addresses.size() - next), cancelled);
        if (error == 0) {
            result.kind = Kind::connected;
            result.connection = std::move(connection);
            return result;
        }
        if (error == ECANCELED) {
            result.kind = Kind::cancelled;
            return result;
        }
        result.errors.push_back(error);
    }
    if (!result.errors.empty() && result.errors.back() == ETIMEDOUT && isOver(Clock::now()))
        result.kind = Kind::late;
    return result;
}

} // namespace quelm
