// Breaks texts into lines for a terminal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_WRAPPED_TEXT_H
#define BASE_COMMAND_LINE_WRAPPED_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// The lines of a UTF-8 text, each at most `width` columns of a terminal: broken at blanks, and between the
/// characters of scripts that are written without any. A word that is wider has a line of its own. At least
/// one line, and no blanks at the ends of lines.
std::vector<std::string> wrappedLines(const std::string& text, std::size_t width);

} // namespace quelm

#endif
