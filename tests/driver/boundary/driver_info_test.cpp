// What the component is told about the driver.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/driver_info.h"

#include "base/clock.h"
#include "host/calls.h"
#include "tests/support/test_dialogs.h"

#include <array>
#include <cstdlib>
#include <string>

namespace {

class DriverInfoTest : public HostTest {};

TEST_F(DriverInfoTest, NamesTheInstallationAndTheUser)
{
    EXPECT_STREQ(pDriverGlobals->getExecutableLocation(), "/opt/quelm");
    EXPECT_STREQ(pDriverGlobals->getCurrentUserName(), "ann");
}

TEST_F(DriverInfoTest, TheTextsStayWhereTheyAre)
{
    EXPECT_EQ(pDriverGlobals->getExecutableLocation(), pDriverGlobals->getExecutableLocation());
    EXPECT_EQ(pDriverGlobals->getCurrentUserName(), pDriverGlobals->getCurrentUserName());
}

TEST_F(DriverInfoTest, WithoutATranslationTheTextItselfIsCopied)
{
    host::TextBuffer out;
    EXPECT_FALSE(host::translate("No catalogue knows this text.", out.text));
    EXPECT_STREQ(out.c_str(), "No catalogue knows this text.");
}

std::string formatted(const char* format, bool readClock, std::size_t size = 64)
{
    std::array<char, 64> out;
    out.fill('#');
    host::formatTime(out.data(), size, format, readClock);
    return out.data();
}

void fixAt(const char* text) { quelm::fixClock(quelm::parseLocalTime(text)); }

class ClockTest : public HostTest {
protected:
    ~ClockTest() override { quelm::releaseClock(); }
};

TEST_F(ClockTest, FormatsTheLastReadingUntilItIsReadAnew)
{
    fixAt("2024-12-31T23:59");
    EXPECT_EQ(formatted("%Y", true), "2024");
    fixAt("2025-01-01T00:00");
    EXPECT_EQ(formatted("%Y", true), "2025");
    EXPECT_EQ(formatted("%m", false), "01");
}

TEST_F(ClockTest, LastReadingOutlivesAClockThatRunsOn)
{
    // A clock half a day away from the fixed one: had it been read again, the hour would differ.
    setenv("TZ", "AAA0", 1);
    EXPECT_NE(formatted("%H", true), "");
    const std::string hour = formatted("%H", false);
    setenv("TZ", "BBB-12", 1);
    EXPECT_EQ(formatted("%H", false), hour);
    EXPECT_NE(formatted("%H", true), hour);
    unsetenv("TZ");
    tzset();
}

TEST_F(ClockTest, TakesAReadingWhenThereIsNoneYet)
{
    const int year = std::stoi(formatted("%Y", false));
    EXPECT_GE(year, 2020);
}

TEST_F(ClockTest, LeavesAnEmptyTextWhenTheTimeDoesNotFit)
{
    fixAt("2024-02-29T23:59");
    EXPECT_EQ(formatted("%Y", true, 4), "");
    EXPECT_EQ(formatted("%Y", true, 5), "2024");
    EXPECT_EQ(formatted("", true), "");
}

TEST_F(ClockTest, WritesNothingWithoutABuffer)
{
    char untouched = 'x';
    GetCurrentTimeWithFormat(&untouched, 0, host::in("%Y"), 1);
    GetCurrentTimeWithFormat(&untouched, -1, host::in("%Y"), 1);
    GetCurrentTimeWithFormat(nullptr, 10, host::in("%Y"), 1);
    EXPECT_EQ(untouched, 'x');
    GetCurrentTimeWithFormat(&untouched, 1, nullptr, 1);
    EXPECT_EQ(untouched, '\0');
}

TEST(DriversInTurn, ADriverBeginsWithoutTheReadingOfTheOneBefore)
{
    {
        const quelm::HostState first("/opt/quelm", "ann");
        fixAt("2024-12-31T23:59");
        EXPECT_EQ(formatted("%Y", true), "2024");
    }
    const quelm::HostState second("/opt/quelm", "ann");
    fixAt("2025-01-01T00:00");
    EXPECT_EQ(formatted("%Y", false), "2025");
    quelm::releaseClock();
}

TEST(DriverInfoWithoutADriver, FormatsANewReading)
{
    fixAt("2024-12-31T23:59");
    EXPECT_EQ(formatted("%Y", false), "2024");
    quelm::releaseClock();
}

TEST(DriverInfoWithoutADriver, IsEmptyAndNotNull)
{
    GlobalDriverInfo info;
    EXPECT_STREQ(info.getExecutableLocation(), "");
    EXPECT_STREQ(info.getCurrentUserName(), "");
}

} // namespace
