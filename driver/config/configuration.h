// What the driver's configuration says.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_CONFIGURATION_H
#define DRIVER_CONFIG_CONFIGURATION_H

#include "driver/device/device_settings.h"
#include "driver/directory/directory_settings.h"
#include "driver/plugin/fax_session.h"

#include <optional>
#include <string>

namespace quelm {

/// What a configuration file says; what it leaves out is empty, or the default of the settings.
///
///     [driver]
///     home = /opt/quelm            # installation folder
///     user = anne                  # for whom the driver runs
///     component = lib/libFax.so    # the component to load
///
///     [job]
///     pdl = dsc                    # or pjl: the form of the job attributes
///
///     [device]
///     snmp = fax.example:161       # where the device answers SNMP
///     version = 2c                 # or 1, or 3
///
///     [directory]
///     start-tls = true             # how directory servers are talked to
///
///     [outbox]
///     keep-days = 30               # how long jobs that were handed over are kept
///
/// (A comment stands on a line of its own in a real file. docs/command-line.md lists all keys.)
/// Relative paths count from the file's own folder.
struct Configuration {
    std::string file; ///< where it came from; empty when no file was read
    std::optional<std::string> home;
    std::optional<std::string> user;
    std::optional<std::string> component;
    std::optional<Pdl> pdl;
    DeviceSettings device; ///< with an address only when the file names one
    DirectorySettings directory;
    int outboxKeepDays = 30; ///< 0 to 3650; 0: nothing that was handed over is kept
};

} // namespace quelm

#endif
