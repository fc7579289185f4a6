// Reads PostScript strings and the options of PJL commands.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/titles.h"

#include "base/texts.h"
#include "device/stream/words.h"

#include <array>
#include <utility>

namespace quelm::device {
namespace {

bool isOctal(char character) { return character >= '0' && character <= '7'; }

/// Takes what stands behind a backslash off the front of `text`, which is not empty.
void appendEscaped(std::string& title, std::string_view& text)
{
    constexpr std::array<std::pair<char, char>, 5> letters{
        {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'b', '\b'}, {'f', '\f'}}};
    if (isOctal(text.front())) {
        unsigned code = 0;
        for (int digits = 0; digits < 3 && !text.empty() && isOctal(text.front()); ++digits) {
            code = code * 8 + static_cast<unsigned>(text.front() - '0');
            text.remove_prefix(1);
        }
        title += static_cast<char>(code & 0xFFU);
        return;
    }
    char meant = text.front();
    for (const auto& [letter, character] : letters)
        if (text.front() == letter)
            meant = character;
    title += meant;
    text.remove_prefix(1);
}

} // namespace

std::string titleOfComment(std::string_view text)
{
    text = trimmed(text);
    if (!text.starts_with('('))
        return std::string(text);
    text.remove_prefix(1);
    std::string title;
    for (int depth = 1; !text.empty();) {
        const char character = text.front();
        text.remove_prefix(1);
        if (character == '\\') {
            if (!text.empty())
                appendEscaped(title, text);
            continue;
        }
        depth += character == '(' ? 1 : 0;
        depth -= character == ')' ? 1 : 0;
        if (depth == 0)
            break;
        title += character;
    }
    return title;
}

bool areQuotedWhole(std::string_view options)
{
    for (auto begin = options.find('"'); begin != std::string_view::npos; begin = options.find('"')) {
        if (!trimmed(options.substr(0, begin)).ends_with('='))
            return false;
        options.remove_prefix(begin + 1);
        const auto end = options.find('"');
        if (end == std::string_view::npos)
            return false;
        options.remove_prefix(end + 1);
        if (!options.empty() && !isBlank(options.front()))
            return false;
    }
    return true;
}

std::string nameAmongOptions(std::string_view options)
{
    while (!options.empty()) {
        skipBlanks(options);
        const auto name = takeWord(options);
        skipBlanks(options);
        if (!options.starts_with('=')) {
            if (name.empty() && !options.empty())
                options.remove_prefix(1);
            continue;
        }
        options.remove_prefix(1);
        skipBlanks(options);
        std::string_view value;
        if (options.starts_with('"')) {
            options.remove_prefix(1);
            value = options.substr(0, options.find('"'));
            options.remove_prefix(std::min(value.size() + 1, options.size()));
        } else {
            value = takeWord(options);
        }
        if (equalWords(name, "NAME"))
            return std::string(value);
    }
    return "";
}

} // namespace quelm::device
