// Reading files whole, within a bound.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_WHOLE_FILE_H
#define BASE_WHOLE_FILE_H

#include "base/file_handle.h"
#include "base/pipe_wait.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace quelm {

/// What an open file, pipe or device gives from where it stands to its end; nothing when that is more than
/// `largest` bytes, of which a device may have no end. With `limits` it is one that `openToRead` opened, and
/// the other side of a pipe is waited for no longer than they say. Throws std::system_error when reading
/// fails, and PipeTimeout.
[[nodiscard]] std::optional<std::string> restOf(const FileHandle& file, std::size_t largest,
                                                const std::optional<PipeLimits>& limits = {});

/// The file's name for messages; "standard input" for "-".
std::string displayName(const std::filesystem::path& file);

/// The whole content of a file, pipes included; "-" is standard input, for which no limit of time holds: it
/// is the user's own. Throws Error when it cannot be read or is larger than `largest` bytes, and when a fifo
/// has no writer or a pipe's writer falls silent.
[[nodiscard]] std::string readTextFile(const std::filesystem::path& file, std::size_t largest,
                                       const PipeLimits& limits = {});

} // namespace quelm

#endif
