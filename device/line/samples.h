// The sound on a telephone line, in pieces of 20 ms.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_SAMPLES_H
#define DEVICE_LINE_SAMPLES_H

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace quelm::device {

inline constexpr int samplesPerSecond = 8000;
inline constexpr std::chrono::milliseconds pieceTime{20};
inline constexpr std::size_t pieceSize = samplesPerSecond / 50;

/// What one end says during 20 ms: linear samples, of which the modem library's full scale is 16 bits.
using Samples = std::array<std::int16_t, pieceSize>;

} // namespace quelm::device

#endif
