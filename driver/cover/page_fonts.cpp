// The widths of characters in the standard fonts, and lines that fit.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/page_fonts.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace quelm {
namespace {

constexpr std::size_t firstCode = 0x20;
using Widths = std::array<std::uint16_t, 0x100 - firstCode>; // in thousandths of the size

// clang-format off
constexpr Widths helvetica{
     278, 278, 355, 556, 556, 889, 667, 222, 333, 333, 389, 584, 278, 584, 278, 278, // 20
     556, 556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, // 30
     1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778, // 40
     667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556, // 50
     222, 556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556, // 60
     556, 556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584, 278, // 70
     278, 278, 278, 278, 278, 278, 278, 278, 278, 278, 278, 278, 278, 278, 278, 278, // 80
     278, 333, 333, 333, 333, 333, 333, 333, 333, 278, 333, 333, 278, 333, 333, 333, // 90
     278, 333, 556, 556, 556, 556, 260, 556, 333, 737, 370, 556, 584, 333, 737, 333, // a0
     400, 584, 333, 333, 333, 556, 537, 278, 333, 333, 365, 556, 834, 834, 834, 611, // b0
     667, 667, 667, 667, 667, 667, 1000, 722, 667, 667, 667, 667, 278, 278, 278, 278, // c0
     722, 722, 778, 778, 778, 778, 778, 584, 778, 722, 722, 722, 722, 667, 667, 611, // d0
     556, 556, 556, 556, 556, 556, 889, 500, 556, 556, 556, 556, 278, 278, 278, 278, // e0
     556, 556, 556, 556, 556, 556, 556, 584, 611, 556, 556, 556, 556, 500, 556, 500, // f0
};

constexpr Widths timesRoman{
     250, 333, 408, 500, 500, 833, 778, 333, 333, 333, 500, 564, 250, 564, 250, 278, // 20
     500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 278, 278, 564, 564, 564, 444, // 30
     921, 722, 667, 667, 722, 611, 556, 722, 722, 333, 389, 722, 611, 889, 722, 722, // 40
     556, 722, 667, 556, 611, 722, 722, 944, 722, 722, 611, 333, 278, 333, 469, 500, // 50
     333, 444, 500, 444, 500, 444, 333, 500, 500, 278, 278, 500, 278, 778, 500, 500, // 60
     500, 500, 333, 389, 278, 500, 500, 722, 500, 500, 444, 480, 200, 480, 541, 250, // 70
     250, 250, 250, 250, 250, 250, 250, 250, 250, 250, 250, 250, 250, 250, 250, 250, // 80
     278, 333, 333, 333, 333, 333, 333, 333, 333, 250, 333, 333, 250, 333, 333, 333, // 90
     250, 333, 500, 500, 500, 500, 200, 500, 333, 760, 276, 500, 564, 333, 760, 333, // a0
     400, 564, 300, 300, 333, 500, 453, 250, 333, 300, 310, 500, 750, 750, 750, 444, // b0
     722, 722, 722, 722, 722, 722, 889, 667, 611, 611, 611, 611, 333, 333, 333, 333, // c0
     722, 722, 722, 722, 722, 722, 722, 564, 722, 722, 722, 722, 722, 722, 556, 500, // d0
     444, 444, 444, 444, 444, 444, 667, 444, 444, 444, 444, 444, 278, 278, 278, 278, // e0
     500, 500, 500, 500, 500, 500, 500, 564, 500, 500, 500, 500, 500, 500, 500, 500, // f0
};
// clang-format on

constexpr char hyphen = '\xad';
constexpr char graveAccent = '\x91';

double printedWidth(char code, PageFont font)
{
    const auto at = static_cast<unsigned char>(code);
    if (at < firstCode)
        return 0;
    return (font == PageFont::helvetica ? helvetica : timesRoman).at(at - firstCode) * pageFontSize / 1000;
}

char latin1Code(char character)
{
    switch (character) {
    case '-':
        return hyphen;
    case '`':
        return graveAccent;
    default:
        return character;
    }
}

/// How many characters of the text fit, at least one of them.
std::size_t fitting(std::string_view text, PageFont font, double widest)
{
    double width = 0;
    std::size_t count = 0;
    while (count < text.size() && (width += printedWidth(latin1Code(text[count]), font)) <= widest)
        ++count;
    return std::max<std::size_t>(count, 1);
}

/// Where a line that has room for `room` characters, and not for all of the text, ends.
std::size_t endOfLine(std::string_view text, std::size_t room)
{
    const auto blank = text.rfind(' ', room);
    const bool endsAWord = blank != std::string_view::npos && text.find_first_not_of(' ') < blank;
    return endsAWord ? text.find_last_not_of(' ', blank) + 1 : room;
}

} // namespace

std::optional<std::string> latin1(std::string_view text)
{
    const std::string whole(text);
    std::string result;
    for (const char* at = whole.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const gunichar code = g_utf8_get_char(at);
        const bool hasGlyph = (code >= 0x20 && code < 0x7f) || (code >= 0xa0 && code <= 0xff);
        constexpr gunichar softHyphen = 0xad;
        if (!hasGlyph || code == softHyphen)
            return std::nullopt;
        result += static_cast<char>(code);
    }
    return result;
}

std::string latin1Codes(std::string_view text)
{
    std::string codes(text);
    std::ranges::transform(codes, codes.begin(), latin1Code);
    return codes;
}

double printedWidth(std::string_view codes, PageFont font)
{
    double width = 0;
    for (const char code : codes)
        width += printedWidth(code, font);
    return width;
}

std::vector<std::string_view> brokenLines(std::string_view text, PageFont font, double widest)
{
    std::vector<std::string_view> lines;
    for (;;) {
        const std::size_t room = fitting(text, font, widest);
        if (room >= text.size()) {
            lines.push_back(text);
            return lines;
        }
        lines.push_back(text.substr(0, endOfLine(text, room)));
        text.remove_prefix(lines.back().size());
        const auto next = text.find_first_not_of(' ');
        if (next == std::string_view::npos)
            return lines;
        text.remove_prefix(next);
    }
}

} // namespace quelm
