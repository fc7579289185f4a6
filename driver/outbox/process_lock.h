// Locks on files that end with the process that holds them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_PROCESS_LOCK_H
#define DRIVER_OUTBOX_PROCESS_LOCK_H

#include "base/file_handle.h"

#include <sys/types.h>

namespace quelm {

/// Locks a byte of an open file against all who open it anew, in this process too. False when another has it,
/// or the file system has no locks, with errno as `fcntl` sets it. It lasts as long as the file is open.
[[nodiscard]] bool lockByte(const FileHandle& file, off_t byte);

/// Whether another one holds that lock. Takes nothing, not for a moment either.
[[nodiscard]] bool isByteLocked(const FileHandle& file, off_t byte);

} // namespace quelm

#endif
