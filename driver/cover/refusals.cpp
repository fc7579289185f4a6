// Words refusals of cover pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/refusals.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <cstddef>

namespace quelm {

void refuseLine(std::string_view text)
{
    constexpr std::size_t longest = 120;
    throw Error(
        localized("the fax cannot be written: its cover page holds a line that does not belong there: "
                  "\"%s\"",
                  shownText(text.substr(0, text.find_first_of("\r\n")), longest)));
}

void refuseValue(std::string_view value)
{
    throw Error(
        localized("the fax cannot be written: a text on its cover page holds a line end, another control "
                  "character, or bytes that are no UTF-8: \"%s\"; change that text",
                  shownText(value)));
}

} // namespace quelm
