// What the values of attributes may be, and mean.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_ATTRIBUTE_VALUES_H
#define DEVICE_STREAM_ATTRIBUTE_VALUES_H

#include "device/stream/received_job.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quelm::device {

/// TRUE or FALSE; nothing for anything else.
[[nodiscard]] std::optional<bool> truthOf(std::string_view value);

/// False, with `resolution` as it was, for a value that there is not.
[[nodiscard]] bool readResolution(std::string_view value, Resolution& resolution);

/// Likewise.
[[nodiscard]] bool readSpeed(std::string_view value, Speed& speed);

/// The most keys of a number and its prefix, and of a card: digits, "*", "#" and "," count once, "+" twice.
inline constexpr std::size_t mostKeys = 100;

/// How many keys are pressed for a number or a card.
[[nodiscard]] std::size_t keyCount(std::string_view number);

/// Why this is no number of a recipient, a dialing prefix and a comma ahead of it or not, as part of a
/// sentence; empty when it is one. Blanks and hyphens can stand in a prefix only.
[[nodiscard]] std::string problemOfNumber(std::string_view number);

/// One to four letters of ASCII, digits, "*" and "#".
[[nodiscard]] bool isMailbox(std::string_view mailbox);

/// Digits, one at least, blanks, "-", "*", "#" and ",".
[[nodiscard]] bool isCard(std::string_view card);

} // namespace quelm::device

#endif
