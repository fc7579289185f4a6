// Texts of a user as the comments of a print job carry them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_JOB_TEXTS_H
#define DRIVER_JOBS_JOB_TEXTS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quelm {

/// True for UTF-8 without line ends and other control characters: those of ASCII and of ISO Latin 1, and the
/// separators of lines and paragraphs. Such a text cannot add a line to a job.
[[nodiscard]] bool isPlainText(std::string_view text);

/// A text of whatever origin as a sentence for the user can hold it: `oneLine`, at most `most` characters and
/// then "...".
[[nodiscard]] std::string shownText(std::string_view text, std::size_t most = 60);

/// The structuring comment `keyword` ("%%Title:") with a text: "%%Title: (...)\n". Parentheses,
/// backslashes and whatever is not printable ASCII are escaped as in PostScript strings; the line is
/// cut, between characters of UTF-8, at the 255 bytes that a reader of such comments accepts.
std::string dscComment(std::string_view keyword, std::string_view text);

/// A text for the inside of a quoted PJL value: printable ASCII without double quotes, at most the
/// 80 characters that devices keep. A double quote becomes an apostrophe, a control character a blank,
/// any other character a question mark; an empty text becomes "Fax".
std::string pjlText(std::string_view text);

} // namespace quelm

#endif
