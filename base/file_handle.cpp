// Closes file descriptors.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/file_handle.h"

#include <unistd.h>

#include <cerrno>

namespace quelm {

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept
{
    if (this != &other) {
        close();
        descriptor_ = other.release();
    }
    return *this;
}

int FileHandle::close()
{
    if (!isOpen())
        return 0;
    // Interrupted by a signal it is closed all the same.
    return ::close(release()) == 0 || errno == EINTR ? 0 : errno;
}

} // namespace quelm
