// Tries address after address, each within a bound.
#include "base/net/tcp_connection.h"

#include "base/duration_text.h"
#include "base/error.h"
#include "base/translation.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

[[noreturn]] void failCancelled(const std::string& who)
{
    throw Error(localized("%s: the job was cancelled before anything of it went out", who));
}

/// Waits for a connection that is being made: 0 when it stands, otherwise the system's error number.
int finishConnecting(int descriptor, const std::string& who, milliseconds limit,
                     const Cancellation& cancelled)
{
    const auto deadline = Clock::now() + limit;
    for (;;) {
        if (isCancelled(cancelled))
            failCancelled(who);
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
        if (left <= milliseconds::zero())
            return ETIMEDOUT;
        pollfd connection{descriptor, POLLOUT, 0};
        if (::poll(&connection, 1, static_cast<int>(std::min(left, cancellationInterval).count())) <= 0)
            continue; // nothing yet, or a signal, which may be a cancellation
        int error = 0;
        socklen_t size = sizeof error;
        ::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
        return error;
    }
}

/// 0 and a connection, or the system's error number.
int tryToConnect(const SocketAddress& address, FileHandle& connection, const std::string& who,
                 milliseconds limit, const Cancellation& cancelled)
{
    connection =
        FileHandle(::socket(address.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!connection.isOpen())
        return errno;
    if (::connect(connection.get(), address.get(), address.size) == 0)
        return 0;
    // Interrupted by a signal it goes on being made, too.
    return errno == EINPROGRESS || errno == EINTR ? finishConnecting(connection.get(), who, limit, cancelled)
                                                  : errno;
}

/// How much an error says about the device, as against this machine's network.
int telling(int error)
{
    switch (error) {
    case 0:
        return 0;
    case ECONNREFUSED:
    case ECONNRESET:
        return 3;
    case ETIMEDOUT:
        return 2;
    default:
        return 1;
    }
}

std::string failureOf(const std::string& who, int error, milliseconds limit)
{
    switch (error) {
    case ECONNREFUSED:
    case ECONNRESET:
        return localized(
            "%s: refuses the connection; check the port, and whether the device is ready for jobs", who);
    case ETIMEDOUT:
        return localized(
            "%s: does not answer within %s; check the address, and whether the device is switched on", who,
            durationText(limit));
    case ENETUNREACH:
    case EHOSTUNREACH:
    case EHOSTDOWN:
    case ENETDOWN:
        return localized("%s: cannot be reached (%s); check the address and the network", who,
                         std::strerror(error));
    default:
        return localized("%s: cannot be connected to: %s", who, std::strerror(error));
    }
}

} // namespace

FileHandle connectToAny(const std::vector<SocketAddress>& addresses, const std::string& who,
                        milliseconds limit, const Cancellation& cancelled)
{
    int reason = 0;
    for (const SocketAddress& address : addresses) {
        FileHandle connection;
        const int error = tryToConnect(address, connection, who, limit, cancelled);
        if (error == 0)
            return connection;
        if (telling(error) > telling(reason))
            reason = error;
    }
    throw Error(failureOf(who, reason, limit));
}

} // namespace quelm
