// Tests of the moment that a time of day means, in several time zones and across changes of summer time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/send_time.h"

#include "base/clock.h"
#include "tests/driver/handover/handover_fixture.h"
#include "tests/support/kept_variable.h"
#include "tests/support/utc.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace quelm {
namespace {

// As the system's time zone files say it, without needing them.
constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* newYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* kolkata = "IST-5:30";
constexpr const char* kathmandu = "<+0545>-5:45";
constexpr const char* lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";

std::string shownInUtc(std::optional<std::time_t> moment)
{
    if (!moment)
        return "at once";
    std::tm time{};
    gmtime_r(&*moment, &time);
    std::string text(20, '\0');
    text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M", &time));
    return text;
}

constexpr bool am = false;
constexpr bool pm = true;

/// A time chosen at a moment, and the moment that it means; both moments in UTC.
struct Row {
    const char* now;
    ClockTime time;
    const char* expected;
};

class SendTime : public testing::Test {
protected:
    ~SendTime() override { releaseClock(); }

    static void useZone(const char* zone) { setenv("TZ", zone, 1); }

    static void expect(const char* zone, const std::vector<Row>& rows)
    {
        useZone(zone);
        for (const auto& [now, time, expected] : rows)
            EXPECT_EQ(shownInUtc(nextMoment(time, utc(now))), expected)
                << zone << ": " << time.hour << ":" << time.minute << (time.isAfternoon ? " PM" : " AM")
                << " at " << now << " UTC";
    }

private:
    KeptVariable zone_{"TZ"};
};

TEST_F(SendTime, IsOnThe12HourClock)
{
    expect("UTC0", {
                       {"2026-11-22T10:00", {4, 5, pm}, "2026-11-22T16:05"},
                       {"2026-11-22T10:00", {12, 0, pm}, "2026-11-22T12:00"},
                       {"2026-11-22T10:00", {12, 0, am}, "2026-11-23T00:00"},
                       {"2026-11-22T00:10", {12, 30, am}, "2026-11-22T00:30"},
                       {"2026-11-22T00:10", {12, 30, pm}, "2026-11-22T12:30"},
                       {"2026-11-22T00:10", {11, 59, pm}, "2026-11-22T23:59"},
                       {"2026-11-22T00:10", {1, 0, am}, "2026-11-22T01:00"},
                   });
}

TEST_F(SendTime, TheCurrentMinuteMeansAtOnceWhateverItsSecond)
{
    for (const char* zone : {"UTC0", kolkata, kathmandu, berlin}) {
        useZone(zone);
        std::tm chosen{};
        const std::time_t minute = utc("2026-11-22T10:00");
        for (const int second : {0, 1, 30, 59}) {
            chosen = localTimeAt(minute + second);
            const ClockTime time{chosen.tm_hour % 12 == 0 ? 12 : chosen.tm_hour % 12, chosen.tm_min,
                                 chosen.tm_hour >= 12};
            EXPECT_EQ(nextMoment(time, minute + second), std::nullopt) << zone;
            EXPECT_EQ(nextMoment(time, minute - 1), minute) << "a second before";
            EXPECT_EQ(nextMoment(time, minute + 60), minute + 24 * 3600) << "a minute past";
        }
    }
}

TEST_F(SendTime, APastTimeIsTomorrowAlsoAtTheEndOfMonthsAndYears)
{
    expect("UTC0", {
                       {"2026-11-30T16:06", {4, 5, pm}, "2026-12-01T16:05"},
                       {"2026-12-31T23:59", {11, 58, pm}, "2027-01-01T23:58"},
                       {"2026-12-31T23:59", {12, 0, am}, "2027-01-01T00:00"},
                       {"2028-02-28T12:00", {11, 0, am}, "2028-02-29T11:00"},
                       {"2026-02-28T12:00", {11, 0, am}, "2026-03-01T11:00"},
                   });
}

TEST_F(SendTime, IsLocalWhereTheHourIsNoWholeOne)
{
    expect(kolkata, {
                        {"2026-11-22T10:34", {4, 5, pm}, "2026-11-22T10:35"},
                        {"2026-11-22T10:35", {4, 5, pm}, "at once"},
                        {"2026-11-22T10:36", {4, 5, pm}, "2026-11-23T10:35"},
                        {"2026-11-22T18:29", {12, 0, am}, "2026-11-22T18:30"},
                        {"2026-11-22T18:31", {12, 0, am}, "2026-11-23T18:30"},
                    });
    expect(kathmandu, {
                          {"2026-11-22T10:19", {4, 5, pm}, "2026-11-22T10:20"},
                          {"2026-11-22T10:20", {4, 5, pm}, "at once"},
                          {"2026-12-31T18:14", {12, 0, am}, "2026-12-31T18:15"},
                      });
}

TEST_F(SendTime, ATimeThatSummerTimeLeavesOutIsAsMuchLater)
{
    // In the night of 29 March the clock goes from 01:59 to 03:00 at 01:00 UTC.
    expect(berlin, {
                       {"2026-03-28T12:00", {2, 30, am}, "2026-03-29T01:30"},
                       {"2026-03-29T00:59", {2, 30, am}, "2026-03-29T01:30"},
                       {"2026-03-29T01:00", {2, 30, am}, "2026-03-30T00:30"}, // the clock shows 03:00
                       {"2026-03-29T01:30", {2, 30, am}, "2026-03-30T00:30"},
                       {"2026-03-29T00:30", {3, 0, am}, "2026-03-29T01:00"},
                       {"2026-03-28T22:00", {8, 0, am}, "2026-03-29T06:00"},
                       {"2026-03-28T22:00", {1, 59, am}, "2026-03-29T00:59"},
                   });
    expect(newYork, {
                        {"2026-03-08T06:00", {2, 0, am}, "2026-03-08T07:00"},
                        {"2026-03-08T07:00", {2, 0, am}, "2026-03-09T06:00"},
                        {"2026-03-08T06:00", {4, 5, pm}, "2026-03-08T20:05"},
                    });
    // By half an hour, from 02:00 to 02:30.
    expect(lordHowe, {
                         {"2026-10-03T15:00", {2, 15, am}, "2026-10-03T15:45"},
                         {"2026-10-03T15:00", {2, 30, am}, "2026-10-03T15:30"},
                         {"2026-10-03T15:30", {2, 15, am}, "2026-10-04T15:15"},
                     });
}

TEST_F(SendTime, OfATimeThatComesTwiceTheNextIsTaken)
{
    // In the night of 25 October the clock goes from 02:59 back to 02:00 at 01:00 UTC.
    expect(berlin, {
                       {"2026-10-24T20:00", {2, 30, am}, "2026-10-25T00:30"},
                       {"2026-10-25T00:29", {2, 30, am}, "2026-10-25T00:30"},
                       {"2026-10-25T00:30", {2, 30, am}, "at once"},
                       {"2026-10-25T00:31", {2, 30, am}, "2026-10-25T01:30"},
                       {"2026-10-25T01:10", {2, 30, am}, "2026-10-25T01:30"},
                       {"2026-10-25T01:30", {2, 30, am}, "at once"},
                       {"2026-10-25T01:31", {2, 30, am}, "2026-10-26T01:30"},
                       {"2026-10-25T00:30", {3, 0, am}, "2026-10-25T02:00"},
                       {"2026-10-24T20:00", {8, 0, am}, "2026-10-25T07:00"},
                   });
    expect(newYork, {
                        {"2026-11-01T05:00", {1, 30, am}, "2026-11-01T05:30"},
                        {"2026-11-01T05:45", {1, 30, am}, "2026-11-01T06:30"},
                        {"2026-11-01T06:45", {1, 30, am}, "2026-11-02T06:30"},
                    });
    // By half an hour, from 02:00 back to 01:30.
    expect(lordHowe, {
                         {"2026-04-04T14:00", {1, 45, am}, "2026-04-04T14:45"},
                         {"2026-04-04T14:50", {1, 45, am}, "2026-04-04T15:15"},
                         {"2026-04-04T15:20", {1, 45, am}, "2026-04-05T15:15"},
                     });
}

TEST_F(SendTime, IsSaidForPeopleInLocalTime)
{
    useZone(kolkata);
    const std::time_t now = utc("2026-12-31T10:00");
    EXPECT_EQ(shownMoment(utc("2026-12-31T10:35"), now), "today at 16:05");
    EXPECT_EQ(shownMoment(utc("2026-12-31T18:29"), now), "today at 23:59");
    EXPECT_EQ(shownMoment(utc("2026-12-31T18:30"), now), "tomorrow at 00:00");
    EXPECT_EQ(shownMoment(utc("2027-01-01T18:29"), now), "tomorrow at 23:59");
    EXPECT_EQ(shownMoment(utc("2027-01-01T18:30"), now), "on 2027-01-02 at 00:00");
    EXPECT_EQ(shownMoment(utc("2026-12-30T10:35"), now), "on 2026-12-30 at 16:05");
    EXPECT_EQ(shownMoment(utc("2027-12-31T10:35"), now), "on 2027-12-31 at 16:05");
    useZone(berlin);
    EXPECT_EQ(shownMoment(utc("2026-03-29T01:30"), utc("2026-03-28T22:59")), "tomorrow at 03:30");
    EXPECT_EQ(shownMoment(utc("2026-03-29T01:30"), utc("2026-03-28T23:00")), "today at 03:30");
}

TEST(StillAhead, IsAMomentThatHasNotPassed)
{
    const std::time_t now = utc("2026-11-22T10:00");
    EXPECT_EQ(stillAhead(now + 1, now), now + 1);
    EXPECT_EQ(stillAhead(now, now), std::nullopt);
    EXPECT_EQ(stillAhead(now - 1, now), std::nullopt);
    EXPECT_EQ(stillAhead(std::nullopt, now), std::nullopt);
}

class ChosenMoment : public HandoverTest {
protected:
    ChosenMoment() { setenv("TZ", kolkata, 1); }

