// Escapes bytes for PostScript strings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/postscript_string.h"

#include "base/texts.h"

#include <array>
#include <cstdio>

namespace quelm {

std::string postScriptEscaped(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) {
        if (byte == '(' || byte == ')' || byte == '\\') {
            text += '\\';
            text += byte;
        } else if (isPrintableAscii(byte)) {
            text += byte;
        } else {
            std::array<char, 5> octal{};
            std::snprintf(octal.data(), octal.size(), "\\%03o",
                          static_cast<unsigned>(static_cast<unsigned char>(byte)));
            text += octal.data();
        }
    }
    return text;
}

} // namespace quelm
