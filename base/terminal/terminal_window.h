// A window for a program that needs a terminal and was started from a desktop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_TERMINAL_WINDOW_H
#define BASE_TERMINAL_TERMINAL_WINDOW_H

#include <string>
#include <vector>

namespace quelm {

/// This process becomes a terminal emulator with a window in which the command runs: who waits for this
/// program waits for the window. (Some emulators hand the command over to one that runs already, and end.)
/// Throws Error when no emulator is installed or it cannot be started.
[[noreturn]] void becomeTerminalWindow(const std::vector<std::string>& command);

} // namespace quelm

#endif
