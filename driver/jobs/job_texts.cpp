// Texts of a user as the comments of a print job carry them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_texts.h"

#include "base/texts.h"
#include "driver/cover/postscript_string.h"

#include <cstddef>

namespace quelm {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U; }

/// Takes the next character of UTF-8 from `text`; a stray byte counts as one.
std::string_view takeCharacter(std::string_view& text)
{
    constexpr std::size_t longest = 4;
    std::size_t size = 1;
    if (!isPrintableAscii(text.front()))
        while (size < longest && size < text.size() && isContinuation(text[size]))
            ++size;
    const auto character = text.substr(0, size);
    text.remove_prefix(size);
    return character;
}

} // namespace

std::string dscComment(std::string_view keyword, std::string_view text)
{
    constexpr std::size_t longestLine = 255;
    std::string line(keyword);
    line += " (";
    while (!text.empty()) {
        const std::string next = postScriptEscaped(takeCharacter(text));
        if (line.size() + next.size() + 1 > longestLine)
            break;
        line += next;
    }
    return line + ")\n";
}

std::string pjlText(std::string_view text)
{
    constexpr std::size_t longest = 80;
    std::string result;
    while (!text.empty() && result.size() < longest) {
        const std::string_view character = takeCharacter(text);
        const char first = character.front();
        if (first == '"')
            result += '\'';
        else if (isPrintableAscii(first))
            result += first;
        else
            result += isControlCharacter(first) ? ' ' : '?';
    }
    return result.empty() ? "Fax" : result;
}

} // namespace quelm
