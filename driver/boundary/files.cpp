// Checks for paths and creates directories.
#include "driver/boundary/files.h"

#include <sys/stat.h>

namespace quelm {

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

} // namespace quelm

bool FileObject::doesPathExist(char* path)
{
    struct stat status {};
    return path != nullptr && lstat(path, &status) == 0;
}

bool FileObject::createDirectory(char* path, int mode)
{
    const auto permissions = quelm::permissionsFromDigits(mode);
    return path != nullptr && permissions && mkdir(path, *permissions) == 0;
}
