// The driver's clock, which can be fixed so that a job can be written again byte for byte.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_CLOCK_H
#define BASE_CLOCK_H

#include <ctime>
#include <string_view>
#include <vector>

namespace quelm {

/// Parses a local time of the form "YYYY-MM-DDTHH:MM" (years 1970 to 9999, 24 hours, seconds 0).
/// Throws UsageError that quotes the text and says what is wrong with it.
std::tm parseLocalTime(std::string_view text);

/// From now on the clock stands still at `moment`, wherever the time is asked for. The weekday and the day
/// of the year are worked out.
void fixClock(const std::tm& moment);

/// The clock runs again.
void releaseClock();

/// Whether the clock stands still.
bool isClockFixed();

/// A new reading of the clock: local time, or the moment at which it was fixed.
std::tm localTime();

/// The same as a point in time: seconds since 1970 in UTC. A fixed time that the change to or from summer
/// time makes ambiguous or leaves out is the one that `momentOf` says.
std::time_t currentTime();

/// A point in time as clocks here show it, in the time zone that TZ names now.
std::tm localTimeAt(std::time_t moment);

/// All points in time at which clocks here show the date and the time of `time`, in their order: mostly one;
/// two when the clocks are put back over it; none when the change to summer time leaves it out. Whether
/// `time` claims to be summer time does not count.
std::vector<std::time_t> momentsOf(const std::tm& time);

/// The first of `momentsOf`; for a time that is left out, as much later as the clocks are put forward.
std::time_t momentOf(const std::tm& time);

} // namespace quelm

#endif
