// Tests of the exchange's tones, as a caller hears them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/exchange_tones.h"

#include "device/line/line_noise.h"
#include "device/line/voice.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using namespace std::chrono_literals;

/// Lets somebody who speaks be heard for some time.
template <typename Speaker>
void hear(ToneListener& listener, Speaker& speaker, std::chrono::milliseconds duration)
{
    for (auto time = 0ms; time < duration; time += pieceTime) {
        Samples samples{};
        speaker.speak(samples);
        listener.listen(samples);
    }
}

TEST(ExchangeTonesTest, TheBusyToneIsHeardAfterAFewSeconds)
{
    ToneSender exchange(ExchangeTone::busy);
    ToneListener caller;
    hear(caller, exchange, 1s);
    EXPECT_FALSE(caller.isBusy());
    hear(caller, exchange, 3s);
    EXPECT_TRUE(caller.isBusy());
    EXPECT_EQ(caller.rings(), 0);
}

TEST(ExchangeTonesTest, EachRingIsCounted)
{
    ToneSender exchange(ExchangeTone::ringing);
    ToneListener caller;
    for (int rings = 1; rings <= 7; ++rings) {
        hear(caller, exchange, 6s);
        EXPECT_EQ(caller.rings(), rings);
    }
    EXPECT_FALSE(caller.isBusy());
}

TEST(ExchangeTonesTest, ANoisyToneIsHeardToo)
{
    ToneSender exchange(ExchangeTone::busy);
    ToneListener caller;
    LineNoise noise(20, 1);
    for (auto time = 0ms; time < 5s; time += pieceTime) {
        Samples samples{};
        exchange.speak(samples);
        noise.addTo(samples);
        caller.listen(samples);
    }
    EXPECT_TRUE(caller.isBusy());
}

TEST(ExchangeTonesTest, AVoiceIsNoTone)
{
    Voice person;
    ToneListener caller;
    hear(caller, person, 30s);
    EXPECT_FALSE(caller.isBusy());
    EXPECT_EQ(caller.rings(), 0);
}

} // namespace
} // namespace quelm::device::tests
