// Copies texts into buffers of a fixed size without cutting a character in two.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_BOUNDED_TEXT_H
#define BASE_BOUNDED_TEXT_H

#include <cstddef>
#include <cstring>
#include <string_view>

namespace quelm {

/// The most bytes, terminator included, that the host writes into a text buffer that it is
/// handed without a size.
inline constexpr std::size_t boundedTextSize = 4096;

/// The longest head of `text` of at most `limit` bytes that does not end inside a UTF-8
/// character. Bytes that are no UTF-8 at all are cut where the limit falls.
inline std::string_view boundedHead(std::string_view text, std::size_t limit)
{
    if (text.size() <= limit)
        return text;
    const auto continues = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    constexpr std::size_t longestTail = 3; // a UTF-8 character has at most three bytes after its first
    std::size_t cut = limit;
    while (cut > 0 && limit - cut < longestTail && continues(cut))
        --cut;
    return text.substr(0, continues(cut) ? limit : cut);
}

/// Copies `text` up to its first NUL into `out`, which holds `size` bytes, and terminates it. A
/// text that does not fit is cut ahead of the character that would not fit whole. `text` may lie
/// in `out`. With size 0 nothing is written. Returns the number of bytes copied, without the
/// terminator.
inline std::size_t copyBounded(std::string_view text, char* out, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view head = boundedHead(text.substr(0, text.find('\0')), size - 1);
    if (!head.empty())
        std::memmove(out, head.data(), head.size());
    out[head.size()] = '\0';
    return head.size();
}

} // namespace quelm

#endif
