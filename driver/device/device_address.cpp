// Asks the name service for the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/device_address.h"

#include "base/error.h"
#include "base/net/look_up.h"
#include "base/translation.h"

#include <utility>

namespace quelm {

namespace {

std::string troubleOf(const NetworkAddress& device, const HostAnswer& answer)
{
    switch (answer.kind) {
    case HostAnswer::Kind::unknown:
        return localized("the device %s is not known to the name service; check its name", toText(device));
    case HostAnswer::Kind::unavailable:
        return localized("the device %s cannot be looked up: the name service does not answer; try again "
                         "later, or give its IP address",
                         toText(device));
    case HostAnswer::Kind::late:
        return localized("the device %s cannot be looked up: the name service does not answer in time; "
                         "try again later, or give its IP address",
                         toText(device));
    default:
        return localized("the device %s cannot be looked up: %s; give its IP address", toText(device),
                         answer.reason);
    }
}

} // namespace

std::vector<SocketAddress> findDevice(const NetworkAddress& device, Deadline deadline)
{
    HostAnswer answer = lookUp(device, SOCK_DGRAM, deadline);
    if (answer.kind != HostAnswer::Kind::found)
        throw Error(troubleOf(device, answer));
    return std::move(answer.addresses);
}

} // namespace quelm
