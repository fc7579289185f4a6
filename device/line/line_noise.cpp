// Makes noise by the level of each piece of the signal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/line_noise.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quelm::device {

LineNoise::LineNoise(double decibels, unsigned seed) : ratio_(std::pow(10.0, -decibels / 20.0)), bits_(seed)
{
}

void LineNoise::addTo(Samples& samples)
{
    double power = 0;
    for (const std::int16_t sample : samples)
        power += double{static_cast<double>(sample)} * sample;
    const double level = std::sqrt(power / static_cast<double>(samples.size())) * ratio_;
    if (level == 0)
        return;
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    for (std::int16_t& sample : samples)
        sample = static_cast<std::int16_t>(std::clamp(sample + amplitude_(bits_) * level, -most, most));
}

} // namespace quelm::device
