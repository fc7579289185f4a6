// Sends and recognises an exchange's tones.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/exchange_tones.h"

#include "base/released_by.h"
#include "device/line/modem_library.h"

#include <algorithm>
#include <array>
#include <new>

namespace quelm::device {
namespace {

/// A tone's two frequencies in Hz, and how many milliseconds it is there and then is not.
struct Cadence {
    int low;
    int high;
    int on;
    int off;
};

constexpr Cadence busyTone{.low = 480, .high = 620, .on = 500, .off = 500};
constexpr Cadence ringingTone{.low = 440, .high = 480, .on = 2000, .off = 4000};

const Cadence& cadenceOf(ExchangeTone tone) { return tone == ExchangeTone::busy ? busyTone : ringingTone; }

/// True for a length in milliseconds that a listener takes for `expected`.
bool isAbout(int expected, int length) { return length > expected * 8 / 10 && length < expected * 12 / 10; }

template <typename Object>
Object* required(Object* object)
{
    if (object == nullptr)
        throw std::bad_alloc();
    return object;
}

} // namespace

struct ToneSender::State {
    explicit State(const Cadence& cadence)
        : descriptor(required(tone_gen_descriptor_init(nullptr, cadence.low, level, cadence.high, level,
                                                       cadence.on, cadence.off, 0, 0, 1))),
          tone(required(tone_gen_init(nullptr, descriptor.get())))
    {
    }

    static constexpr int level = -19; ///< dBm0 of each frequency
    std::unique_ptr<tone_gen_descriptor_t, ReleasedBy<tone_gen_descriptor_free>> descriptor;
    std::unique_ptr<tone_gen_state_t, ReleasedBy<tone_gen_free>> tone;
};

ToneSender::ToneSender(ExchangeTone tone)
{
    prepareModemLibrary();
    state_ = std::make_unique<State>(cadenceOf(tone));
}

ToneSender::~ToneSender() = default;

void ToneSender::speak(Samples& samples)
{
    const int made = tone_gen(state_->tone.get(), samples.data(), static_cast<int>(samples.size()));
    std::fill(samples.begin() + std::max(made, 0), samples.end(), std::int16_t{0});
}

struct ToneListener::State {
    State() : descriptor(required(super_tone_rx_make_descriptor(nullptr)))
    {
        for (const Cadence& cadence : {busyTone, ringingTone})
            super_tone_rx_add_element(descriptor.get(), super_tone_rx_add_tone(descriptor.get()), cadence.low,
                                      cadence.high, cadence.on, cadence.on);
        tone.reset(required(super_tone_rx_init(nullptr, descriptor.get(), &takeTone, this)));
        super_tone_rx_segment_callback(tone.get(), &takeSegment);
    }

    static void takeTone(void* /*listener*/, int /*tone*/, int /*level*/, int /*delay*/) {}

    /// A piece of sound or silence has ended; -1 stands for a frequency that is none of the exchange's.
    static void takeSegment(void* listener, int low, int high, int length)
    {
        auto* state = static_cast<State*>(listener);
        if (low < 0 || high < 0)
            return;
        if (isAbout(busyTone.on, length))
            ++state->shortTones;
        if (isAbout(ringingTone.on, length))
            ++state->longTones;
    }

    std::unique_ptr<super_tone_rx_descriptor_t, ReleasedBy<super_tone_rx_free_descriptor>> descriptor;
    std::unique_ptr<super_tone_rx_state_t, ReleasedBy<super_tone_rx_free>> tone;
    int shortTones = 0;
    int longTones = 0;
};

ToneListener::ToneListener()
{
    prepareModemLibrary();
    state_ = std::make_unique<State>();
}

ToneListener::~ToneListener() = default;

void ToneListener::listen(const Samples& samples)
{
    super_tone_rx(state_->tone.get(), samples.data(), static_cast<int>(samples.size()));
}

bool ToneListener::isBusy() const
{
    constexpr int enough = 3;
    return state_->shortTones >= enough;
}

int ToneListener::rings() const { return state_->longTones; }

} // namespace quelm::device
