// The owner of a file descriptor.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_FILE_HANDLE_H
#define BASE_FILE_HANDLE_H

#include <utility>

namespace quelm {

/// Owns a file descriptor and closes it at the end of its life. -1 is none.
class FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(int descriptor) : descriptor_(descriptor) {}
    FileHandle(FileHandle&& other) noexcept : descriptor_(other.release()) {}
    FileHandle& operator=(FileHandle&& other) noexcept;
    ~FileHandle() { close(); }

    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

    /// Gives the descriptor away.
    int release() { return std::exchange(descriptor_, -1); }
    /// 0, or the system's error number: what was written to a file may be refused as late as here. The
    /// descriptor is closed in any case.
    int close();

private:
    int descriptor_ = -1;
};

} // namespace quelm

#endif
