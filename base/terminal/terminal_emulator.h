// The terminal emulator that the phonebook program opens a phonebook in.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_TERMINAL_EMULATOR_H
#define BASE_TERMINAL_TERMINAL_EMULATOR_H

#include <string>

namespace quelm {

/// True when nobody can type to this process, but a window can be opened: standard input is the null device,
/// as desktops leave it, and there is a display. A program that this one starts finds it the same.
bool isStartedFromDesktop();

/// The path of the emulator's program along PATH. Throws Error when none is installed.
std::string terminalEmulator();

} // namespace quelm

#endif
