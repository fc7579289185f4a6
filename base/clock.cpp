// Reads the clock, or stands for it when it was fixed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"

#include "base/error.h"
#include "base/translation.h"

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
    // Not by mktime alone, which would move a time that daylight saving leaves out.
    std::tm calendar = moment;
    timegm(&calendar);
    std::tm zoned = moment;
    std::mktime(&zoned);
    fixedTime = moment;
    fixedTime->tm_wday = calendar.tm_wday;
    fixedTime->tm_yday = calendar.tm_yday;
    fixedTime->tm_isdst = zoned.tm_isdst;
    fixedTime->tm_gmtoff = zoned.tm_gmtoff;
    fixedTime->tm_zone = zoned.tm_zone;
}

void releaseClock() { fixedTime.reset(); }

std::tm localTime()
{
    if (fixedTime)
        return *fixedTime;
    const std::time_t now = std::time(nullptr);
    std::tm time{};
    tzset(); // localtime_r alone need not see a changed TZ
    localtime_r(&now, &time);
    return time;
}

std::time_t currentTime()
{
    if (!fixedTime)
        return std::time(nullptr);
    std::tm moment = *fixedTime;
    return std::mktime(&moment);
}

} // namespace quelm
