// Asks the name service for the device.
#include "driver/device/device_address.h"

#include "base/error.h"
#include "base/translation.h"

#include <utility>

namespace quelm {

namespace {

std::string troubleOf(const NetworkAddress& device, const HostAnswer& answer)
{
    switch (answer.kind) {
    case HostAnswer::Kind::unknown:
        return localized("The device %s is not known to the name service; check its name", toText(device));
    case HostAnswer::Kind::unavailable:
        return localized("The device %s cannot be looked up: the name service does not answer; try again "
                         "later, or give its IP address",
                         toText(device));
    default:
        return localized("The device %s cannot be looked up: %s; give its IP address", toText(device),
                         answer.reason);
    }
}

} // namespace

std::vector<SocketAddress> findDevice(const NetworkAddress& device, Deadline deadline)
{
    if (HostAnswer numeric = readNumericAddress(device, SOCK_DGRAM); numeric.kind == HostAnswer::Kind::found)
        return std::move(numeric.addresses);
    auto lookup = startCall([device] { return askNameService(device, SOCK_DGRAM); });
    if (!lookup.isBackBefore(deadline))
        throw Error(localized("The device %s cannot be looked up: the name service does not answer in time; "
                              "try again later, or give its IP address",
                              toText(device)));
    HostAnswer answer = lookup.get();
    if (answer.kind != HostAnswer::Kind::found)
        throw Error(troubleOf(device, answer));
    return std::move(answer.addresses);
}

} // namespace quelm
