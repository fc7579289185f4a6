// Reading the driver's configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_CONFIGURATION_FILE_H
#define DRIVER_CONFIG_CONFIGURATION_FILE_H

#include "base/pipe_wait.h"
#include "driver/config/configuration.h"

#include <optional>
#include <string>

namespace quelm {

/// Reads one file (UTF-8). Throws Error that names the file and the group, key or line when it is
/// missing, unreadable, malformed, or says something that the driver does not know or that does not
/// fit together. A file that holds a secret (a community other than "public", a passphrase) must be
/// the process's user's own, or root's, and nobody else's to read or write. A pipe or fifo is read to its
/// end, and waited for within `limits`.
[[nodiscard]] Configuration readConfiguration(const std::string& path, const PipeLimits& limits = {});

/// Reads the file named on the command line; without one the user's own
/// ($XDG_CONFIG_HOME/quelm/quelm.conf, by default below ~/.config) when it is there.
[[nodiscard]] Configuration loadConfiguration(const std::optional<std::string>& namedFile);

/// Where the user's own configuration file is looked for; empty when no home folder is known.
std::string userConfigurationFile();

} // namespace quelm

#endif
