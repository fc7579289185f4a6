// Letters and the marks above them as one character.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_COMPOSED_TEXT_H
#define DRIVER_COVER_COMPOSED_TEXT_H

#include <string>
#include <string_view>

namespace quelm {

/// `text` (UTF-8) with each letter and the marks that follow it, and each Korean syllable of several parts,
/// in the composed form that fonts have, where there is one. A character that stands alone stays as it is,
/// also where Unicode calls another one its equivalent: in names the two may look different.
[[nodiscard]] std::string composedText(std::string_view text);

} // namespace quelm

#endif
