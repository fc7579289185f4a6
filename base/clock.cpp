// Reads the clock, or stands for it when it was fixed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"

#include "base/error.h"
#include "base/translation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace quelm {

namespace {

std::optional<std::tm> fixedTime;

/// The decimal number that the digits at `at` make.
int numberAt(std::string_view text, std::size_t at, std::size_t digits)
{
    int number = 0;
    for (const char digit : text.substr(at, digits))
        number = 10 * number + (digit - '0');
    return number;
}

bool hasForm(std::string_view text, std::string_view form)
{
    if (text.size() != form.size())
        return false;
    for (std::size_t at = 0; at < form.size(); ++at) {
        const bool digit = text[at] >= '0' && text[at] <= '9';
        if (form[at] == '0' ? !digit : text[at] != form[at])
            return false;
    }
    return true;
}

int daysIn(int month, int year)
{
    if (month == 2)
        return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

/// What is wrong with the fields, or nothing. Seconds do not occur.
std::string fieldProblem(int year, int month, int day, int hour, int minute)
{
    if (year < 1970)
        return localized("the year must lie between 1970 and 9999");
    if (month < 1 || month > 12)
        return localized("the month must lie between 01 and 12");
    if (day < 1 || day > daysIn(month, year))
        return localized("that month has the days 01 to %d", daysIn(month, year));
    if (hour > 23)
        return localized("the hour must lie between 00 and 23");
    if (minute > 59)
        return localized("the minute must lie between 00 and 59");
    return "";
}

/// The date and the time of `time` as if they were meant in UTC.
std::time_t asUtc(std::tm time) { return timegm(&time); }

/// The points in time that `time` can mean, by the differences from UTC that hold around it. Not mktime's
/// answers: of a time that comes twice, or never, it says one or the other.
std::array<std::time_t, 4> candidatesFor(const std::tm& time)
{
    // No zone is further away from UTC than half of the first, and the change of a day lies within the
    // second.
    constexpr std::array<std::time_t, 4> around{-30 * 3600, -15 * 3600, 15 * 3600, 30 * 3600};
    const std::time_t utc = asUtc(time);
    std::array<std::time_t, 4> candidates{};
    std::ranges::transform(around, candidates.begin(), [utc](std::time_t distance) {
        return utc - localTimeAt(utc + distance).tm_gmtoff;
    });
    std::ranges::sort(candidates);
    return candidates;
}

UsageError noTime(std::string_view text, const std::string& problem)
{
    return UsageError(localized("\"%s\" is no time: %s", text, problem));
}

} // namespace

std::tm parseLocalTime(std::string_view text)
{
    if (!hasForm(text, "0000-00-00T00:00"))
        throw noTime(text, localized("write it as YYYY-MM-DDTHH:MM, such as 2026-03-09T14:05"));
    std::tm time{};
    const int year = numberAt(text, 0, 4);
    const int month = numberAt(text, 5, 2);
    time.tm_mday = numberAt(text, 8, 2);
    time.tm_hour = numberAt(text, 11, 2);
    time.tm_min = numberAt(text, 14, 2);
    const std::string problem = fieldProblem(year, month, time.tm_mday, time.tm_hour, time.tm_min);
    if (!problem.empty())
        throw noTime(text, problem);
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_isdst = -1;
    return time;
}

void fixClock(const std::tm& moment)
{
    // The time itself stays, also one that daylight saving leaves out.
    std::tm calendar = moment;
    timegm(&calendar);
    const std::tm zoned = localTimeAt(momentOf(moment));
    fixedTime = moment;
    fixedTime->tm_wday = calendar.tm_wday;
    fixedTime->tm_yday = calendar.tm_yday;
    fixedTime->tm_isdst = zoned.tm_isdst;
    fixedTime->tm_gmtoff = zoned.tm_gmtoff;
    fixedTime->tm_zone = zoned.tm_zone;
}

bool isClockFixed() { return fixedTime.has_value(); }

void releaseClock() { fixedTime.reset(); }

std::tm localTime()
{
    if (fixedTime)
        return *fixedTime;
    return localTimeAt(std::time(nullptr));
}

std::time_t currentTime() { return fixedTime ? momentOf(*fixedTime) : std::time(nullptr); }

std::tm localTimeAt(std::time_t moment)
{
    std::tm time{};
    tzset(); // localtime_r alone need not see a changed TZ
    localtime_r(&moment, &time);
    return time;
}

std::vector<std::time_t> momentsOf(const std::tm& time)
{
    std::vector<std::time_t> moments;
    for (const std::time_t candidate : candidatesFor(time))
        if (asUtc(localTimeAt(candidate)) == asUtc(time) && (moments.empty() || moments.back() != candidate))
            moments.push_back(candidate);
    return moments;
}

std::time_t momentOf(const std::tm& time)
{
    const auto moments = momentsOf(time);
    // The difference from UTC before the clocks are put forward makes a point in time behind that.
    return moments.empty() ? candidatesFor(time).back() : moments.front();
}

} // namespace quelm
