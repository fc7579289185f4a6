// Waits for the name service no longer than the user wants to.
#include "base/net/host_lookup.h"

#include "base/cancellable_call.h"
#include "base/duration_text.h"
#include "base/error.h"
#include "base/translation.h"

#include <utility>

namespace quelm {
namespace {

std::string failureOf(const std::string& who, const HostAnswer& answer)
{
    switch (answer.kind) {
    case HostAnswer::Kind::unknown:
        return localized("%s: there is no host of that name; check the name", who);
    case HostAnswer::Kind::unavailable:
        return localized(
            "%s: the name service does not answer; try again later, or give the device's IP address", who);
    default:
        return localized("%s: the name cannot be looked up: %s", who, answer.reason);
    }
}

} // namespace

std::vector<SocketAddress> lookUpHost(const NetworkAddress& address, const std::string& who,
                                      std::chrono::milliseconds limit, const Cancellation& cancelled)
{
    auto answer = callWithin(limit, cancelled, [address] { return askNameService(address, SOCK_STREAM); });
    if (!answer && isCancelled(cancelled))
        throw Error(localized("%s: the job was cancelled before anything of it went out", who));
    if (!answer)
        throw Error(localized("%s: the name service does not answer within %s; try again later, or give the "
                              "device's IP address",
                              who, durationText(limit)));
    if (answer->kind != HostAnswer::Kind::found)
        throw Error(failureOf(who, *answer));
    return std::move(answer->addresses);
}

} // namespace quelm
