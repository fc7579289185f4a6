// Temporary files beside their target: named, made, and swept up after a writer that was killed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TEMPORARY_FILE_H
#define BASE_TEMPORARY_FILE_H

#include "base/file_handle.h"

#include <sys/types.h>

#include <string>

namespace quelm {

/// A new name: ".quelm-", sixteen hexadecimal digits, ".tmp".
[[nodiscard]] std::string temporaryName();

/// Makes a file of that name for this process's user alone, and locks it, so that nobody sweeps it up. The
/// lock lasts as long as something has the file open. Not open when it cannot be made, with errno as `open`
/// sets it: EAGAIN when another name must be tried.
[[nodiscard]] FileHandle makeTemporaryFile(int folder, const std::string& name);

/// The permissions that a new file in a folder gets from the system, by the umask and the folder's own rules.
[[nodiscard]] mode_t permissionsOfNewFile(int folder);

/// Removes the temporary files that killed processes of this user left in a folder: plain files of such a
/// name that are the user's own and that nobody holds a lock on. What cannot be looked at stays.
void sweepTemporaryFiles(int folder) noexcept;

} // namespace quelm

#endif
