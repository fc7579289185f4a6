// Words for a credit card.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/card_remark.h"

#include "base/translation.h"

#include <algorithm>
#include <iterator>

namespace quelm {

std::string cardRemark(std::string_view number)
{
    if (number.empty())
        return {};
    const std::string digits = cardDigits(number);
    if (digits.empty())
        return localized("a credit card is charged");
    return localized("the credit card ending in %s is charged", digits);
}

std::string cardDigits(std::string_view number)
{
    constexpr std::size_t told = 4;
    constexpr std::size_t fewest = 8;
    std::string digits;
    std::ranges::copy_if(number, std::back_inserter(digits),
                         [](char character) { return character >= '0' && character <= '9'; });
    return digits.size() < fewest ? std::string() : digits.substr(digits.size() - told);
}

} // namespace quelm
