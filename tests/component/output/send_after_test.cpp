// The delayed-send line, composed from the chosen time and the machine's clock.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/component_test.h"
#include "tests/support/recording_writer.h"

#include <cstdlib>
#include <ctime>
#include <optional>

namespace {

/// The moment that the machine's clock stands at, when a test stopped it.
std::optional<std::time_t> stoppedClock;

} // namespace

/// In this program the machine's clock can be stopped.
extern "C" std::time_t time(std::time_t* out) noexcept
{
    std::timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const std::time_t result = stoppedClock.value_or(now.tv_sec);
    if (out != nullptr)
        *out = result;
    return result;
}

class SendAfterTest : public StartedComponentTest {
protected:
    ~SendAfterTest() override { stoppedClock.reset(); }

    /// Stops the machine's clock at a local time.
    static void stopClockAt(int year, int month, int day, int hour, int minute)
    {
        std::tm moment = fake::localTime(year, month, day, hour, minute);
        moment.tm_isdst = -1;
        stoppedClock = std::mktime(&moment);
    }

    void choose(int hour, int minute, bool pm)
    {
        host.featureValues = {{"SendAtHr", hour}, {"SendAtMin", minute}, {"SendAtAmPm", pm ? 1 : 0}};
    }

    std::string compose(std::string out = "")
    {
        fake::RecordingWriter writer;
        job().serializeSendAfterOption(&writer, out);
        EXPECT_TRUE(writer.writes.empty());
        return out;
    }

    static std::string line(const std::string& moment)
    {
        return "%%OID_ATT_JOB_FAX_AFTER \"" + moment + "\";\r\n";
    }
};

struct ChosenTime {
    const char* name;
    int hour;
    int minute;
    bool pm;
    const char* dayAndTime; ///< as sent, with the clock at the 15th, 14:30
};

class ChosenTimeTest : public SendAfterTest, public testing::WithParamInterface<ChosenTime> {};

TEST_P(ChosenTimeTest, IsComposedAs)
{
    stopClockAt(2024, 3, 15, 14, 30);
    choose(GetParam().hour, GetParam().minute, GetParam().pm);
    EXPECT_EQ(compose(), line(std::string("202403") + GetParam().dayAndTime));
}

INSTANTIATE_TEST_SUITE_P(
    Every, ChosenTimeTest,
    testing::Values(ChosenTime{"LaterToday", 9, 30, true, "15213000"},
                    ChosenTime{"TheMinuteOfNowIsToday", 2, 30, true, "15143000"},
                    ChosenTime{"TheMinuteBeforeIsTomorrow", 2, 29, true, "16142900"},
                    ChosenTime{"TheMinuteAfterIsToday", 2, 31, true, "15143100"},
                    ChosenTime{"AnEarlierHourIsTomorrow", 1, 59, true, "16135900"},
                    ChosenTime{"AnEarlierHourWithALaterMinuteIsTomorrow", 1, 31, true, "16133100"},
                    ChosenTime{"ALaterHourWithAnEarlierMinuteIsToday", 3, 0, true, "15150000"},
                    ChosenTime{"MorningIsTomorrow", 9, 5, false, "16090500"},
                    ChosenTime{"TwelveAmStaysTwelve", 12, 0, false, "16120000"},
                    ChosenTime{"TwelvePmBecomesTwentyFour", 12, 0, true, "15240000"},
                    ChosenTime{"ElevenPm", 11, 59, true, "15235900"},
                    ChosenTime{"OneAm", 1, 1, false, "16010100"}),
    [](const auto& test) { return test.param.name; });

TEST_F(SendAfterTest, TomorrowIsNotCarriedIntoTheNextMonth)
{
    stopClockAt(2024, 3, 31, 14, 30);
    choose(9, 0, false);
    EXPECT_EQ(compose(), line("20240332090000"));
}

TEST_F(SendAfterTest, TheLastDayOfFebruaryIsFollowedByTheThirtieth)
{
    stopClockAt(2024, 2, 29, 14, 30);
    choose(9, 0, false);
    EXPECT_EQ(compose(), line("20240330090000"))
        << "year and month come from the host's clock, which is in March";
}

TEST_F(SendAfterTest, OnlyTheValueOneMeansPm)
{
    stopClockAt(2024, 3, 15, 0, 30);
    choose(9, 0, false);
    host.featureValues["SendAtAmPm"] = 2;
    EXPECT_EQ(compose(), line("20240315090000"));
}

TEST_F(SendAfterTest, AsksTheHostForYearAndMonthWithANewReading)
{
    stopClockAt(2024, 3, 5, 14, 30);
    choose(9, 30, true);
    compose();
    EXPECT_EQ(host.journal.calls(),
              lines({R"(feature "SendAtHr" -> 9)", R"(feature "SendAtMin" -> 30)",
                     R"(feature "SendAtAmPm" -> 1)", R"(time "%Y%m05213000" size 512 flag 1)"}));
}

TEST_F(SendAfterTest, IsAppendedToWhatStandsThere)
{
    stopClockAt(2024, 3, 15, 14, 30);
    choose(9, 30, true);
    EXPECT_EQ(compose("before"), "before" + line("20240315213000"));
}

TEST_F(SendAfterTest, BearsThePrefixOfTheMode)
{
    stopClockAt(2024, 3, 15, 14, 30);
    choose(9, 30, true);
    job().attributePrefix = "@PJL COMMENT ";
    EXPECT_EQ(compose(), "@PJL COMMENT OID_ATT_JOB_FAX_AFTER \"20240315213000\";\r\n");
}

TEST_F(SendAfterTest, NeedsNoWriter)
{
    stopClockAt(2024, 3, 15, 14, 30);
    choose(9, 30, true);
    std::string out;
    job().serializeSendAfterOption(nullptr, out);
    EXPECT_EQ(out, line("20240315213000"));
}

TEST_F(SendAfterTest, TheTimeThatItIsNowIsTodayByTheRunningClock)
{
    for (;;) {
        const std::time_t before = std::time(nullptr);
        const std::tm now = *std::localtime(&before);
        // The spin box cannot say an hour ahead of 1; an hour of 12 to 23 is that of the afternoon.
        const bool pm = now.tm_hour > 12;
        choose(pm ? now.tm_hour - 12 : now.tm_hour, now.tm_min, pm);
        host.clock = {now};
        const std::string composed = compose();
        const std::time_t after = std::time(nullptr);
        if (before / 60 != after / 60)
            continue; // a minute passed in between
        char expected[32];
        std::strftime(expected, sizeof expected, "%Y%m%d%H%M00", &now);
        EXPECT_EQ(composed, line(expected));
        return;
    }
}
