// What the configuration says, as text and as JSON.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_CONFIG_LISTING_H
#define DRIVER_CLI_CONFIG_LISTING_H

#include "driver/config/configuration.h"

#include <string>

namespace quelm {

// Secrets are shown as "*****". Each text ends with a line end.

/// For people: the files that were looked for, then every key with its value and where that stands. Nothing
/// but the word "default" and what stands in a file is left out.
[[nodiscard]] std::string configurationText(const Configuration& configuration);

/// For programs, one object; docs/command-line.md lists its keys.
[[nodiscard]] std::string configurationJson(const Configuration& configuration);

} // namespace quelm

#endif
