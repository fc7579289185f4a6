// A device that takes jobs as they are on a TCP port.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_TCP_DESTINATION_H
#define DRIVER_JOBS_TCP_DESTINATION_H

#include "base/net/network_address.h"
#include "driver/jobs/output.h"

#include <chrono>
#include <memory>

namespace quelm {

/// How long a device is waited for.
struct DeviceLimits {
    std::chrono::milliseconds lookUp = std::chrono::seconds(10); ///< for the address of its name
    std::chrono::milliseconds connect = std::chrono::seconds(5); ///< for a connection, per address
    std::chrono::milliseconds stall = std::chrono::seconds(60);  ///< while it takes no byte
    /// For it to close the connection when it has taken all; devices that never do are let be.
    std::chrono::milliseconds close = std::chrono::seconds(10);
};

/// Sends the job to a device, byte for byte, and ends the connection in order. All addresses of its name
/// are tried. Bytes count as sent when the device has acknowledged them, and what it sends back is dropped.
///
/// When the job does not go out whole, the error line says how much of it did, and the connection is reset
/// rather than closed: a closed one would tell the device that the job ends there. The same happens when
/// the process is killed meanwhile. Once a byte was sent, acknowledged or not, whatever ends the sending is a
/// `DeliveryInDoubt`. That a device took the job does not mean that the fax was sent.
std::unique_ptr<JobDestination> openDevice(const NetworkAddress& address, const DeviceLimits& limits = {});

} // namespace quelm

#endif
