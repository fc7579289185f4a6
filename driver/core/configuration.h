// The driver's configuration file.
#ifndef DRIVER_CORE_CONFIGURATION_H
#define DRIVER_CORE_CONFIGURATION_H

#include <optional>
#include <string>

#include "driver/core/fax_session.h"

namespace quelm {

/// What a configuration file says; what it leaves out is empty.
///
///     [driver]
///     home = /opt/quelm            # installation folder
///     user = anne                  # for whom the driver runs
///     component = lib/libFax.so    # the component to load
///
///     [job]
///     pdl = dsc                    # or pjl: the form of the job attributes
///
/// (A comment stands on a line of its own in a real file.) Relative paths count from the file's
/// own folder.
struct Configuration {
    std::string file; ///< where it came from; empty when no file was read
    std::optional<std::string> home;
    std::optional<std::string> user;
    std::optional<std::string> component;
    std::optional<Pdl> pdl;
};

/// Reads one file (UTF-8). Throws Error that names the file and the group, key or line when it is
/// missing, unreadable, malformed, or says something that the driver does not know.
Configuration readConfiguration(const std::string& path);

/// Reads the file named on the command line; without one the user's own
/// ($XDG_CONFIG_HOME/quelm/quelm.conf, by default below ~/.config) when it is there.
Configuration loadConfiguration(const std::optional<std::string>& namedFile);

/// Where the user's own configuration file is looked for; empty when no home folder is known.
std::string userConfigurationFile();

} // namespace quelm

#endif
