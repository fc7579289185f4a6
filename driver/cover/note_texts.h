// The texts that a note is made of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_NOTE_TEXTS_H
#define DRIVER_COVER_NOTE_TEXTS_H

#include <optional>
#include <string_view>
#include <vector>

namespace quelm {

/// The texts that a person meant to print below each other. `value` is what the component put between the
/// brackets of the note: " (NOTE) ", with the note as it was typed.
///
/// A note whose parentheses, as PostScript reads them, make whole strings with blanks between them, is those
/// strings: "a) (b" is two, "x (y) z" is one. Any other note is one text. The texts are as they were typed:
/// a backslash is a backslash. Without a note there are none.
///
/// Nothing for a value that no component makes. The views are into `value`.
[[nodiscard]] std::optional<std::vector<std::string_view>> noteTexts(std::string_view value);

} // namespace quelm

#endif