    void sendAt(int hour, int minute, bool isAfternoon)
    {
        driver().choose("LanFax Send Time", 1);
        driver().choose("SendAtHr", hour);
        driver().choose("SendAtMin", minute);
        driver().choose("SendAtAmPm", isAfternoon ? 1 : 0);
    }

    const std::time_t now = utc("2026-11-22T10:00"); // 15:30 there

private:
    KeptVariable zone_{"TZ"};
};

TEST_F(ChosenMoment, IsNoneForAFaxThatGoesOutAtOnce)
{
    EXPECT_EQ(chosenMoment(driver(), now), std::nullopt);
    sendAt(4, 5, pm);
    driver().choose("LanFax Send Time", 0);
    EXPECT_EQ(chosenMoment(driver(), now), std::nullopt) << "the time stays in its fields";
}

TEST_F(ChosenMoment, IsWhatTheDialogsFieldsShow)
{
    sendAt(4, 5, pm);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), now)), "2026-11-22T10:35");
    sendAt(3, 30, pm);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), now)), "at once");
    sendAt(3, 29, pm);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), now)), "2026-11-23T09:59");
    sendAt(12, 0, am);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), now)), "2026-11-22T18:30");
    sendAt(12, 0, pm);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), now)), "2026-11-23T06:30");
}

TEST_F(ChosenMoment, GoesByAClockThatStandsStill)
{
    fixClock(parseLocalTime("2026-12-31T23:59"));
    sendAt(12, 1, am);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), currentTime())), "2026-12-31T18:31");
    sendAt(11, 59, pm);
    EXPECT_EQ(shownInUtc(chosenMoment(driver(), currentTime())), "at once");
    releaseClock();
}

} // namespace
} // namespace quelm
