// A window for a program that needs a terminal and was started from a desktop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_TERMINAL_WINDOW_H
#define BASE_TERMINAL_TERMINAL_WINDOW_H

#include <string>
#include <vector>

namespace quelm {

/// Runs a command in a terminal emulator's window, and does not wait for its end: the desktop that started
/// this program waits for it. Throws Error when no emulator is installed or it cannot be started.
void openInTerminalWindow(const std::vector<std::string>& command);

} // namespace quelm

#endif
