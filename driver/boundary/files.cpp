// What host/files.h declares: whether a path exists, and making a folder.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/files.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <optional>

namespace {

/// Reads a decimal number's digits as octal permission digits: 777 stands for rwxrwxrwx. Nothing when it has
/// a digit above 7, more than four digits, or is negative.
std::optional<mode_t> permissionsFromDigits(int decimal)
{
    if (decimal < 0 || decimal > 7777)
        return std::nullopt;
    mode_t mode = 0;
    mode_t place = 1;
    for (int rest = decimal; rest > 0; rest /= 10) {
        const int digit = rest % 10;
        if (digit > 7)
            return std::nullopt;
        mode += static_cast<mode_t>(digit) * place;
        place *= 8;
    }
    return mode;
}

} // namespace

bool FileObject::doesPathExist(char* path)
{
    struct stat status {};
    return path != nullptr && lstat(path, &status) == 0;
}

bool FileObject::createDirectory(char* path, int mode)
{
    const auto permissions = permissionsFromDigits(mode);
    return path != nullptr && permissions && mkdir(path, *permissions) == 0;
}
