// The driver's configuration file.
#ifndef DRIVER_CONFIG_CONFIGURATION_H
#define DRIVER_CONFIG_CONFIGURATION_H

#include <optional>
#include <string>

#include "driver/device/device_settings.h"
#include "driver/directory/directory_settings.h"
#include "driver/plugin/fax_session.h"

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
};

/// Reads one file (UTF-8). Throws Error that names the file and the group, key or line when it is
/// missing, unreadable, malformed, or says something that the driver does not know or that does not
/// fit together. A file that holds a secret (a community other than "public", a passphrase) must be
/// the process's user's own, or root's, and nobody else's to read or write.
Configuration readConfiguration(const std::string& path);

/// Reads the file named on the command line; without one the user's own
/// ($XDG_CONFIG_HOME/quelm/quelm.conf, by default below ~/.config) when it is there.
Configuration loadConfiguration(const std::optional<std::string>& namedFile);

/// Where the user's own configuration file is looked for; empty when no home folder is known.
std::string userConfigurationFile();

} // namespace quelm

#endif
