// One open SNMP session with one address of a device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DEVICE_SNMP_CONNECTION_H
#define DRIVER_DEVICE_SNMP_CONNECTION_H

#include "driver/device/device_address.h"
#include "driver/device/device_settings.h"
#include "driver/device/object_identifier.h"

#include <memory>
#include <string>

namespace quelm {

/// What a request came to.
struct SnmpReply {
    enum class Kind {
        value,    ///< `text` is the object's value
        noObject, ///< the device has no such object, or one without a text
        error, ///< the device refuses the request; `number` is SNMP's error status, `text` the library's word
               ///< for it
        report,  ///< version 3: the device refuses the user; `number` is one of `UserReport`
        rubbish, ///< the device answered something else than it was asked
        silent,  ///< no answer came within the time
        refused, ///< nobody can be reached there; `number` is an errno value
    };
    Kind kind = Kind::silent;
    std::string text;
    long number = 0;

    /// True when the device itself answered.
    bool answered() const { return kind != Kind::silent && kind != Kind::refused; }
};

/// SNMP's error status of a device that gives the user no rights.
inline constexpr long noRights = 16;

/// Why a device refuses a user of version 3: the last number but one of the object that it reports.
enum UserReport : long {
    unsupportedSecurity = 1,
    unknownUser = 3,
    wrongPassphrase = 5,
    undecryptable = 6,
};

/// A UDP session, of any version. It is of no use any more once a request was silent or refused.
/// At most one connection exists at a time: users of version 3 are the process's.
class SnmpConnection {
public:
    SnmpConnection() = default;
    virtual ~SnmpConnection() = default;
    SnmpConnection(const SnmpConnection&) = delete;
    SnmpConnection& operator=(const SnmpConnection&) = delete;

    /// Asks for one object, and returns at `deadline` at the latest; until then the request is
    /// repeated at even intervals, as often as the settings say. With version 3 the first request is
    /// preceded by one that learns the device's engine.
    virtual SnmpReply get(const ObjectIdentifier& object, Deadline deadline) = 0;
};

/// Makes connections. Implemented by the module "device", which brings the SNMP library.
class SnmpLibrary {
public:
    static constexpr const char* moduleName = "device";

    SnmpLibrary() = default;
    virtual ~SnmpLibrary() = default;
    SnmpLibrary(const SnmpLibrary&) = delete;
    SnmpLibrary& operator=(const SnmpLibrary&) = delete;

    /// Sends nothing yet. Throws Error when this system does not have the user's methods.
    [[nodiscard]] virtual std::unique_ptr<SnmpConnection> connect(const DeviceSettings& settings,
                                                                  const SocketAddress& device) const = 0;
};

} // namespace quelm

#endif
