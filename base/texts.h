// What programs ask of texts, and do to them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TEXTS_H
#define BASE_TEXTS_H

#include <string>
#include <string_view>

namespace quelm {

/// `text` without the white space around it: blanks, tabs, line ends and page breaks, in any locale the same.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// True for a line end, a tab and every other character of ASCII that shows as nothing.
[[nodiscard]] bool isControlCharacter(char character);

/// True when a one-line text field could not hold the text: it has a control character.
[[nodiscard]] bool hasControlCharacter(std::string_view text);

/// `text` as one line: control characters become blanks.
[[nodiscard]] std::string oneLine(std::string text);

/// True when `text` is valid UTF-8 throughout and holds no NUL byte.
[[nodiscard]] bool isUtf8(std::string_view text);

} // namespace quelm

#endif
