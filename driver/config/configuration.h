// What the driver's configuration says.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_CONFIGURATION_H
#define DRIVER_CONFIG_CONFIGURATION_H

#include "driver/device/device_settings.h"
#include "driver/directory/directory_settings.h"
#include "driver/plugin/fax_session.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// A place that faxes go to, under a name of its own.
struct NamedDestination {
    enum class Kind { none, file, device, queue };
    std::string name; ///< UTF-8
    Kind kind = Kind::none;
    std::string place = {};      ///< an absolute path, HOST or HOST:PORT, or the name of a queue
    std::string server = {};     ///< of a queue: HOST or HOST:PORT; empty for the user's own
    std::optional<Pdl> pdl = {}; ///< the form of jobs that it takes; nothing: that of all jobs
};

/// Who the sender is, as the sender dialog shows it: UTF-8, one line each; empty where nothing says.
struct SenderPresets {
    std::string name;
    std::string number;
    std::string organization;
    std::string phone;
    std::string email;
};

/// Where a value stands.
struct ConfiguredValue {
    std::string group; ///< "job", "destination Office"
    std::string name;
    std::string value; ///< as written; a path is absolute
    std::string file;
    int line = 0; ///< counted from 1
};

/// A file that was looked for.
struct ConfigurationSource {
    std::string file;
    bool isThere = false; ///< then it was read
};

/// What the configuration files say; what they leave out is empty, or the default of the settings.
///
///     [driver]
///     home = /opt/quelm            # installation folder
///     user = anne                  # for whom the driver runs
///     component = lib/libFax.so    # the component to load
///
///     [job]
///     pdl = dsc                    # or pjl: the form of the job attributes
///     destination = Office         # where faxes go, unless something else is said
///
///     [destination Office]
///     queue = fax@print.example    # or device = ..., or file = ...
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
/// Relative paths count from the folder of the file in which they stand.
struct Configuration {
    std::string file; ///< the file that counts most, of those that were read; empty when none was
    std::optional<std::string> home;
    std::optional<std::string> user;
    std::optional<std::string> component;
    std::optional<Pdl> pdl;
    /// The default destination, which is one of `destinations`; empty for none.
    std::string destination;
    std::vector<NamedDestination> destinations; ///< no two of one name; those of the user's own file first
    std::string resolution;                     ///< "standard", "fine" or "superfine"; empty: nothing says
    std::string dialingPrefix;                  ///< digits, "*", "#" and ","; empty for none
    SenderPresets sender;
    std::string sharedPhonebook; ///< an absolute path; empty: nothing says
    DeviceSettings device;       ///< with an address only when the file names one
    DirectorySettings directory;
    int outboxKeepDays = 30; ///< 0 to 3650; 0: nothing that was handed over is kept

    std::vector<ConfigurationSource> sources; ///< all that were looked for, the one that counts most first
    std::vector<ConfiguredValue> values;      ///< those that count, each once

    /// Where the value of that key stands, or null when no file says it.
    [[nodiscard]] const ConfiguredValue* find(std::string_view group, std::string_view name) const;
    /// The destination of that name, or null.
    [[nodiscard]] const NamedDestination* findDestination(std::string_view name) const;
};

} // namespace quelm

#endif
