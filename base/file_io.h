// Files of the print path: written and read whole, failing with a line instead of a signal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_FILE_IO_H
#define BASE_FILE_IO_H

#include "base/file_handle.h"

#include <csignal>
#include <cstddef>
#include <string>
#include <string_view>

namespace quelm {

/// While it lives, writing to a pipe without a reader or past the allowed file size fails as any
/// other write does; without it the process would die of SIGPIPE or SIGXFSZ and say nothing.
class WriteSignalsIgnored {
public:
    WriteSignalsIgnored();
    ~WriteSignalsIgnored();
    WriteSignalsIgnored(const WriteSignalsIgnored&) = delete;
    WriteSignalsIgnored& operator=(const WriteSignalsIgnored&) = delete;

private:
    struct sigaction pipe_ = {};
    struct sigaction fileSize_ = {};
};

/// Writes all of `bytes`, with one system call unless the system takes less at a time. `target`
/// names the file in the line of the quelm::Error that a failure throws.
void writeAll(int descriptor, std::string_view bytes, const std::string& target);

/// Reads at most `size` bytes from `offset` on (or from where the descriptor stands, for offset
/// -1); fewer only at the end. `source` names the file in the line of a quelm::Error.
[[nodiscard]] std::size_t readFully(int descriptor, char* bytes, std::size_t size, long long offset,
                                    const std::string& source);

/// The folder for temporary files: what TMPDIR names, or /tmp.
std::string temporaryFolder();

/// A new empty file without a name in the folder for temporary files: it is gone when it is closed,
/// however the process ends.
[[nodiscard]] FileHandle makeUnnamedFile();

} // namespace quelm

#endif
