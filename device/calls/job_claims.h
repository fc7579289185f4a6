// Which jobs some thread is at, and which are to be tried again later.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_JOB_CLAIMS_H
#define DEVICE_CALLS_JOB_CLAIMS_H

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <optional>

namespace quelm::device {

using SteadyMoment = std::chrono::steady_clock::time_point;

/// How long something rests that has failed several times in a row: twice as long each time, up to 32 times.
class Rest {
public:
    explicit Rest(std::chrono::milliseconds first) : first_(first) {}
    std::chrono::milliseconds next()
    {
        constexpr int mostDoublings = 5;
        const int doublings = std::min(failures_, mostDoublings);
        ++failures_;
        return first_ * (1 << doublings);
    }
    void over() { failures_ = 0; }

private:
    std::chrono::milliseconds first_;
    int failures_ = 0;
};

/// Lets each job be one thread's at a time. Safe on every thread.
class JobClaims {
public:
    /// `rest` is how long a job rests that failed for the first time.
    explicit JobClaims(std::chrono::milliseconds rest) : rest_(rest) {}

    /// True when the job is the caller's from now on; false when it is another's or rests.
    [[nodiscard]] bool take(int job);
    /// It is nobody's any more.
    void finish(int job);
    /// It failed, and rests.
    void postpone(int job);
    /// The earliest end of a rest.
    [[nodiscard]] std::optional<SteadyMoment> nextEnd() const;

private:
    struct Claim {
        bool isTaken = false;
        SteadyMoment restsUntil;
        Rest rest;
    };
    std::chrono::milliseconds rest_;
    mutable std::mutex mutex_;
    std::map<int, Claim> claims_;
};

} // namespace quelm::device

#endif
