// Looks at texts byte by byte; GLib knows UTF-8.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/texts.h"

#include <glib.h>

#include <algorithm>

namespace quelm {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view space = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(space), text.size()));
    return text.substr(0, text.find_last_not_of(space) + 1);
}

bool isControlCharacter(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

bool hasControlCharacter(std::string_view text) { return std::ranges::any_of(text, isControlCharacter); }

std::string oneLine(std::string text)
{
    std::ranges::replace_if(text, isControlCharacter, ' ');
    return text;
}

bool isUtf8(std::string_view text)
{
    return text.empty() || g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != 0;
}

} // namespace quelm
