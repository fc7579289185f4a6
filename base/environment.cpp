// Asks the system about the running program and its environment.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/environment.h"

#include <cstdlib>
#include <system_error>

namespace quelm {

std::filesystem::path programFolder()
{
    std::error_code failure;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", failure);
    return failure ? std::filesystem::path() : program.parent_path();
}

std::string environmentVariable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool hasDisplay()
{
    return !environmentVariable("DISPLAY").empty() || !environmentVariable("WAYLAND_DISPLAY").empty();
}

} // namespace quelm
