// Asks a device for its objects, whatever its addresses and whatever it answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DEVICE_SNMP_SESSION_H
#define DRIVER_DEVICE_SNMP_SESSION_H

#include "driver/device/device_address.h"
#include "driver/device/device_settings.h"
#include "driver/device/object_identifier.h"
#include "driver/device/snmp_connection.h"

#include <memory>
#include <string>

namespace quelm {

/// What became of one question to the device.
struct SnmpAnswer {
    enum class Kind {
        value,         ///< `text` is the object's value (UTF-8, one line)
        noObject,      ///< the device has no such object
        objectRefused, ///< the device does not tell this one; `trouble` says why
        deviceFailed,  ///< the device cannot be asked for anything now; `trouble` says why
    };
    Kind kind = Kind::deviceFailed;
    std::string text;
    std::string trouble; ///< one line: which device, what is wrong, what to do
};

/// A device and how it is asked. Nothing is sent, and no name looked up, before the first question.
/// A device that has answered before, and does not within half of the time, is looked for from the
/// beginning in the other half: one that was exchanged, or moved to another address, is found.
class SnmpSession {
public:
    /// Throws Error when the settings' address is none.
    explicit SnmpSession(DeviceSettings settings);

    /// Asks for one object. It takes the settings' time-out at most, and that long only when nobody
    /// answers. A name with several addresses shares the time out among them, until one answers.
    SnmpAnswer get(const ObjectIdentifier& object);

private:
    SnmpReply ask(const ObjectIdentifier& object, Deadline deadline);
    SnmpReply connectAndAsk(const ObjectIdentifier& object, Deadline deadline);
    std::string troubleWith(const SnmpReply& reply, const ObjectIdentifier& object) const;
    std::string silence() const;
    std::string refusal(long systemError) const;
    std::string userTrouble(long report) const;

    DeviceSettings settings_;
    NetworkAddress address_;
    std::unique_ptr<SnmpConnection> connection_;
};

} // namespace quelm

#endif
