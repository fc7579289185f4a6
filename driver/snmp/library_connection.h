// Connections through the SNMP library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_SNMP_LIBRARY_CONNECTION_H
#define DRIVER_SNMP_LIBRARY_CONNECTION_H

#include "driver/device/snmp_connection.h"

#include <memory>

namespace quelm {

class LibraryConnection final : public SnmpConnection {
public:
    /// Sends nothing yet, as `SnmpLibrary::connect` says.
    LibraryConnection(const DeviceSettings& settings, const SocketAddress& device);
    ~LibraryConnection() override;

    SnmpReply get(const ObjectIdentifier& object, Deadline deadline) override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

class NetSnmpLibrary final : public SnmpLibrary {
public:
    [[nodiscard]] std::unique_ptr<SnmpConnection> connect(const DeviceSettings& settings,
                                                          const SocketAddress& device) const override
    {
        return std::make_unique<LibraryConnection>(settings, device);
    }
};

} // namespace quelm

#endif
