// The driver's connection to the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DEVICE_DEVICE_SESSION_H
#define DRIVER_DEVICE_DEVICE_SESSION_H

#include "driver/device/device_settings.h"
#include "driver/device/snmp_session.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// The device that a driver is connected to.
///
/// A device that failed (it did not answer, cannot be found, refuses the user) is not asked again
/// within the same user action: fourteen settings of a device that is switched off cost one time-out,
/// not fourteen, and one warning. One that has answered in that action may be unable to tell a single
/// object: it has failed when the next is not answered either. The next user action asks it again, so
/// that a device that came back is found at once, and nobody has to wait for a quiet time to pass.
class DeviceSession {
public:
    /// Receives, behind each question that was sent, why there is no answer, one line; an empty text when
    /// there is one. `failed` says whether the device as such failed, and not the one object.
    using Report = std::function<void(const std::string& line, bool failed)>;

    /// Sends nothing. Throws Error when the settings' address is none.
    DeviceSession(const DeviceSettings& settings, Report report);

    /// Another user action begins: the device is asked again though it failed before.
    void startAction()
    {
        answersInAction_ = false;
        failuresInRow_ = 0;
    }

    /// One entry of a table. "ubqSvcMonServiceDetailTableLDAP" is the only one: index 0 is the address
    /// of the directory server, which an empty text is none of, and index 1 the entry below which it is
    /// searched, which may be empty (the whole directory). Nothing when the device does not have it.
    [[nodiscard]] std::optional<std::string> tableEntry(std::string_view table, int index);

    /// The object of that name (dotted numbers) as text. Nothing when the device does not have it.
    [[nodiscard]] std::optional<std::string> object(std::string_view name);

    /// Where the text of the latest table entry lies for the component.
    std::string& keptEntry() { return entry_; }

private:
    DeviceSettings settings_;
    Report report_;
    SnmpSession session_;
    bool failedInAction() const { return failuresInRow_ >= (answersInAction_ ? 2 : 1); }

    bool answersInAction_ = false; ///< it has answered since the action began
    int failuresInRow_ = 0;        ///< since it answered last, or the action began
    std::string entry_;
};

} // namespace quelm

#endif
