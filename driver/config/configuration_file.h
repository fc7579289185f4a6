// Reading the driver's configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_CONFIGURATION_FILE_H
#define DRIVER_CONFIG_CONFIGURATION_FILE_H

#include "base/pipe_wait.h"
#include "driver/config/configuration.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// Called with a line about each thing that is wrong; may throw.
using ProblemTaker = std::function<void(const std::string& line)>;

/// Reads one file (UTF-8). Throws Error that names the file and the group, key or line when it is
/// missing, unreadable, malformed, or says something that the driver does not know or that does not
/// fit together. A file that holds a secret (a community other than "public", a passphrase) must be
/// the process's user's own, or root's, and nobody else's to read or write. A pipe or fifo is read to its
/// end, and waited for within `limits`.
[[nodiscard]] Configuration readConfiguration(const std::string& path, const PipeLimits& limits = {});

/// Reads the file named on the command line, and no other; without one, those of `configurationSources` that
/// are there, key by key: what a file says goes over what the files behind it say. A destination counts as
/// one file says it, and a secret keeps to its own file's access. Throws as `readConfiguration` does.
[[nodiscard]] Configuration loadConfiguration(const std::optional<std::string>& namedFile);

/// The same for who wants to be told of everything that is wrong: then what is right is returned, unless
/// `problems` throws.
[[nodiscard]] Configuration loadConfiguration(const std::optional<std::string>& namedFile,
                                              const ProblemTaker& problems);

/// Where configuration files are looked for, the one that counts most first: the user's own
/// ($XDG_CONFIG_HOME/quelm/quelm.conf, by default below ~/.config), then quelm/quelm.conf in each folder of
/// $XDG_CONFIG_DIRS (by default /etc/xdg), where an administrator writes what holds for everybody. One that
/// is there counts as such also when it cannot be read.
[[nodiscard]] std::vector<ConfigurationSource> configurationSources();

/// Where the user's own configuration file is looked for; empty when no home folder is known.
std::string userConfigurationFile();

} // namespace quelm

#endif
