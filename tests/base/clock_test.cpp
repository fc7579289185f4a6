// The clock: its form on the command line, and fixing it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"

#include "base/error.h"
#include "tests/support/utc.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <string>
#include <tuple>
#include <vector>

namespace {

/// The clock's time, as strftime writes it.
std::string formatted(const char* format)
{
    const std::tm time = quelm::localTime();
    std::array<char, 64> out{};
    std::strftime(out.data(), out.size(), format, &time);
    return out.data();
}

void fixAt(const char* text) { quelm::fixClock(quelm::parseLocalTime(text)); }

std::string problemWith(const std::string& text)
{
    try {
        quelm::parseLocalTime(text);
    } catch (const quelm::UsageError& error) {
        return error.what();
    }
    return "";
}

class Clock : public testing::Test {
protected:
    ~Clock() override
    {
        quelm::releaseClock();
        unsetenv("TZ");
        tzset();
    }

    static void useZone(const char* zone) { setenv("TZ", zone, 1); }
};

constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* newYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* kolkata = "IST-5:30";
constexpr const char* lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";

} // namespace

TEST_F(Clock, SaysWhetherItStandsStill)
{
    EXPECT_FALSE(quelm::isClockFixed());
    fixAt("2026-03-09T14:05");
    EXPECT_TRUE(quelm::isClockFixed());
    quelm::releaseClock();
    EXPECT_FALSE(quelm::isClockFixed());
}

TEST_F(Clock, StandsStillWhereItWasFixed)
{
    fixAt("2024-02-29T23:59");
    EXPECT_EQ(formatted("%Y %m %d %H %M %S"), "2024 02 29 23 59 00");
    EXPECT_EQ(formatted("%Y%m%%02d"), "202402%02d");
}

TEST_F(Clock, KnowsWeekdayAndDayOfTheYear)
{
    fixAt("2024-02-29T08:05");
    EXPECT_EQ(formatted("%u %j"), "4 060");
}

TEST_F(Clock, KeepsATimeThatDaylightSavingLeavesOut)
{
    useZone(berlin);
    fixAt("2024-03-31T02:30");
    EXPECT_EQ(formatted("%H:%M"), "02:30");
}

TEST_F(Clock, RunsWithTheSystemUnlessFixed)
{
    const std::time_t before = std::time(nullptr);
    std::tm read = quelm::localTime();
    const std::time_t middle = std::mktime(&read);
    EXPECT_LE(before, middle);
    EXPECT_LE(middle, std::time(nullptr));
}

TEST_F(Clock, FixedStandsAtThePointInTimeThatItShows)
{
    const std::array<std::tuple<const char*, const char*, const char*>, 9> cases{{
        {kolkata, "2026-03-09T00:10", "2026-03-08T18:40"},
        {berlin, "2026-01-01T00:30", "2025-12-31T23:30"},
        {berlin, "2026-07-01T12:00", "2026-07-01T10:00"},
        {berlin, "2026-03-29T02:30", "2026-03-29T01:30"}, // left out: 03:30
        {berlin, "2026-10-25T02:30", "2026-10-25T00:30"}, // comes twice: the first
        {newYork, "2026-03-08T02:00", "2026-03-08T07:00"},
        {newYork, "2026-11-01T01:59", "2026-11-01T05:59"},
        {lordHowe, "2026-10-04T02:15", "2026-10-03T15:45"}, // left out: 02:45
        {lordHowe, "2026-04-05T01:45", "2026-04-04T14:45"}, // comes twice: the first
    }};
    for (const auto& [zone, shown, expected] : cases) {
        useZone(zone);
        fixAt(shown);
        EXPECT_EQ(quelm::currentTime(), utc(expected)) << zone << " " << shown;
        EXPECT_EQ(formatted("%Y-%m-%dT%H:%M"), shown);
    }
}

TEST_F(Clock, RunsAsAPointInTimeUnlessFixed)
{
    const std::time_t before = std::time(nullptr);
    const std::time_t read = quelm::currentTime();
    EXPECT_LE(before, read);
    EXPECT_LE(read, std::time(nullptr));
}

TEST_F(Clock, ATimeCanComeOnceTwiceOrNever)
{
    using Moments = std::vector<std::time_t>;
    useZone(berlin);
    const auto momentsOf = [](const char* text) { return quelm::momentsOf(quelm::parseLocalTime(text)); };
    EXPECT_EQ(momentsOf("2026-10-25T01:59"), Moments{utc("2026-10-24T23:59")});
    EXPECT_EQ(momentsOf("2026-10-25T02:00"), (Moments{utc("2026-10-25T00:00"), utc("2026-10-25T01:00")}));
    EXPECT_EQ(momentsOf("2026-10-25T03:00"), Moments{utc("2026-10-25T02:00")});
    EXPECT_EQ(momentsOf("2026-03-29T01:59"), Moments{utc("2026-03-29T00:59")});
    EXPECT_EQ(momentsOf("2026-03-29T02:00"), Moments{});
    EXPECT_EQ(momentsOf("2026-03-29T03:00"), Moments{utc("2026-03-29T01:00")});
    auto claimed = quelm::parseLocalTime("2026-01-09T12:00");
    claimed.tm_isdst = 1;
    EXPECT_EQ(quelm::momentsOf(claimed), Moments{utc("2026-01-09T11:00")});
    useZone("Not/There");
    EXPECT_EQ(momentsOf("2026-01-09T12:00"), Moments{utc("2026-01-09T12:00")});
}

TEST(ParseLocalTime, TakesEveryDayThatThereIs)
{
    EXPECT_EQ(problemWith("1970-01-01T00:00"), "");
    EXPECT_EQ(problemWith("9999-12-31T23:59"), "");
    EXPECT_EQ(problemWith("2000-02-29T12:00"), "");
}

TEST(ParseLocalTime, SaysWhatIsWrong)
{
    const std::array<std::pair<const char*, const char*>, 12> cases{{
        {"", "write it as YYYY-MM-DDTHH:MM"},
        {"2024-03-09", "write it as YYYY-MM-DDTHH:MM"},
        {"2024-03-09 14:05", "write it as YYYY-MM-DDTHH:MM"},
        {"2024-03-09T14:05:00", "write it as YYYY-MM-DDTHH:MM"},
        {"2024-3-009T14:05", "write it as YYYY-MM-DDTHH:MM"},
        {"+024-03-09T14:05", "write it as YYYY-MM-DDTHH:MM"},
        {"1969-12-31T23:59", "the year must lie between 1970 and 9999"},
        {"2024-13-09T14:05", "the month must lie between 01 and 12"},
        {"2023-02-29T14:05", "that month has the days 01 to 28"},
        {"1900-04-31T14:05", "the year must lie between 1970 and 9999"},
        {"2024-04-31T14:05", "that month has the days 01 to 30"},
        {"2024-03-09T14:60", "the minute must lie between 00 and 59"},
    }};
    for (const auto& [text, problem] : cases) {
        const std::string message = problemWith(text);
        EXPECT_NE(message.find(problem), std::string::npos) << text << ": " << message;
        EXPECT_EQ(message.find("\"" + std::string(text) + "\""), 0U) << message;
    }
    EXPECT_NE(problemWith("2024-03-09T24:00").find("the hour"), std::string::npos);
    EXPECT_NE(problemWith("2024-03-00T12:00").find("01 to 31"), std::string::npos);
    EXPECT_NE(problemWith("2100-02-29T12:00").find("01 to 28"), std::string::npos);
}
