// What a front end and a job on its way over a wire tell each other.
#ifndef DRIVER_JOBS_TRANSFER_H
#define DRIVER_JOBS_TRANSFER_H

#include "driver/documents/document_copy.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace quelm {

/// How the sender of a job takes part in its sending. Both functions may be empty.
struct Transfer {
    /// Told whenever the other side has taken more bytes of the job, on the thread that sends.
    Progress progress;
    /// Asked several times a second while the sending lasts, on any thread; true ends it, and it stays
    /// true. Must neither block nor throw.
    std::function<bool()> cancelled;

    void report(std::uint64_t done, std::uint64_t total) const;
    bool isCancelled() const { return cancelled && cancelled(); }
};

/// How long waits last before a cancellation is looked for.
inline constexpr std::chrono::milliseconds cancellationInterval{100};

/// "60 s", "300 ms", for messages.
std::string durationText(std::chrono::milliseconds duration);

} // namespace quelm

#endif
