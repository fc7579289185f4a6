// What may stand in a configuration file, and what it does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_CONFIGURATION_KEYS_H
#define DRIVER_CONFIG_CONFIGURATION_KEYS_H

#include "driver/config/configuration.h"

#include <span>
#include <string>
#include <string_view>

namespace quelm {

/// One key that the driver knows.
struct ConfigurationKey {
    std::string_view group;
    std::string_view name;
    /// Takes a value, which is not empty. Answers with what is expected instead, in the user's
    /// language, or with an empty text.
    std::string (*take)(Configuration&, const std::string& value);
};

/// All keys, those of a group together.
std::span<const ConfigurationKey> configurationKeys();

/// What does not fit together in [device], as the end of a sentence that the file begins ("has ...");
/// empty when all does. No secret is in it.
std::string deviceMismatch(const DeviceSettings& device);

/// True when the settings hold what others must not read.
[[nodiscard]] bool holdsSecret(const DeviceSettings& device);

} // namespace quelm

#endif
