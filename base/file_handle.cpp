// Closes file descriptors.
#include "base/file_handle.h"

#include <unistd.h>

namespace quelm {

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept
{
    if (this != &other) {
        close();
        descriptor_ = other.release();
    }
    return *this;
}

void FileHandle::close()
{
    if (const int descriptor = release(); descriptor >= 0)
        ::close(descriptor);
}

} // namespace quelm
