// Texts of a user as the comments of a print job carry them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_JOB_TEXTS_H
#define DRIVER_JOBS_JOB_TEXTS_H

#include <string>
#include <string_view>

namespace quelm {

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
