// A clock that goes on while a program works.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_PASSING_CLOCK_H
#define TESTS_SUPPORT_PASSING_CLOCK_H

#include "base/clock.h"
#include "base/log.h"

#include <string>
#include <string_view>
#include <utility>

/// Stands still at `now`, and at `later` from the first warning in the log on.
class PassingClock {
public:
    PassingClock(std::string_view now, std::string_view later)
        : before_(quelm::setLogSink(
              [this, later = quelm::parseLocalTime(later)](quelm::Severity, const std::string&) {
                  quelm::fixClock(later);
                  hasPassed = true;
              }))
    {
        quelm::fixClock(quelm::parseLocalTime(now));
    }
    ~PassingClock()
    {
        quelm::setLogSink(std::move(before_));
        quelm::releaseClock();
    }
    PassingClock(const PassingClock&) = delete;
    PassingClock& operator=(const PassingClock&) = delete;

    bool hasPassed = false;

private:
    quelm::LogSink before_;
};

#endif
