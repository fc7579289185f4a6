// Hands over to the program that opens the desktop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_DESKTOP_COMMAND_H
#define DRIVER_CLI_DESKTOP_COMMAND_H

#include "driver/cli/command_line.h"

namespace quelm {

/// Becomes quelm-desktop, the program beside this one, with the arguments `argv`, a null behind the last:
/// so nothing of a toolkit is loaded where there is no screen. Throws UsageError when the document that
/// `line` names is nowhere to be found and so was rather meant as a command, and Error when there is no
/// display or no such program.
[[noreturn]] void becomeDesktop(const CommandLine& line, char** argv);

} // namespace quelm

#endif
