// Tests of the noise on a line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/line_noise.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quelm::device::tests {
namespace {

/// A tone of 1,000 Hz.
Samples tone(double amplitude)
{
    Samples samples{};
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples.at(index) =
            static_cast<std::int16_t>(amplitude * std::sin(static_cast<double>(index) * 0.7853981633974483));
    return samples;
}

/// How many dB a signal is above what was added to it.
double decibelsAbove(const Samples& signal, LineNoise& noise)
{
    double signalPower = 0;
    double noisePower = 0;
    for (int piece = 0; piece < 100; ++piece) {
        Samples noisy = signal;
        noise.addTo(noisy);
        for (std::size_t index = 0; index < noisy.size(); ++index) {
            const double added = noisy.at(index) - signal.at(index);
            noisePower += added * added;
            signalPower += static_cast<double>(signal.at(index)) * signal.at(index);
        }
    }
    return 10 * std::log10(signalPower / noisePower);
}

TEST(LineNoiseTest, TheSignalIsSoManyDecibelsAboveIt)
{
    for (const double decibels : {30.0, 20.0, 10.0, 0.0})
        for (const double amplitude : {500.0, 8000.0}) {
            LineNoise noise(decibels, 1);
            EXPECT_NEAR(decibelsAbove(tone(amplitude), noise), decibels, 0.5) << amplitude;
        }
}

TEST(LineNoiseTest, SilenceStaysSilent)
{
    LineNoise noise(0, 1);
    Samples silence{};
    noise.addTo(silence);
    EXPECT_EQ(silence, Samples{});
}

TEST(LineNoiseTest, LoudSoundIsCutAndDoesNotWrapRound)
{
    LineNoise noise(-20, 1);
    Samples loud{};
    loud.fill(30000);
    noise.addTo(loud);
    int highest = 0;
    int lowest = 0;
    for (const std::int16_t sample : loud) {
        highest += sample == 32767 ? 1 : 0;
        lowest += sample == -32767 ? 1 : 0;
    }
    EXPECT_GT(highest, 40);
    EXPECT_GT(lowest, 40);
}

TEST(LineNoiseTest, EachSeedHasItsNoise)
{
    const auto noisy = [](unsigned seed) {
        LineNoise noise(20, seed);
        Samples samples = tone(8000);
        noise.addTo(samples);
        return samples;
    };
    EXPECT_EQ(noisy(1), noisy(1));
    EXPECT_NE(noisy(1), noisy(2));
}

} // namespace
} // namespace quelm::device::tests
