// Finds a terminal emulator, and whether one is needed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/terminal_emulator.h"

#include "base/environment.h"
#include "base/error.h"
#include "base/translation.h"

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

namespace quelm {
namespace {

bool inputIsNullDevice()
{
    struct stat input {};
    struct stat nullDevice {};
    return ::fstat(STDIN_FILENO, &input) == 0 && ::stat("/dev/null", &nullDevice) == 0 &&
           S_ISCHR(input.st_mode) && input.st_rdev == nullDevice.st_rdev;
}

} // namespace

bool isStartedFromDesktop() { return inputIsNullDevice() && hasDisplay(); }

/// The system's own choice goes ahead of what is there in any case.
std::string terminalEmulator()
{
    for (const char* program : {"x-terminal-emulator", "xterm"}) {
        const std::unique_ptr<char, decltype(&g_free)> path(g_find_program_in_path(program), g_free);
        if (path != nullptr)
            return path.get();
    }
    throw Error(localized("no terminal program is installed to open the phonebook in; install xterm, or run "
                          "fennodial at a terminal"));
}

} // namespace quelm
