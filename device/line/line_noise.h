// The noise that a telephone line adds to what is said on it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_LINE_NOISE_H
#define DEVICE_LINE_LINE_NOISE_H

#include "device/line/samples.h"

#include <random>

namespace quelm::device {

/// White noise so many dB below the signal, as coders on the way add it: it comes and goes with the signal,
/// so that silence stays silent. Noise of a level of its own would have to be below the level from which
/// modems take it for a carrier, and then disturb nothing.
class LineNoise {
public:
    /// The same noise for the same seed.
    LineNoise(double decibels, unsigned seed);

    void addTo(Samples& samples);

private:
    double ratio_; ///< of the noise's amplitude to the signal's
    std::mt19937 bits_;
    std::normal_distribution<double> amplitude_;
};

} // namespace quelm::device

#endif
