// Looks at texts character by character; GLib knows UTF-8.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/texts.h"

#include <fmt/format.h>
#include <glib.h>

#include <algorithm>
#include <cstddef>

namespace quelm {

namespace {

constexpr gunichar replacement = 0xFFFD;

/// One character of a text, or one byte of it that is no UTF-8, whose code is then that of the replacement.
struct Character {
    gunichar code = replacement;
    std::string_view bytes;
};

Character takeCharacter(std::string_view& text)
{
    const gunichar code = static_cast<unsigned char>(text.front()) == 0
                              ? 0
                              : g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
    constexpr gunichar notWhole = 0x80000000U; // and all above: no character, or one that the text's end cuts
    const Character character =
        code >= notWhole
            ? Character{replacement, text.substr(0, 1)}
            : Character{code, text.substr(0, static_cast<std::size_t>(g_unichar_to_utf8(code, nullptr)))};
    text.remove_prefix(character.bytes.size());
    return character;
}

bool isControl(gunichar code)
{
    return code < 0x20 || (code >= 0x7F && code <= 0x9F) || code == 0x2028 || code == 0x2029;
}

/// What embeds, overrides or isolates a direction, or ends that: it reaches beyond the text that it stands
/// in.
bool turnsDirection(gunichar code)
{
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string escaped(gunichar code) { return fmt::format("\\u{{{:x}}}", code); }

/// Appends a character that is no control character.
void appendShown(std::string& text, const Character& character)
{
    if (turnsDirection(character.code))
        text += escaped(character.code);
    else if (character.code == replacement)
        text += "\uFFFD";
    else
        text += character.bytes;
}

} // namespace

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

bool isPrintableAscii(char character) { return character >= ' ' && character <= '~'; }

bool hasControlCharacter(std::string_view text)
{
    while (!text.empty()) {
        const Character character = takeCharacter(text);
        if (isControl(character.code))
            return true;
    }
    return false;
}

std::string oneLine(const std::string& text)
{
    std::string line;
    line.reserve(text.size());
    for (std::string_view rest = text; !rest.empty();) {
        const Character character = takeCharacter(rest);
        if (isControl(character.code))
            line += ' ';
        else
            appendShown(line, character);
    }
    return line;
}

std::string fieldText(std::string_view text)
{
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const Character character = takeCharacter(text);
        if (isControl(character.code))
            line += ' ';
        else
            line += character.bytes;
    }
    return line;
}

std::string terminalText(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const bool endsLine = text.starts_with("\r\n");
        const Character character = takeCharacter(text);
        if (endsLine || character.code == '\n' || character.code == '\t')
            shown += character.bytes;
        else if (isControl(character.code))
            shown += escaped(character.code);
        else
            appendShown(shown, character);
    }
    return shown;
}

BoundedLine boundedLine(std::string_view line) noexcept
{
    const auto isFirst = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    if (std::ranges::count_if(line, isFirst) <= static_cast<std::ptrdiff_t>(longestLogLine))
        return {line, {}};
    // The ellipsis takes the place of one.
    constexpr std::size_t tailLength = longestLogLine / 2;
    constexpr std::size_t headLength = longestLogLine - tailLength - 1;
    std::size_t head = 0;
    for (std::size_t count = 0; head < line.size(); ++head)
        if (isFirst(line[head]) && count++ == headLength)
            break;
    std::size_t tail = line.size();
    for (std::size_t count = 0; count < tailLength && tail > head;)
        count += isFirst(line[--tail]) ? 1 : 0;
    return {line.substr(0, head), line.substr(tail)};
}

std::string messageLine(const std::string& text)
{
    std::string line = oneLine(text);
    const BoundedLine bounded = boundedLine(line);
    if (bounded.tail.empty())
        return line;
    return std::string(bounded.head).append("\u2026").append(bounded.tail);
}

bool isUtf8(std::string_view text)
{
    return text.empty() || g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != 0;
}

bool isPlainText(std::string_view text) { return isUtf8(text) && !hasControlCharacter(text); }

std::string shownText(std::string_view text, std::size_t most)
{
    const std::string line = oneLine(std::string(text));
    std::string_view left = line;
    for (std::size_t count = 0; count < most && !left.empty(); ++count)
        static_cast<void>(takeCharacter(left));
    return left.empty() ? line : line.substr(0, line.size() - left.size()) + "...";
}

} // namespace quelm
