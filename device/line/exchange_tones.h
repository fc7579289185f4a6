// The tones by which an exchange says how a call goes before anybody answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_EXCHANGE_TONES_H
#define DEVICE_LINE_EXCHANGE_TONES_H

#include "device/line/samples.h"

#include <memory>

namespace quelm::device {

enum class ExchangeTone {
    busy,   ///< 480 and 620 Hz, half a second every second
    ringing ///< 440 and 480 Hz, two seconds every six
};

/// The exchange's end.
class ToneSender {
public:
    explicit ToneSender(ExchangeTone tone);
    ~ToneSender();
    ToneSender(const ToneSender&) = delete;
    ToneSender& operator=(const ToneSender&) = delete;

    void speak(Samples& samples);

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// The caller's end, which finds out from the sound alone.
class ToneListener {
public:
    ToneListener();
    ~ToneListener();
    ToneListener(const ToneListener&) = delete;
    ToneListener& operator=(const ToneListener&) = delete;

    void listen(const Samples& samples);
    [[nodiscard]] bool isBusy() const;
    /// How often it has rung at the other end.
    [[nodiscard]] int rings() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
