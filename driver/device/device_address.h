// Finding the device behind its address.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DEVICE_DEVICE_ADDRESS_H
#define DRIVER_DEVICE_DEVICE_ADDRESS_H

#include "base/bounded_call.h"
#include "base/net/network_address.h"
#include "base/net/socket_address.h"

#include <cstdint>
#include <vector>

namespace quelm {

/// The port on which devices answer SNMP, unless they are told otherwise.
inline constexpr std::uint16_t snmpPort = 161;

/// All that the name service knows of the device, in the order in which it is to be tried; at least
/// one. A numeric address asks nobody. Throws Error when there is none or `deadline` passes.
std::vector<SocketAddress> findDevice(const NetworkAddress& device, Deadline deadline);

} // namespace quelm

#endif
