// What may stand in a configuration file, and what it does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_CONFIGURATION_KEYS_H
#define DRIVER_CONFIG_CONFIGURATION_KEYS_H

#include "driver/config/configuration.h"

#include <span>
#include <string>
#include <string_view>

namespace quelm {

/// What a key's value is, beside a text.
enum class KeyKind { text, path, secret };

/// The group of `ConfigurationKey` that stands for each [destination NAME].
inline constexpr std::string_view destinationGroup = "destination NAME";
/// What such a group's name begins with.
inline constexpr std::string_view destinationBeginning = "destination ";

/// One key that the driver knows.
struct ConfigurationKey {
    std::string_view group;
    std::string_view name;
    KeyKind kind;
    std::string_view
        preset; ///< what holds when no file says anything; empty: nothing, or something of no text
    /// Takes a value, which is not empty; a path counts from the folder of `Configuration::file`, and what a
    /// destination's group says goes to the last of the destinations. Answers with what is expected instead,
    /// in the user's language, or with an empty text.
    std::string (*take)(Configuration&, const std::string& value);
};

/// All keys, those of a group together.
std::span<const ConfigurationKey> configurationKeys();

/// True when a key's group is that of the file: "job" is "job", `destinationGroup` each destination's.
[[nodiscard]] bool isGroup(std::string_view keysGroup, std::string_view group);

/// A relative path counts from the folder of the configuration file; from the working folder when that is an
/// open pipe, whose name no user chose.
[[nodiscard]] std::string fromFileFolder(const std::string& file, const std::string& value);

} // namespace quelm

#endif
