// Texts in the fonts that the cover page prints values in: Helvetica, and Times-Roman for the note.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_PAGE_FONTS_H
#define DRIVER_COVER_PAGE_FONTS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// The fonts of the values, which every PostScript device has.
enum class PageFont { helvetica, timesRoman };

inline constexpr double pageFontSize = 14; ///< points

/// `text`, which is valid UTF-8, in ISO Latin 1. Nothing when it has a character that these fonts cannot
/// print; the soft hyphen is one, which shows only where a line ends.
[[nodiscard]] std::optional<std::string> latin1(std::string_view text);

/// A text in ISO Latin 1 as the codes of PostScript's `ISOLatin1Encoding`, which calls the minus sign and the
/// left quote what Latin 1 calls the hyphen and the grave accent.
[[nodiscard]] std::string latin1Codes(std::string_view text);

/// How wide the codes of `ISOLatin1Encoding` print, in points.
[[nodiscard]] double printedWidth(std::string_view codes, PageFont font);

/// A text in ISO Latin 1 as lines that print no wider than `widest` points, broken at blanks, which are left
/// out there; within a word where one is wider than a line. There is at least one line, and each has a
/// character of the text. The views are into `text`.
[[nodiscard]] std::vector<std::string_view> brokenLines(std::string_view text, PageFont font, double widest);

} // namespace quelm

#endif
