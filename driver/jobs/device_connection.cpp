// Words what kept a job from its device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/device_connection.h"

#include "base/duration_text.h"
#include "base/error.h"
#include "base/net/connector.h"
#include "base/net/look_up.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace quelm {
namespace {

using std::chrono::milliseconds;

std::string cancelledText(const std::string& who)
{
    return localized("%s: the job was cancelled before anything of it went out", who);
}

std::string failureOf(const std::string& who, const HostAnswer& answer, milliseconds limit)
{
    switch (answer.kind) {
    case HostAnswer::Kind::unknown:
        return localized("%s: there is no host of that name; check the name", who);
    case HostAnswer::Kind::unavailable:
        return localized(
            "%s: the name service does not answer; try again later, or give the device's IP address", who);
    case HostAnswer::Kind::late:
        return localized("%s: the name service does not answer within %s; try again later, or give the "
                         "device's IP address",
                         who, durationText(limit));
    case HostAnswer::Kind::cancelled:
        return cancelledText(who);
    default:
        return localized("%s: the name cannot be looked up: %s", who, answer.reason);
    }
}

/// How much an error says about the device, as against this machine's network.
int telling(int error)
{
    switch (error) {
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
                         systemReason(error));
    default:
        return localized("%s: cannot be connected to: %s", who, systemReason(error));
    }
}

} // namespace

std::vector<SocketAddress> lookUpDevice(const NetworkAddress& device, const std::string& who,
                                        milliseconds limit, const Cancellation& cancelled)
{
    HostAnswer answer = lookUp(device, SOCK_STREAM, std::chrono::steady_clock::now() + limit, cancelled);
    if (answer.kind != HostAnswer::Kind::found)
        throw Error(failureOf(who, answer, limit));
    return std::move(answer.addresses);
}

FileHandle connectToDevice(const std::vector<SocketAddress>& addresses, const std::string& who,
                           milliseconds limit, const Cancellation& cancelled)
{
    ConnectResult result = connectToAny(addresses, {{}, limit}, cancelled);
    if (result.kind == ConnectResult::Kind::connected)
        return std::move(result.connection);
    if (result.kind == ConnectResult::Kind::cancelled)
        throw Error(cancelledText(who));
    throw Error(failureOf(who, *std::ranges::max_element(result.errors, {}, telling), limit));
}

} // namespace quelm
