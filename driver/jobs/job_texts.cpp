// Texts of a user as the comments of a print job carry them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_texts.h"

#include "base/texts.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace quelm {
namespace {

bool isPrintableAscii(char byte) { return byte >= ' ' && byte <= '~'; }

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

/// The number of a character that `takeCharacter` took; of one that is no UTF-8 nothing of use.
char32_t codeOf(std::string_view character)
{
    const auto byte = [character](std::size_t at) {
        return static_cast<char32_t>(static_cast<unsigned char>(character[at]));
    };
    constexpr std::array<char32_t, 5> leadBits{0, 0x7f, 0x1f, 0x0f, 0x07};
    char32_t code = byte(0) & leadBits[character.size()];
    for (std::size_t at = 1; at < character.size(); ++at)
        code = code << 6U | (byte(at) & 0x3fU);
    return code;
}

bool isControl(char32_t code)
{
    constexpr char32_t lineSeparator = 0x2028;
    constexpr char32_t paragraphSeparator = 0x2029;
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == lineSeparator ||
           code == paragraphSeparator;
}

/// Marks that turn the direction of the writing around them, and the mark at the start of files.
bool isInvisibleMark(char32_t code)
{
    return code == 0x200e || code == 0x200f || (code >= 0x202a && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069) || code == 0xfeff;
}

std::string escaped(std::string_view character)
{
    std::string result;
    for (const char byte : character) {
        if (byte == '(' || byte == ')' || byte == '\\') {
            result += '\\';
            result += byte;
        } else if (isPrintableAscii(byte)) {
            result += byte;
        } else {
            std::array<char, 5> octal{};
            std::snprintf(octal.data(), octal.size(), "\\%03o",
                          static_cast<unsigned>(static_cast<unsigned char>(byte)));
            result += octal.data();
        }
    }
    return result;
}

} // namespace

bool isPlainText(std::string_view text)
{
    if (!isUtf8(text))
        return false;
    while (!text.empty())
        if (isControl(codeOf(takeCharacter(text))))
            return false;
    return true;
}

std::string shownText(std::string_view text, std::size_t most)
{
    std::string shown;
    for (std::size_t count = 0; !text.empty(); ++count) {
        if (count == most)
            return shown + "...";
        const std::string_view character = takeCharacter(text);
        if (!isUtf8(character) && character.front() != '\0') {
            // A byte that is no UTF-8 counts for itself, and what was taken behind it comes next.
            shown += '?';
            text = {character.data() + 1, character.size() - 1 + text.size()};
            continue;
        }
        const char32_t code = codeOf(character);
        if (isControl(code) || isInvisibleMark(code))
            shown += ' ';
        else
            shown += character;
    }
    return shown;
}

std::string dscComment(std::string_view keyword, std::string_view text)
{
    constexpr std::size_t longestLine = 255;
    std::string line(keyword);
    line += " (";
    while (!text.empty()) {
        const std::string next = escaped(takeCharacter(text));
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
