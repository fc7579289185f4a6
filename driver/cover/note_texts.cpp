// Reads a note as PostScript does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/note_texts.h"

#include <cstddef>

namespace quelm {
namespace {

using Texts = std::vector<std::string_view>;

/// The size of the string that `text` begins with, from its first parenthesis to the one that closes it.
std::optional<std::size_t> sizeOfString(std::string_view text)
{
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] == '\\')
            ++at; // takes the next one with it
        else if (text[at] == '(')
            ++depth;
        else if (text[at] == ')' && --depth == 0)
            return at + 1;
    return std::nullopt;
}

/// The strings of a text that holds nothing but strings, each between blanks.
std::optional<Texts> strings(std::string_view text)
{
    Texts found;
    for (;;) {
        const auto blanks = text.find_first_not_of(' ');
        if (blanks == std::string_view::npos)
            return found;
        text.remove_prefix(blanks);
        const auto size = text.front() == '(' && blanks > 0 ? sizeOfString(text) : std::nullopt;
        if (!size)
            return std::nullopt;
        found.push_back(text.substr(1, *size - 2));
        text.remove_prefix(*size);
    }
}

} // namespace

std::optional<Texts> noteTexts(std::string_view value)
{
    if (auto found = strings(value))
        return found;
    constexpr std::string_view start = " (";
    constexpr std::string_view end = ") ";
    if (value.size() < start.size() + end.size() || !value.starts_with(start) || !value.ends_with(end))
        return std::nullopt;
    return Texts{value.substr(start.size(), value.size() - start.size() - end.size())};
}

} // namespace quelm
