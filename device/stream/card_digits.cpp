// Finds rows of digits as long as a card's number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/card_digits.h"

#include "base/texts.h"
#include "device/stream/words.h"

namespace quelm::device {
namespace {

constexpr std::size_t fewestDigits = 12; // of a card's number

/// Blanks, hyphens and whatever else people put between groups of digits.
bool isBetween(char character)
{
    constexpr unsigned char firstBeyondAscii = 0x80;
    return !isLetter(character) && !isDigit(character) &&
           static_cast<unsigned char>(character) < firstBeyondAscii;
}

} // namespace

std::string withoutCards(std::string_view text)
{
    std::string shown(text);
    for (std::size_t begin = 0; begin < shown.size();) {
        std::size_t digits = 0;
        auto end = begin;
        while (end < shown.size() && (isDigit(shown[end]) || isBetween(shown[end])))
            digits += isDigit(shown[end++]) ? 1 : 0;
        if (digits >= fewestDigits)
            for (auto at = begin; at < end; ++at)
                shown[at] = isDigit(shown[at]) ? '*' : shown[at];
        begin = end + 1;
    }
    return shown;
}

std::string shownPart(std::string_view text, std::size_t most) { return shownText(withoutCards(text), most); }

} // namespace quelm::device
