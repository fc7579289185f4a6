// Calls what may block for long, and waits for it no longer than one wants to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_CANCELLABLE_CALL_H
#define BASE_CANCELLABLE_CALL_H

#include "base/bounded_call.h"
#include "base/cancellation.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <type_traits>
#include <utility>

namespace quelm {

/// What `call` returns, run on a thread of its own; what it throws is thrown here. Nothing when it is not
/// back by `deadline`, or is `cancelled` before: the thread then goes on by itself, and the result is
/// destroyed there. So `call` must own all that it uses, and its result clean up after itself. Throws
/// std::system_error when no thread can be had.
template <class Call>
[[nodiscard]] std::optional<std::invoke_result_t<Call>> callBefore(Deadline deadline,
                                                                   const Cancellation& cancelled, Call call)
{
    auto started = startCall(std::move(call));
    for (;;) {
        const auto now = std::chrono::steady_clock::now();
        if (started.isBackBefore(std::min(deadline, now + cancellationInterval)))
            return started.get();
        if (now >= deadline || isCancelled(cancelled))
            return std::nullopt;
    }
}

} // namespace quelm

#endif
