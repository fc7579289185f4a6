// Words error numbers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/system_reason.h"

#include "base/translation.h"

#include <cerrno>
#include <cstring>

namespace quelm {

std::string systemReason(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return localized("the disk is full; make room and try again");
    case EFBIG:
        return localized("the file would exceed the size limit; raise the limit and try again");
    case EPIPE:
        return localized("the program that reads it has ended");
    case EBADF: // a standard stream
        return localized("the program was started without it");
    case EACCES:
    case EPERM:
        return localized("permission denied");
    default:
        return std::strerror(error);
    }
}

} // namespace quelm
