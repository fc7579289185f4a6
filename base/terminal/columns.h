// Rows of texts for a terminal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_COLUMNS_H
#define BASE_TERMINAL_COLUMNS_H

#include <string>
#include <vector>

namespace quelm {

/// How many columns a UTF-8 text takes on a terminal.
std::size_t widthOf(const std::string& text);

/// A line for each row, its cells padded to the widest of their column and parted by two blanks, without
/// blanks at the end. A cell comes out as one line of UTF-8, whatever it holds; an empty one ahead of another
/// is "-".
std::string alignedColumns(const std::vector<std::vector<std::string>>& rows);

} // namespace quelm

#endif
