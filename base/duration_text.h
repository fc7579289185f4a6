// How long something is waited for, in words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_DURATION_TEXT_H
#define BASE_DURATION_TEXT_H

#include <chrono>
#include <string>

namespace quelm {

/// "60 s", "300 ms", for messages.
std::string durationText(std::chrono::milliseconds duration);

/// The whole seconds that are shown for a duration wherever it is shown: the nearest.
[[nodiscard]] std::chrono::seconds secondsShown(std::chrono::milliseconds duration);

} // namespace quelm

#endif
