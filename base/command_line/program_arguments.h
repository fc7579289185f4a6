// Takes the arguments of a program apart, alike for all programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_PROGRAM_ARGUMENTS_H
#define BASE_COMMAND_LINE_PROGRAM_ARGUMENTS_H

#include <CLI/CLI.hpp>

#include <string>

namespace quelm {

/// Gives a program, which has no commands and options yet, `--help` and `--version` with their letters, and
/// our own help in the user's language. The commands that it is given later inherit it.
void beginProgram(CLI::App& program);

/// Gives a program with commands the command `help`, which shows the help of the others. Called when they are
/// there.
void addHelpCommand(CLI::App& program);

/// Parses with CLI11. Returns what the user asked to be told (the help of a command, the version), which is
/// then all that the program does; otherwise an empty text. Throws UsageError with one line when the
/// arguments cannot be understood.
[[nodiscard]] std::string parseArguments(CLI::App& program, int argc, const char* const* argv);

} // namespace quelm

#endif
