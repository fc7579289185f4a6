// Takes a text apart where lines may end, and fills lines with the pieces.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/wrapped_text.h"

#include "base/terminal/columns.h"

#include <glib.h>

#include <string_view>
#include <utility>

namespace quelm {
namespace {

/// What stays together on a line.
struct Piece {
    std::string text;
    bool behindBlank = false;
};

bool isWide(const char* at) { return g_unichar_iswide(g_utf8_get_char(at)) != FALSE; }

/// Closing marks and letters that modify the one ahead of them begin no line.
bool mayBeginLine(const char* at)
{
    const auto type = g_unichar_type(g_utf8_get_char(at));
    return type != G_UNICODE_OTHER_PUNCTUATION && type != G_UNICODE_CLOSE_PUNCTUATION &&
           type != G_UNICODE_FINAL_PUNCTUATION && type != G_UNICODE_NON_SPACING_MARK &&
           type != G_UNICODE_MODIFIER_LETTER;
}

std::vector<Piece> piecesOf(const std::string& text)
{
    std::vector<Piece> pieces;
    bool open = false; // the last piece goes on
    bool wide = false; // and ends with a wide character
    bool blank = false;
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        if (*at == ' ') {
            open = false;
            blank = true;
            continue;
        }
        const bool newPiece = !open || (wide && isWide(at) && mayBeginLine(at));
        if (newPiece)
            pieces.push_back({"", std::exchange(blank, false)});
        pieces.back().text += std::string_view(at, static_cast<std::size_t>(g_utf8_next_char(at) - at));
        open = true;
        wide = isWide(at);
    }
    return pieces;
}

} // namespace

std::vector<std::string> wrappedLines(const std::string& text, std::size_t width)
{
    std::vector<std::string> lines{""};
    std::size_t used = 0;
    for (const auto& piece : piecesOf(text)) {
        const auto wanted = widthOf(piece.text);
        const bool parted = piece.behindBlank && used > 0;
        if (used > 0 && used + (parted ? 1 : 0) + wanted > width) {
            lines.emplace_back();
            used = 0;
        } else if (parted) {
            lines.back() += ' ';
            ++used;
        }
        lines.back() += piece.text;
        used += wanted;
    }
    return lines;
}

} // namespace quelm
