// Formats local time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/iso_moment.h"

#include <array>
#include <cstdlib>

namespace quelm {

std::string isoMoment(std::time_t moment)
{
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr)
        return std::to_string(moment);
    std::array<char, 64> text{};
    const auto size = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S%z", &local);
    std::string result(text.data(), size);
    // strftime writes +0530.
    constexpr std::size_t minutes = 2;
    if (size > minutes)
        result.insert(size - minutes, 1, ':');
    return result;
}

} // namespace quelm
