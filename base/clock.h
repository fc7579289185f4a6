// The driver's clock, which can be fixed so that a job can be written again byte for byte.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_CLOCK_H
#define BASE_CLOCK_H

#include <ctime>
#include <string_view>

namespace quelm {

/// Parses a local time of the form "YYYY-MM-DDTHH:MM" (years 1970 to 9999, 24 hours, seconds 0).
/// Throws UsageError that quotes the text and says what is wrong with it.
std::tm parseLocalTime(std::string_view text);

/// From now on the clock stands still at `moment`, wherever the time is asked for. The weekday and the day
/// of the year are worked out.
void fixClock(const std::tm& moment);

/// The clock runs again.
void releaseClock();

/// A new reading of the clock: local time, or the moment at which it was fixed.
std::tm localTime();

/// The same as a point in time: seconds since 1970 in UTC.
std::time_t currentTime();

} // namespace quelm

#endif
