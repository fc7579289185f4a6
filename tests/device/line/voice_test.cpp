// Tests of the person who answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/voice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quelm::device::tests {
namespace {

using namespace std::chrono_literals;

bool isSilent(const Samples& samples)
{
    return std::ranges::all_of(samples, [](std::int16_t sample) { return sample == 0; });
}

TEST(VoiceTest, SpeaksForAWhileAndHangsUp)
{
    Voice person;
    auto spoken = 0ms;
    auto silent = 0ms;
    auto time = 0ms;
    for (; !person.hasHungUp(); time += pieceTime) {
        Samples samples{};
        person.speak(samples);
        (isSilent(samples) ? silent : spoken) += pieceTime;
        ASSERT_LT(time, 1min);
    }
    EXPECT_GT(spoken, 3s);
    EXPECT_GT(silent, 3s);
    for (int piece = 0; piece < 500; ++piece) {
        Samples samples{};
        person.speak(samples);
        ASSERT_TRUE(isSilent(samples));
    }
}

} // namespace
} // namespace quelm::device::tests
