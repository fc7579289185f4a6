// What the exchange's file says.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_EXCHANGE_EXCHANGE_PLAN_H
#define DEVICE_EXCHANGE_EXCHANGE_PLAN_H

#include "device/line/fax_call.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm::device {

/// What stands behind the numbers of a pattern.
struct NumberPlan {
    std::string pattern; ///< keys; "?" is any digit, and "*" at the end any number of keys
    AnsweringParty::Kind answer = AnsweringParty::Kind::fax;
    int busyAttempts = 0;  ///< the first so many calls for a recipient find it busy
    AnsweringParty fax;    ///< of one that answers as a fax machine; its identity is empty for its number
    bool saysFax = false;  ///< a key that only a fax machine can have stands there
    bool saysBusy = false; ///< "busy" stands there
};

/// The whole file.
struct ExchangePlan {
    std::string outsideLine = "9"; ///< empty for none
    bool asksForCards = true;
    AnsweringParty::Kind others = AnsweringParty::Kind::fax;
    std::string identity; ///< of fax machines whose pattern says none; empty for their number
    std::vector<NumberPlan> numbers;
};

/// Reads a file (UTF-8). Throws quelm::Error that names the file, the group and the key when it cannot be
/// read, is malformed, holds what is not known, or contradicts itself.
[[nodiscard]] ExchangePlan readExchangePlan(const std::string& file);

/// The pattern that fits a number best: one without "*" ahead of one with it, then the one with the most
/// digits, then the one that stands first; null when none does.
[[nodiscard]] const NumberPlan* planFor(const ExchangePlan& plan, std::string_view number);

} // namespace quelm::device

#endif
