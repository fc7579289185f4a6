// Waiting for the program at the other end of a pipe or fifo, and not for ever.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_PIPE_WAIT_H
#define BASE_PIPE_WAIT_H

#include "base/file_handle.h"

#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace quelm {

/// How long the other side of a pipe is waited for.
struct PipeLimits {
    std::chrono::milliseconds partner{5000}; ///< a fifo may be without a program at its other end
    std::chrono::milliseconds idle{30000};   ///< that program may neither write nor read, nor end
};

/// The other side did not come, or does nothing. `what()` is the end of a sentence for the user, of the same
/// kind as `systemReason`: what is the matter, and what to do.
class PipeTimeout : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Opens a file to read from. A fifo that nobody writes to does not hold it up: the descriptor never blocks,
/// and `readBounded` waits. Not open when it fails, with errno as `open` sets it.
[[nodiscard]] FileHandle openToRead(const std::string& path);

/// Reads at most `size` bytes, 0 at the end, as `read` does, and waits for them within the limits. Whoever
/// types at a terminal has all the time in the world. `heard` begins as false for a file just opened, and is
/// kept for the reads that follow: until something was heard, a fifo without a writer is no end. Throws
/// PipeTimeout, and std::system_error when reading fails.
[[nodiscard]] std::size_t readBounded(const FileHandle& file, char* bytes, std::size_t size,
                                      const PipeLimits& limits, bool& heard);

/// Opens something that is no plain file to write to it; for a fifo, waits for its reader. `folder` and
/// `name` are as for `openat`, `flags` come on top of those for writing without blocking. The descriptor
/// never blocks. Not open when it fails, with errno as `open` sets it; throws PipeTimeout when no reader
/// comes.
[[nodiscard]] FileHandle openToWrite(int folder, const std::string& name, int flags,
                                     const PipeLimits& limits = {});

/// Writes some of `size` bytes to a descriptor that never blocks, at least one, and returns how many. Throws
/// PipeTimeout when there was no room for that, and std::system_error when writing fails.
[[nodiscard]] std::size_t writeBounded(const FileHandle& file, const char* bytes, std::size_t size,
                                       const PipeLimits& limits = {});

} // namespace quelm

#endif
