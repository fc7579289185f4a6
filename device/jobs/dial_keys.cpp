// Turns numbers into keys.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/dial_keys.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <string_view>

namespace quelm::device {

std::string keysFor(const std::string& number)
{
    constexpr std::string_view pressed = "0123456789*#,";
    constexpr std::string_view between = " -./()";
    std::string keys;
    for (const char sign : number)
        if (pressed.find(sign) != std::string_view::npos)
            keys += sign;
        else if (sign == '+')
            keys += "00";
        else if (between.find(sign) == std::string_view::npos)
            throw Error(localized(
                "a number to dial has the sign \"%s\", for which a telephone has no key; write it with "
                "digits, \"+\", \"*\", \"#\" and \",\"",
                shownText(std::string_view(&sign, 1))));
    return keys;
}

} // namespace quelm::device
