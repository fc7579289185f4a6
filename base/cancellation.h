// How the one who waits ends work that takes long.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_CANCELLATION_H
#define BASE_CANCELLATION_H

#include <chrono>
#include <functional>

namespace quelm {

/// Asked several times a second while the work lasts, on any thread; true ends it, and it stays true.
/// Must neither block nor throw. Empty when the work cannot be cancelled.
using Cancellation = std::function<bool()>;

inline bool isCancelled(const Cancellation& cancelled) { return cancelled && cancelled(); }

/// How long waits last before a cancellation is looked for.
inline constexpr std::chrono::milliseconds cancellationInterval{100};

} // namespace quelm

#endif
