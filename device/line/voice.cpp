// Makes sound that is no fax machine's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/voice.h"

#include <array>
#include <cmath>
#include <numbers>

namespace quelm::device {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds patience = std::chrono::seconds(12);
constexpr milliseconds sentence{1200}; ///< "Hello?"
constexpr milliseconds betweenSentences{3000};
constexpr milliseconds syllable{300};

/// How loud the harmonics of the pitch are: those of a vowel.
constexpr std::array<double, 8> harmonics = {0.5, 0.7, 1.0, 0.8, 0.4, 0.5, 0.2, 0.1};
constexpr double loudness = 1500;
constexpr double fullTurn = 2 * std::numbers::pi;

} // namespace

bool Voice::hasHungUp() const { return time_ >= patience; }

void Voice::speak(Samples& samples)
{
    const bool speaks = !hasHungUp() && time_ % betweenSentences < sentence;
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double moment =
            static_cast<double>(time_.count()) / 1000 + static_cast<double>(index) / samplesPerSecond;
        const double inSyllable = std::fmod(moment * 1000, static_cast<double>(syllable.count())) /
                                  static_cast<double>(syllable.count());
        phase_ += fullTurn * (130 + 25 * std::sin(fullTurn * moment / 0.7)) / samplesPerSecond;
        double sum = 0;
        double number = 0;
        for (const double harmonic : harmonics)
            sum += harmonic * std::sin(phase_ * ++number);
        samples[index] =
            speaks ? static_cast<std::int16_t>(loudness * sum * std::sin(std::numbers::pi * inSyllable))
                   : std::int16_t{0};
    }
    time_ += pieceTime;
}

} // namespace quelm::device
