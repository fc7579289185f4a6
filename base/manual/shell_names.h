// What the completions for all shells have in common.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_MANUAL_SHELL_NAMES_H
#define BASE_MANUAL_SHELL_NAMES_H

#include "base/command_line/command_view.h"

#include <functional>
#include <string>
#include <vector>

namespace quelm {

/// A program's name as part of the name of a shell's function: "_quelm_driver".
std::string functionName(const CommandView& program);

/// What stands behind the program's name in a command's path: "phonebook import", empty for the program.
std::string wordsOf(const CommandView& command);

/// The options that may stand behind a command: its own and those of the commands above it.
std::vector<OptionView> allOptionsOf(const CommandView& command);

/// Calls `visit` with the command and with each below it, from the top.
void forEachCommand(const CommandView& command, const std::function<void(const CommandView&)>& visit);

/// Words with blanks between them.
std::string spaced(const std::vector<std::string>& words);

/// What a shell takes as `text`, byte for byte: in single quotes, those in it written as `quote`.
std::string singleQuoted(const std::string& text, const std::string& quote = "'\\''");

} // namespace quelm

#endif
