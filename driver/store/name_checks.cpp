// Checks what a name and a telephone number may hold.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/name_checks.h"

#include "base/translation.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <vector>

namespace quelm {

namespace {

/// The next character of `text` at `at`, which moves on; nothing when the bytes there are no UTF-8.
std::optional<gunichar> nextCharacter(std::string_view text, std::size_t& at)
{
    const gunichar character =
        g_utf8_get_char_validated(text.data() + at, static_cast<gssize>(text.size() - at));
    constexpr auto invalid = static_cast<gunichar>(-1);
    constexpr auto incomplete = static_cast<gunichar>(-2);
    if (character == invalid || character == incomplete)
        return std::nullopt;
    at += static_cast<std::size_t>(g_unichar_to_utf8(character, nullptr));
    return character;
}

std::vector<gunichar> charactersOf(std::string_view text)
{
    std::vector<gunichar> characters;
    for (std::size_t at = 0; at < text.size();) {
        const auto character = nextCharacter(text, at);
        if (!character)
            break;
        characters.push_back(*character);
    }
    return characters;
}

bool contains(const std::vector<gunichar>& characters, gunichar wanted)
{
    for (const gunichar character : characters)
        if (character == wanted)
            return true;
    return false;
}

/// The character as a user can recognise it: in quotes when it prints, by its number otherwise.
std::string shown(gunichar character)
{
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "U+%04X", static_cast<unsigned>(character));
    if (g_unichar_isgraph(character) == FALSE || g_unichar_iszerowidth(character) != FALSE)
        return number.data();
    std::array<char, 8> bytes{};
    bytes[static_cast<std::size_t>(g_unichar_to_utf8(character, bytes.data()))] = '\0';
    return "\"" + std::string(bytes.data()) + "\"";
}

std::string shownByte(char byte)
{
    std::array<char, 8> number{};
    std::snprintf(number.data(), number.size(), "0x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    return number.data();
}

/// The acceptable marks as a user can read them: blanks are named, each other one once.
std::string listed(std::string_view marks)
{
    std::string list;
    std::vector<gunichar> seen;
    for (const gunichar mark : charactersOf(marks)) {
        if (contains(seen, mark))
            continue;
        seen.push_back(mark);
        list += list.empty() ? "" : " ";
        list += mark == ' ' ? localized("blank") : shown(mark);
    }
    return list;
}

/// What the two checks differ in.
struct Check {
    bool (*accepts)(gunichar);
    const char* always;    ///< characters to name as acceptable beside those of `allowed`
    const char* forbidden; ///< message with "%s" for the character and for the acceptable ones
    const char* noText;    ///< message with "%s" for the byte that is no UTF-8
};

/// The first character that the check does not accept, as a message. `text` is looked at whole.
std::optional<std::string> firstProblem(std::string_view text, std::string_view allowed, const Check& check)
{
    const std::vector<gunichar> extra = charactersOf(allowed);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const auto character = nextCharacter(text, at);
        if (!character)
            return localized(check.noText, shownByte(text[start]));
        if (!check.accepts(*character) && !contains(extra, *character))
            return localized(check.forbidden, shown(*character), listed(check.always + std::string(allowed)));
    }
    return std::nullopt;
}

constexpr gunichar noBreakBlank = 0xa0;
constexpr gunichar wideBlank = 0x3000;

/// What stands in people's names beside letters, digits, the two usual apostrophes and what a caller allows.
constexpr std::array<gunichar, 28> nameMarks{
    noBreakBlank, wideBlank,                         // blanks
    0x60,         0xb4,      0x2018, 0x201b, 0xff07, // apostrophes of all kinds of keyboards
    0xb7,         0x2022,    0x2027,                 // Gal·la; parts of foreign names in Chinese
    0x55a,                                           // the Armenian apostrophe
    0x5be,        0x5f3,     0x5f4,                  // Hebrew hyphen, geresh and gershayim
    0xf0b,        0xf0c,                             // between Tibetan syllables
    0x1361,                                          // between Ethiopic words
    0x200c,       0x200d,                            // how Persian and Indic letters join
    0x2010,       0x2011,    0x2012, 0x2013,         // hyphens
    0x30a0,       0x30fb,    0xff65,                 // hyphen and dots of Japanese
    0xff0d,       0xff0e,                            // wide hyphen and full stop
};

bool isNameMark(gunichar character) { return std::ranges::find(nameMarks, character) != nameMarks.end(); }

bool isBlank(gunichar character)
{
    return character == ' ' || character == noBreakBlank || character == wideBlank;
}

bool isNameCharacter(gunichar character)
{
    constexpr gunichar straightApostrophe = 0x27;
    constexpr gunichar typographicApostrophe = 0x2019;
    return g_unichar_isalnum(character) != FALSE || g_unichar_ismark(character) != FALSE ||
           character == straightApostrophe || character == typographicApostrophe || isNameMark(character);
}

bool isPhoneDigit(gunichar character) { return character >= '0' && character <= '9'; }

bool isPhoneCharacter(gunichar character)
{
    return isPhoneDigit(character) || (character != 0 && character < 0x80 &&
                                       std::strchr("+.*#,", static_cast<int>(character)) != nullptr);
}

} // namespace

std::optional<std::string> problemWithName(std::string_view name, std::string_view allowed)
{
    static constexpr Check check{
        isNameCharacter,
        "'",
        // Translators: %s is one character, then a list of characters.
        forTranslation("The Name must not contain %s. Possible are letters, digits and %s"),
        forTranslation("The Name is not readable: the byte %s is not part of a UTF-8 text. Please enter the "
                       "Name again."),
    };
    if (auto problem = firstProblem(name, allowed, check))
        return problem;
    const auto characters = charactersOf(name);
    // The parser of phonebook records fails on a value of nothing but blanks, and with it the
    // list of the whole phonebook.
    if (!characters.empty() && std::ranges::all_of(characters, isBlank))
        return localized("The Name consists of blanks only. Please enter a Name.");
    const auto isLetterOrDigit = [](gunichar character) { return g_unichar_isalnum(character) != FALSE; };
    if (std::ranges::any_of(characters, isNameMark) && std::ranges::none_of(characters, isLetterOrDigit))
        return localized("The Name consists of marks only. Please enter a Name.");
    return std::nullopt;
}

std::optional<std::string> problemWithPhoneNumber(std::string_view number, std::string_view allowed)
{
    static constexpr Check check{
        isPhoneCharacter,
        "+.*#,",
        // Translators: %s is one character, then a list of characters.
        forTranslation("The number must not contain %s. Possible are digits and %s"),
        forTranslation(
            "The number is not readable: the byte %s is not part of a UTF-8 text. Please enter the "
            "number again."),
    };
    if (auto problem = firstProblem(number, allowed, check))
        return problem;
    if (number.find_first_of("0123456789") == std::string_view::npos)
        return localized("The number has no digit. Please enter at least one.");
    return std::nullopt;
}

std::string mendedName(std::string_view name, std::string_view allowed)
{
    const std::vector<gunichar> extra = charactersOf(allowed);
    std::string mended;
    bool apart = false; // a blank is to come
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t start = at;
        const auto character = nextCharacter(name, at);
        if (!character)
            ++at;
        if (!character || isBlank(*character) ||
            (!isNameCharacter(*character) && !contains(extra, *character))) {
            apart = true;
            continue;
        }
        if (apart && !mended.empty())
            mended += ' ';
        apart = false;
        mended += name.substr(start, at - start);
    }
    return mended;
}

} // namespace quelm
