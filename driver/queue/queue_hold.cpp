// Compares clocks, and reads back what a server made of a time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/queue_hold.h"

#include "base/clock.h"
#include "base/translation.h"

#include <array>
#include <utility>

namespace quelm {
namespace {

constexpr std::time_t minute = 60;
constexpr std::time_t day = 24 * 60 * minute;

/// How far the clocks may be apart.
constexpr std::time_t mostApart = minute;

/// A server whose clock is a minute ahead, and is asked a little late, must not take the next day.
constexpr std::time_t nearest = 2 * minute;

/// Nor must one whose clock is a minute behind take the same moment a day earlier.
constexpr std::time_t farthest = day - 2 * minute;

std::optional<std::time_t> timeOf(const IppAnswer& answer)
{
    auto* attribute = ippFindAttribute(answer.message.get(), "printer-current-time", IPP_TAG_DATE);
    return attribute != nullptr ? timeInIpp(ippGetDate(attribute, 0)) : std::nullopt;
}

} // namespace

std::string holdTime(std::time_t moment)
{
    std::tm utc{};
    gmtime_r(&moment, &utc);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%H:%M:%S", &utc);
    return text.data();
}

std::optional<std::time_t> timeInIpp(const ipp_uchar_t* date)
{
    // libcups's own reading goes through the local time zone, and is wrong in summer.
    if (date == nullptr || date[2] < 1 || date[2] > 12 || date[3] < 1 || date[3] > 31 || date[4] > 23 ||
        date[5] > 59 || date[6] > 60 || (date[8] != '+' && date[8] != '-'))
        return std::nullopt;
    std::tm shown{};
    shown.tm_year = date[0] * 256 + date[1] - 1900;
    shown.tm_mon = date[2] - 1;
    shown.tm_mday = date[3];
    shown.tm_hour = date[4];
    shown.tm_min = date[5];
    shown.tm_sec = date[6];
    const std::time_t fromUtc = (date[9] * 60 + date[10]) * minute;
    return timegm(&shown) - (date[8] == '+' ? fromUtc : -fromUtc);
}

IppAnswer askForClock(CupsServer& server, const std::string& queue, const std::string& user)
{
    auto request = newQueueRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, queue, user);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
                 "printer-current-time");
    return server.ask(std::move(request), queueResource(queue));
}

std::string holdTrouble(const CupsServer& server, const IppAnswer& clock, std::time_t asked,
                        std::time_t moment)
{
    const std::time_t now = currentTime();
    const auto serversTime = timeOf(clock);
    if (!serversTime)
        return localized("the print server %s does not say what its clock shows", server.name());
    if (*serversTime < asked - mostApart || *serversTime > now + mostApart)
        return localized("the clock of the print server %s differs from this machine's by more than a minute",
                         server.name());
    if (moment - now < nearest)
        return localized("there is too little time left for the print server %s to hold the job",
                         server.name());
    if (moment - now > farthest)
        return localized("the print server %s can hold a job for a day at most", server.name());
    return {};
}

bool isHeldUntil(const ServerJob& job, std::time_t moment)
{
    return job.state == IPP_JSTATE_HELD && job.holdUntil == holdTime(moment);
}

} // namespace quelm
