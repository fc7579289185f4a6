// Writes PostScript in lines and procedures that are short enough for every device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_PROGRAM_TEXT_H
#define DRIVER_DRAWINGS_PROGRAM_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What stands together in a procedure: tokens, with one blank between two of them.
struct Statement {
    std::string text;
    std::size_t elements = 0; ///< how many elements of the procedure they are
};

/// A statement each of whose tokens is one element.
[[nodiscard]] Statement plainStatement(std::string text);

/// How many elements a procedure has at most. A device may hold them on its operand stack, which has room for
/// 500, until the procedure is complete.
inline constexpr std::size_t longestProcedure = 200;

/// The tokens of a procedure that carries the statements out, with its braces. Where they are too many for
/// one, it runs procedures that each hold a part of them.
[[nodiscard]] std::string procedureOf(std::vector<Statement> statements);

/// A whole number, in digits.
[[nodiscard]] std::string numberText(long number);

/// A number with up to three decimals, in the form of PostScript whatever the language of the process.
[[nodiscard]] std::string numberText(double number);

/// `tokens`, between which blanks stand, in lines of about 100 characters; each line has a line end.
[[nodiscard]] std::string inLines(std::string_view tokens);

} // namespace quelm

#endif
