// The way to a device: its name, its addresses, a connection.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_DEVICE_CONNECTION_H
#define DRIVER_JOBS_DEVICE_CONNECTION_H

#include "base/cancellation.h"
#include "base/file_handle.h"
#include "base/net/network_address.h"
#include "base/net/socket_address.h"

#include <chrono>
#include <string>
#include <vector>

namespace quelm {

/// All addresses of a device, in the order in which they are to be tried; at least one. Throws quelm::Error
/// with a line that begins with `who` when there is no such host, the name service does not answer within
/// `limit`, or it is `cancelled`.
std::vector<SocketAddress> lookUpDevice(const NetworkAddress& device, const std::string& who,
                                        std::chrono::milliseconds limit, const Cancellation& cancelled);

/// A non-blocking TCP connection to the first of `addresses` that takes one; each is waited for at most
/// `limit`. Throws quelm::Error with a line that begins with `who` and tells the most telling of the
/// reasons when none does, or when it is `cancelled`.
FileHandle connectToDevice(const std::vector<SocketAddress>& addresses, const std::string& who,
                           std::chrono::milliseconds limit, const Cancellation& cancelled);

} // namespace quelm

#endif
