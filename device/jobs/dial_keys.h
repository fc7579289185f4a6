// Which keys of a telephone a job's number stands for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_DIAL_KEYS_H
#define DEVICE_JOBS_DIAL_KEYS_H

#include <string>

namespace quelm::device {

/// The keys that a device presses for a number or a card of a job: digits, "*" and "#" as they stand, "+" as
/// 00, a comma for a pause. What only parts groups of digits (blanks, "-", ".", "/", "(" and ")") is left
/// out. Throws quelm::Error for a sign that no telephone has, without saying which digits stand beside it.
[[nodiscard]] std::string keysFor(const std::string& number);

} // namespace quelm::device

#endif
