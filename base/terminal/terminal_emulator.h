// The terminal emulator that the phonebook program opens a phonebook in.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_TERMINAL_EMULATOR_H
#define BASE_TERMINAL_TERMINAL_EMULATOR_H

#include <string>
#include <vector>

namespace quelm {

/// True when nobody can type to this process, but a window can be opened: standard input is the null device,
/// as desktops leave it, and there is a display. A program that this one starts finds it the same.
bool isStartedFromDesktop();

/// What starts an emulator with a window in which the command runs: the path of its program along PATH, the
/// options with which it takes a command, and the command, each of its arguments by itself whatever it holds.
///
/// In this order: xdg-terminal-exec, which starts what the user's desktop is set to; the program that the
/// environment variable TERMINAL names, with the options that may follow it there; x-terminal-emulator, which
/// the machine is set to; and the emulators that desktops bring along. What is not installed is passed over.
/// Throws Error when none is.
std::vector<std::string> terminalCommand(const std::vector<std::string>& command);

} // namespace quelm

#endif
