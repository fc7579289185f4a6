// What programs ask of texts, and do to them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TEXTS_H
#define BASE_TEXTS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quelm {

/// `text` without the white space around it: blanks, tabs, line ends and page breaks, in any locale the same.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// True for a line end, a tab and every other character of ASCII that shows as nothing.
[[nodiscard]] bool isControlCharacter(char character);

/// True for the blank and every character of ASCII that shows as something.
[[nodiscard]] bool isPrintableAscii(char character);

/// True when a one-line text field could not hold the text: it has a control character, also one beyond ASCII
/// (U+0080 to U+009F, which terminals obey as they do escapes), or a separator of lines or paragraphs
/// (U+2028, U+2029).
[[nodiscard]] bool hasControlCharacter(std::string_view text);

/// `text` as one line of UTF-8 for people, which shows on a terminal as what it is: control characters become
/// blanks, the characters that turn the direction of the text around them stand as "\u{202e}" (U+202A to
/// U+202E, U+2066 to U+2069), and what is no UTF-8 as U+FFFD. Hebrew and Arabic, whose letters have a
/// direction of their own, and their marks (U+200E, U+200F, U+061C) stay.
[[nodiscard]] std::string oneLine(const std::string& text);

/// What a one-line text field keeps of a text: blanks in place of its control characters, and of separators
/// of lines and paragraphs. All else stays byte for byte, for it is data.
[[nodiscard]] std::string fieldText(std::string_view text);

/// A text of several lines as it can be shown on a terminal: line ends and tabs stay; other control
/// characters and those that turn the direction stand as "\u{9b}", what is no UTF-8 as U+FFFD.
[[nodiscard]] std::string terminalText(std::string_view text);

/// How many characters of a line of the log, or of a program's last line, are shown at most.
inline constexpr std::size_t longestLogLine = 1000;

/// The head and the tail of a line; all of it in `head` when it is not too long.
struct BoundedLine {
    std::string_view head;
    std::string_view tail;
};

/// Takes the middle out of a line of UTF-8 that has more than `longestLogLine` characters, so that with an
/// ellipsis (U+2026) between the two it has as many: what is wrong stands at its beginning, and what to do at
/// its end. Allocates nothing.
[[nodiscard]] BoundedLine boundedLine(std::string_view line) noexcept;

/// `text` as one line that is not too long: `oneLine`, bounded.
[[nodiscard]] std::string messageLine(const std::string& text);

/// True when `text` is valid UTF-8 throughout and holds no NUL byte.
[[nodiscard]] bool isUtf8(std::string_view text);

/// True for UTF-8 without control characters: a text that fits in one line of whatever it is written into.
[[nodiscard]] bool isPlainText(std::string_view text);

/// A text of whatever origin as a sentence for the user can hold it: `oneLine`, at most `most` characters and
/// then "...".
[[nodiscard]] std::string shownText(std::string_view text, std::size_t most = 60);

} // namespace quelm

#endif
