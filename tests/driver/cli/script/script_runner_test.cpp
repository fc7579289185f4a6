// Scripts whose steps take their time, with the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_runner.h"

#include "tests/driver/handover/handover_fixture.h"
#include "tests/support/passing_clock.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::HasSubstr;

class ScriptRunnerTest : public HandoverTest {
protected:
    /// The answer to the last of the lines.
    std::string run(const std::string& script)
    {
        std::string answer;
        for (const auto& step : parseScript(script, "script"))
            answer = answerText(runner_.run(step));
        return answer;
    }

    /// A fax at 10:09 to two recipients of one number, about whom a step warns.
    void fillJob()
    {
        add("Ann", "555-1234");
        add("Bob", "555-1234");
        run("choose \"LanFax Send Time\" 1\nchoose \"SendAtHr\" 10\nchoose \"SendAtMin\" 9\n"
            "choose \"SendAtAmPm\" 0\npress \"LanFax OK Button\"\n");
    }

    std::string document() const
    {
        writeFile(folder / "letter.ps", "%!PS\nshowpage\n");
        return inQuotes(folder / "letter.ps");
    }

    const std::string job = folder / "job";

private:
    ScriptRunner runner_{driver(), Pdl::dsc, {folder / "outbox", 30}};
};

TEST_F(ScriptRunnerTest, TheMinuteInWhichAStepBeginsIsAtOnceHoweverLongItTakes)
{
    fillJob();
    const PassingClock clock("2026-11-22T10:09", "2026-11-22T10:10");
    EXPECT_EQ(run("fax " + document() + " " + inQuotes(job)), "ok\n");
    EXPECT_TRUE(clock.hasPassed);
    EXPECT_TRUE(std::filesystem::exists(job));
    EXPECT_FALSE(std::filesystem::exists(folder / "outbox"));
}

TEST_F(ScriptRunnerTest, AMomentThatPassesDuringAStepIsAtOnce)
{
    fillJob();
    const PassingClock clock("2026-11-22T10:08", "2026-11-22T10:10");
    EXPECT_THAT(run("summary " + document()), HasSubstr("\ntime now\n"));
    EXPECT_TRUE(clock.hasPassed);
    fixClock(parseLocalTime("2026-11-22T10:08"));
    EXPECT_EQ(run("fax " + document() + " " + inQuotes(job)), "ok\n");
    EXPECT_TRUE(std::filesystem::exists(job));
}

TEST_F(ScriptRunnerTest, AMomentThatIsStillAheadIsWaitedFor)
{
    fillJob();
    const PassingClock clock("2026-11-22T10:07", "2026-11-22T10:08");
    EXPECT_THAT(run("fax " + document() + " " + inQuotes(job)),
                HasSubstr("waits outbox job 1 until \"2026-11-22T10:09"));
    EXPECT_FALSE(std::filesystem::exists(job));
}

} // namespace
} // namespace quelm
