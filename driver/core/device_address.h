// Finding the device behind its address.
#ifndef DRIVER_CORE_DEVICE_ADDRESS_H
#define DRIVER_CORE_DEVICE_ADDRESS_H

#include "driver/core/bounded_call.h"
#include "driver/core/network_address.h"

#include <cstdint>
#include <string>
#include <vector>

#include <sys/socket.h>

namespace quelm {

/// The port on which devices answer SNMP, unless they are told otherwise.
inline constexpr std::uint16_t snmpPort = 161;

/// One numeric address of a device.
struct DeviceEndpoint {
    sockaddr_storage address{};
    socklen_t size = 0;
    std::string numeric;    ///< "127.0.0.1" or "::1"
    std::uint16_t port = 0; ///< of the address
};

/// All that the name service knows of the device, in the order in which it is to be tried; at least
/// one. A numeric address asks nobody. Throws Error when there is none or `deadline` passes; a name
/// service that answers later still keeps a thread until then, which does no harm.
std::vector<DeviceEndpoint> findDevice(const NetworkAddress& device, Deadline deadline);

} // namespace quelm

#endif
