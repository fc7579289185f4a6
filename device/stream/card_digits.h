// Keeps the digits of credit cards out of whatever is said about a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_CARD_DIGITS_H
#define DEVICE_STREAM_CARD_DIGITS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quelm::device {

/// `text` with a "*" for each digit of a row of 12 and more: a card may stand in any line of a job, in the
/// place of something else or behind a name that was written wrong. Signs other than letters do not end a
/// row.
[[nodiscard]] std::string withoutCards(std::string_view text);

/// A part of a job as a remark can hold it: one line, not too long, without the digits of a card, also where
/// it is cut.
[[nodiscard]] std::string shownPart(std::string_view text, std::size_t most = 60);

} // namespace quelm::device

#endif
