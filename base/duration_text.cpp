// Whole seconds as such, all else in milliseconds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/duration_text.h"

#include "base/translation.h"

namespace quelm {

std::string durationText(std::chrono::milliseconds duration)
{
    constexpr auto second = std::chrono::milliseconds(std::chrono::seconds(1)).count();
    const auto count = duration.count();
    return count % second == 0 ? localized("%d s", count / second) : localized("%d ms", count);
}

std::chrono::seconds secondsShown(std::chrono::milliseconds duration)
{
    return std::chrono::round<std::chrono::seconds>(duration);
}

} // namespace quelm
