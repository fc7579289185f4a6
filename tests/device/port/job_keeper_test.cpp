// Jobs that are whole become durable, several at once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/job_keeper.h"

#include "base/error.h"
#include "device/jobs/device_steps.h"
#include "tests/device/port/sample_jobs.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string_view>

namespace quelm::device {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class JobKeeperTest : public testing::Test {
protected:
    JobKeeperTest() : folder(files / "state"), log(folder)
    {
        settings.now = [] { return Moment{std::chrono::milliseconds{1}}; };
        settings.decided = [this](const Verdict& verdict) {
            const std::lock_guard lock(mutex);
            verdicts.push_back(verdict);
        };
    }

    std::unique_ptr<IncomingJob> job(const std::string& bytes) const
    {
        auto job = std::make_unique<IncomingJob>(folder.incoming(), 1'000'000);
        job->take(bytes);
        return job;
    }
    /// All jobs are handed over at once; the verdicts are there when this returns.
    void keep(const std::vector<std::string>& jobs)
    {
        JobKeeper keeper(log, settings);
        for (std::size_t ticket = 0; ticket < jobs.size(); ++ticket)
            keeper.keep(ticket, job(jobs[ticket]), "127.0.0.1");
    }

    TemporaryFolder files;
    StateFolder folder;
    DeviceLog log;
    JobKeeperSettings settings;
    std::mutex mutex;
    std::vector<Verdict> verdicts;
};

TEST_F(JobKeeperTest, ItsEndWaitsForWhatWasHandedOver)
{
    keep(std::vector<std::string>(20, test::dscJob()));
    EXPECT_THAT(verdicts, SizeIs(20));
    std::vector<std::uint64_t> tickets;
    for (const auto& verdict : verdicts) {
        EXPECT_TRUE(verdict.isKept);
        EXPECT_EQ(contentOf(folder.jobFile(verdict.job)), test::dscJob());
        tickets.push_back(verdict.ticket);
    }
    std::ranges::sort(tickets);
    for (std::size_t i = 0; i < tickets.size(); ++i)
        EXPECT_EQ(tickets[i], i);
    EXPECT_TRUE(std::filesystem::is_empty(folder.incoming()));
}

TEST_F(JobKeeperTest, ThereAreNeverMoreWaitingThanAllowed)
{
    settings.mostWaitingJobs = 7;
    // Another that is counted meanwhile would be one too many.
    std::mutex counting;
    std::condition_variable changed;
    int entering = 0;
    int most = 0;
    setDeviceStepHook([&](const char* step) {
        std::unique_lock lock(counting);
        if (std::string_view(step) == "make a file durable") {
            most = std::max(most, ++entering);
            changed.notify_all();
            changed.wait_for(lock, std::chrono::milliseconds(5), [&] { return most > 1; });
        } else if (std::string_view(step) == "commit") {
            --entering;
        }
    });
    keep(std::vector<std::string>(20, test::dscJob()));
    setDeviceStepHook({});
    EXPECT_EQ(most, 1);
    EXPECT_EQ(log.load().waitingJobs, 7);
    EXPECT_EQ(std::ranges::count_if(verdicts, &Verdict::isKept), 7);
}

TEST_F(JobKeeperTest, ARefusedJobIsRememberedHoweverManyWait)
{
    settings.mostWaitingJobs = 0;
    keep({test::dscJob(), "%!PS-Adobe-3.0\n%%OID_ATT_FAX_COVER_SHEET PERHAPS;\r\n%%EndComments\n%%EOF\n"});
    std::ranges::sort(verdicts, {}, &Verdict::ticket);
    EXPECT_EQ(verdicts[0].job, 0);
    EXPECT_THAT(verdicts[0].line, HasSubstr("not kept: 0 jobs are waiting"));
    EXPECT_EQ(verdicts[1].job, 1);
    EXPECT_FALSE(verdicts[1].isKept);
    EXPECT_EQ(log.job(1)->state, JobState::refused);
}

TEST_F(JobKeeperTest, ARefusedJobIsToldOfWithItsLineAndHowManyMoreThereAre)
{
    const std::string wrong = "%%OID_ATT_FAX_RESOLUTION 9;\r\n";
    const std::string right = "%%OID_ATT_FAX_RESOLUTION 0;\r\n";
    std::string once = test::dscJob();
    once.replace(once.find(right), right.size(), wrong);
    std::string twice = once;
    twice.replace(twice.find("COVER_SHEET FALSE"), 17, "COVER_SHEET MAYBE");
    std::string early = test::dscJob();
    early.resize(early.size() - 20);
    keep({once, twice, early});
    std::ranges::sort(verdicts, {}, &Verdict::ticket);
    const auto begin = [](const Verdict& verdict) {
        return "job " + std::to_string(verdict.job) + ": refused: ";
    };
    EXPECT_THAT(verdicts[0].line,
                AllOf(StartsWith(begin(verdicts[0]) + "line 6: "), Not(HasSubstr("more)"))));
    EXPECT_THAT(verdicts[1].line,
                AllOf(StartsWith(begin(verdicts[1]) + "line 3: "), EndsWith(" (and 1 more)")));
    EXPECT_THAT(verdicts[2].line, AllOf(StartsWith(begin(verdicts[2])), Not(HasSubstr("line 0"))));
}

TEST_F(JobKeeperTest, AFailureIsAVerdict)
{
    setDeviceStepHook([](const char*) { throw Error("there is no\nroom"); });
    keep({test::dscJob()});
    setDeviceStepHook({});
    ASSERT_THAT(verdicts, SizeIs(1));
    EXPECT_FALSE(verdicts[0].isKept);
    EXPECT_EQ(verdicts[0].job, 0);
    EXPECT_EQ(verdicts[0].line, "job from 127.0.0.1: not kept: there is no room");
    EXPECT_THAT(log.jobs(0, 10), IsEmpty());
}

} // namespace
} // namespace quelm::device
