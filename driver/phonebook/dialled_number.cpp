// Takes what address books put into numbers apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/dialled_number.h"

#include "base/texts.h"

#include <glib.h>

#include <algorithm>
#include <array>

namespace quelm {
namespace {

constexpr std::string_view digits = "0123456789";

bool isDigit(char character) { return digits.find(character) != std::string_view::npos; }

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), g_ascii_tolower);
    return result;
}

/// A character of other writing as the mark of numbers that it stands for; itself when there is none. Zero
/// for one that shows as nothing.
gunichar plainMark(gunichar character)
{
    constexpr gunichar wideZero = 0xff10;
    constexpr gunichar wideNine = 0xff19;
    constexpr gunichar firstHyphen = 0x2010;
    constexpr gunichar lastHyphen = 0x2015;
    constexpr std::array<gunichar, 5> otherHyphens{0x2212, 0xfe58, 0xfe63, 0xff0d, 0x30fc};
    if (character >= wideZero && character <= wideNine)
        return '0' + (character - wideZero);
    if ((character >= firstHyphen && character <= lastHyphen) ||
        std::ranges::find(otherHyphens, character) != otherHyphens.end())
        return '-';
    if (character == 0xff0b)
        return '+';
    if (character == 0xff08)
        return '(';
    if (character == 0xff09)
        return ')';
    if (g_unichar_type(character) == G_UNICODE_SPACE_SEPARATOR)
        return ' ';
    // Marks of direction, which telephones put around a number.
    return g_unichar_type(character) == G_UNICODE_FORMAT ? 0 : character;
}

std::string inPlainMarks(std::string_view text)
{
    std::string result;
    for (const char* at = text.data(); at < text.data() + text.size(); at = g_utf8_next_char(at)) {
        const auto mark = plainMark(g_utf8_get_char(at));
        std::array<char, 6> bytes{};
        if (mark != 0)
            result.append(bytes.data(), static_cast<std::size_t>(g_unichar_to_utf8(mark, bytes.data())));
    }
    return result;
}

/// Of "tel:+1-555;phone-context=x;ext=12" "+1-555 ext 12".
std::string withoutScheme(std::string_view text)
{
    constexpr std::string_view scheme = "tel:";
    const auto low = lowered(text);
    if (!low.starts_with(scheme))
        return std::string(text);
    const auto end = std::min(text.find(';'), text.size());
    const std::string number(text.substr(scheme.size(), end - scheme.size()));
    char* const plain = g_uri_unescape_string(number.c_str(), nullptr);
    std::string result = plain == nullptr ? number : plain;
    g_free(plain);
    constexpr std::string_view word = ";ext=";
    if (const auto extension = low.find(word, end); extension != std::string::npos) {
        const auto start = extension + word.size();
        result += " ext ";
        result += text.substr(start, std::min(text.find(';', start), text.size()) - start);
    }
    return result;
}

/// Where the word for an extension begins in "555 1234 ext. 12"; the text's size when it has none. `end` is
/// where the extension's digits begin.
std::size_t findExtension(std::string_view text, std::size_t& end)
{
    constexpr std::array<std::string_view, 11> words{
        "ext", "extn", "extension", "x", "dw", "durchwahl", "nebenstelle", "poste", "interno", "int", "wew"};
    const auto none = text.size();
    end = text.find_last_not_of(digits) + 1;
    if (end == 0 || end == text.size())
        return none;
    const auto wordEnd = text.find_last_not_of(" .:=", end - 1);
    if (wordEnd == std::string_view::npos)
        return none;
    auto start = wordEnd + 1;
    while (start > 0 && g_ascii_isalpha(text[start - 1]) != 0)
        --start;
    const auto word = lowered(text.substr(start, wordEnd + 1 - start));
    if (std::ranges::find(words, word) == words.end())
        return none;
    const auto ahead = text.find_last_not_of(" ,;", start == 0 ? 0 : start - 1);
    const bool hasNumber = text.substr(0, start).find_first_of(digits) != std::string_view::npos;
    return hasNumber && ahead != std::string_view::npos ? ahead + 1 : none;
}

} // namespace

DialledNumber dialledNumber(std::string_view text)
{
    if (!isUtf8(text))
        return {std::string(text)};
    auto number = inPlainMarks(withoutScheme(trimmed(text)));
    // Telephones write a pause as a letter.
    for (std::size_t at = 1; at + 1 < number.size(); ++at)
        if (isDigit(number[at - 1]) && isDigit(number[at + 1]) &&
            std::string_view("pPwW").find(number[at]) != std::string_view::npos)
            number[at] = ',';
    std::size_t extension = 0;
    const auto word = findExtension(number, extension);
    if (word == number.size())
        return {std::string(trimmed(number))};
    return {std::string(trimmed(number.substr(0, word))) + "," + number.substr(extension), true};
}

} // namespace quelm
