// How a credit card is named to the user it is charged for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_CARD_REMARK_H
#define DRIVER_HANDOVER_CARD_REMARK_H

#include <string>
#include <string_view>

namespace quelm {

/// "the credit card ending in 1234 is charged". Of a number with less than eight digits none is told. Empty
/// for no number.
[[nodiscard]] std::string cardRemark(std::string_view number);

/// The last four digits of a card's number; empty for one with less than eight digits.
[[nodiscard]] std::string cardDigits(std::string_view number);

} // namespace quelm

#endif
