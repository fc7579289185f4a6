// The host's file helpers.
#ifndef DRIVER_BOUNDARY_FILES_H
#define DRIVER_BOUNDARY_FILES_H

#include <optional>

#include <sys/types.h>

#include "host/files.h" // IWYU pragma: export

namespace quelm {

/// Reads a decimal number's digits as octal permission digits: 777 stands for rwxrwxrwx. Nothing
/// when it has a digit above 7, more than four digits, or is negative.
std::optional<mode_t> permissionsFromDigits(int decimal);

} // namespace quelm

#endif
