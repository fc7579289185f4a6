// The help of a command, as it is printed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_HELP_PAGE_H
#define BASE_COMMAND_LINE_HELP_PAGE_H

#include "base/command_line/command_view.h"

#include <string>

namespace quelm {

/// How to call the command, what it does, its commands, places and options, and examples: lines of at most 80
/// columns, but for words and examples that are longer.
std::string helpPage(const CommandView& command);

} // namespace quelm

#endif
