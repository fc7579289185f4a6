// Completions of a program's command line by the usual shells.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_MANUAL_COMPLETIONS_H
#define BASE_MANUAL_COMPLETIONS_H

#include "base/command_line/command_view.h"

#include <string>

namespace quelm {

/// A file that bash reads by itself when somebody first completes the program: commands, options, the words
/// that options take, files, folders, hosts, users and print queues where they are expected.
std::string bashCompletion(const CommandView& program);

/// The same for zsh, with descriptions, as a function `_PROGRAM` in a folder of its fpath.
std::string zshCompletion(const CommandView& program);

/// The same for fish, with descriptions.
std::string fishCompletion(const CommandView& program);

} // namespace quelm

#endif
