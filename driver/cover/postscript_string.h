// Bytes inside of a PostScript string.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_POSTSCRIPT_STRING_H
#define DRIVER_COVER_POSTSCRIPT_STRING_H

#include <string>
#include <string_view>

namespace quelm {

/// The bytes as they stand between the parentheses of a PostScript string, in printable ASCII: a parenthesis
/// and a backslash behind a backslash, whatever is not printable as "\012".
[[nodiscard]] std::string postScriptEscaped(std::string_view bytes);

} // namespace quelm

#endif
