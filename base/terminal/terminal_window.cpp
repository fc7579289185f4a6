// Becomes a terminal emulator.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/terminal_window.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/process.h"
#include "base/system_reason.h"
#include "base/terminal/terminal_emulator.h"
#include "base/translation.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace quelm {

void becomeTerminalWindow(const std::vector<std::string>& command)
{
    std::vector<std::string> arguments = terminalCommand(command);
    // What emulators have to say, nobody at a desktop reads.
    const FileHandle nothing(open("/dev/null", O_WRONLY | O_CLOEXEC));
    const FileHandle errors(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (nothing.isOpen()) {
        dup2(nothing.get(), STDOUT_FILENO);
        dup2(nothing.get(), STDERR_FILENO);
    }
    execv(arguments.front().c_str(), pointersTo(arguments).data());
    const int reason = errno;
    if (errors.isOpen())
        dup2(errors.get(), STDERR_FILENO);
    throw Error(
        localized("the terminal program %s cannot be started: %s", arguments.front(), systemReason(reason)));
}

} // namespace quelm
