// Compares values with the tables of the format.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/attribute_values.h"

#include "base/texts.h"
#include "base/translation.h"
#include "device/stream/card_digits.h"
#include "device/stream/words.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace quelm::device {
namespace {

/// What an enumerator is called in a job.
template <typename Value>
struct Named {
    std::string_view name;
    Value value;
};

template <typename Value, std::size_t count>
bool readNamed(std::string_view name, const Named<Value> (&table)[count], Value& value)
{
    const auto* const found =
        std::ranges::find_if(table, [&](const Named<Value>& known) { return known.name == name; });
    if (found == std::end(table))
        return false;
    value = found->value;
    return true;
}

constexpr std::string_view digits = "0123456789";
constexpr std::string_view signsOfNumbers = "0123456789+.*#,/";
constexpr std::string_view signsOfPrefixes = "0123456789 -*#,";

bool hasDigit(std::string_view text) { return text.find_first_of(digits) != std::string_view::npos; }

/// The whole character of UTF-8, or the byte, that stands there.
std::string_view characterAt(std::string_view text, std::size_t position)
{
    for (std::size_t size = 1; size <= 4 && position + size <= text.size(); ++size)
        if (isUtf8(text.substr(position, size)))
            return text.substr(position, size);
    return text.substr(position, 1);
}

/// A character in quotation marks; one that shows as nothing by its code.
std::string signForPeople(std::string_view character)
{
    if (character.size() > 1 || isPrintableAscii(character.front()))
        return '"' + shownText(character) + '"';
    std::ostringstream code;
    code << "0x" << std::uppercase << std::hex << std::setw(2) << std::setfill('0')
         << static_cast<unsigned>(static_cast<unsigned char>(character.front()));
    return code.str();
}

} // namespace

std::size_t keyCount(std::string_view number)
{
    constexpr std::string_view pressed = "0123456789*#,";
    std::size_t count = 0;
    for (const char sign : number)
        count += sign == '+' ? 2 : pressed.find(sign) != std::string_view::npos ? 1 : 0;
    return count;
}

std::optional<bool> truthOf(std::string_view value)
{
    if (value == "TRUE" || value == "FALSE")
        return value == "TRUE";
    return std::nullopt;
}

bool readResolution(std::string_view value, Resolution& resolution)
{
    constexpr Named<Resolution> table[] = {
        {"0", Resolution::standard}, {"1", Resolution::fine}, {"2", Resolution::superfine}};
    return readNamed(value, table, resolution);
}

bool readSpeed(std::string_view value, Speed& speed)
{
    constexpr Named<Speed> table[] = {{"OID_VAL_FAX_TYPE_G3_FORCED_4800", Speed::forced4800},
                                      {"OID_VAL_FAX_TYPE_G3_14400", Speed::upTo14400},
                                      {"OID_VAL_FAX_TYPE_G3_AUTO", Speed::automatic}};
    return readNamed(value, table, speed);
}

std::string problemOfNumber(std::string_view number)
{
    if (!hasDigit(number))
        return localized("the number \"%s\" has no digit", shownPart(number));
    // A prefix ends in a comma, of which both may have more.
    const auto lastComma = number.rfind(',');
    for (std::size_t i = 0; i < number.size(); ++i) {
        const bool mayBePrefix = lastComma != std::string_view::npos && i < lastComma;
        const bool isInPrefix = mayBePrefix && signsOfPrefixes.find(number[i]) != std::string_view::npos;
        if (!isInPrefix && signsOfNumbers.find(number[i]) == std::string_view::npos)
            return localized("the number \"%s\" holds %s, which no number to dial can", shownPart(number),
                             signForPeople(characterAt(number, i)));
    }
    if (const auto keys = keyCount(number); keys > mostKeys)
        return localized("the number has %d keys, and a telephone number %d at most", keys, mostKeys);
    return "";
}

bool isMailbox(std::string_view mailbox)
{
    constexpr std::size_t longest = 4;
    const auto isSign = [](char character) {
        return isLetter(character) || isDigit(character) || character == '*' || character == '#';
    };
    return !mailbox.empty() && mailbox.size() <= longest && std::ranges::all_of(mailbox, isSign);
}

bool isCard(std::string_view card)
{
    return hasDigit(card) && card.find_first_not_of(signsOfPrefixes) == std::string_view::npos;
}

} // namespace quelm::device
