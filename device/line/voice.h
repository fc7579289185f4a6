// A person who answers a telephone, finds no person there, and hangs up.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_VOICE_H
#define DEVICE_LINE_VOICE_H

#include "device/line/samples.h"

#include <chrono>

namespace quelm::device {

/// Speaks as voices do: harmonics of a pitch that wanders, in syllables, with pauses between the sentences.
class Voice {
public:
    void speak(Samples& samples);
    [[nodiscard]] bool hasHungUp() const;

private:
    std::chrono::milliseconds time_{0};
    double phase_ = 0; ///< of the pitch
};

} // namespace quelm::device

#endif
