// Reading files whole, within a bound.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_WHOLE_FILE_H
#define BASE_WHOLE_FILE_H

#include "base/file_handle.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace quelm {

/// What an open file, pipe or device gives from where it stands to its end; nothing when that is more than
/// `largest` bytes, of which a device may have no end. Throws std::system_error when reading fails.
[[nodiscard]] std::optional<std::string> restOf(const FileHandle& file, std::size_t largest);

/// The file's name for messages; "standard input" for "-".
std::string displayName(const std::filesystem::path& file);

/// The whole content of a file, pipes included; "-" is standard input. Throws Error when it cannot be read or
/// is larger than `largest` bytes.
[[nodiscard]] std::string readTextFile(const std::filesystem::path& file, std::size_t largest);

} // namespace quelm

#endif
