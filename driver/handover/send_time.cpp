// Finds the moment that a time of day means, in local time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/send_time.h"

#include "base/clock.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/widgets/widget_names.h"

#include <array>
#include <tuple>
#include <utility>

namespace quelm {
namespace {

/// Hour and minute on the 24-hour clock.
using TimeOfDay = std::pair<int, int>;

TimeOfDay timeOfDay(const ClockTime& time)
{
    return {time.hour % 12 + (time.isAfternoon ? 12 : 0), time.minute};
}

TimeOfDay timeOfDay(const std::tm& time) { return {time.tm_hour, time.tm_min}; }

/// The date `days` behind that of `time`, at the start of it. Also the 32nd of a month is a date here.
std::tm dateBehind(const std::tm& time, int days)
{
    std::tm date{};
    date.tm_year = time.tm_year;
    date.tm_mon = time.tm_mon;
    date.tm_mday = time.tm_mday + days;
    timegm(&date);
    return date;
}

bool isSameDate(const std::tm& one, const std::tm& other)
{
    return one.tm_year == other.tm_year && one.tm_yday == other.tm_yday;
}

std::string written(const char* format, const std::tm& time)
{
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), format, &time);
    return text.data();
}

} // namespace

std::optional<std::time_t> nextMoment(const ClockTime& time, std::time_t now)
{
    const std::tm current = localTimeAt(now);
    const TimeOfDay wanted = timeOfDay(time);
    if (timeOfDay(current) == wanted)
        return std::nullopt;
    std::tm moment = dateBehind(current, 0);
    std::tie(moment.tm_hour, moment.tm_min) = wanted;
    for (const std::time_t candidate : momentsOf(moment))
        if (candidate > now)
            return candidate;
    // What the clocks leave out is past as soon as they show a later time.
    if (momentsOf(moment).empty() && timeOfDay(current) < wanted)
        return momentOf(moment);
    moment = dateBehind(current, 1);
    std::tie(moment.tm_hour, moment.tm_min) = wanted;
    return momentOf(moment);
}

std::optional<std::time_t> chosenMoment(const Driver& driver, std::time_t now)
{
    const auto chosen = [&driver](const char* widget) { return driver.show(widget).value.value_or(0); };
    if (chosen(widget_names::lanFaxSendTime) != 1)
        return std::nullopt;
    return nextMoment({chosen(widget_names::sendAtHr), chosen(widget_names::sendAtMin),
                       chosen(widget_names::sendAtAmPm) == 1},
                      now);
}

std::optional<std::time_t> stillAhead(std::optional<std::time_t> moment, std::time_t now)
{
    return moment && *moment > now ? moment : std::nullopt;
}

std::string shownMoment(std::time_t moment, std::time_t now)
{
    const std::tm time = localTimeAt(moment);
    const std::tm current = localTimeAt(now);
    const auto clock = written("%H:%M", time);
    if (isSameDate(time, current))
        // Translators: %s is a time of day, such as 16:05.
        return localized("today at %s", clock);
    if (isSameDate(time, dateBehind(current, 1)))
        // Translators: %s is a time of day, such as 16:05.
        return localized("tomorrow at %s", clock);
    // Translators: a date and a time of day, such as 2026-11-30 and 16:05.
    return localized("on %s at %s", written("%Y-%m-%d", time), clock);
}

} // namespace quelm
