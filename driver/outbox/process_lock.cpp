// Locks of open files, which no other descriptor of the process can drop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/process_lock.h"

#include <fcntl.h>
#include <unistd.h>

namespace quelm {
namespace {

struct flock wholeLock(off_t byte)
{
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

} // namespace

bool lockByte(const FileHandle& file, off_t byte)
{
    struct flock lock = wholeLock(byte);
    return ::fcntl(file.get(), F_OFD_SETLK, &lock) == 0;
}

bool isByteLocked(const FileHandle& file, off_t byte)
{
    struct flock lock = wholeLock(byte);
    return ::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

} // namespace quelm
