// Tests of the desktop as a worker of the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/outbox_sending.h"

#include "base/clock.h"
#include "tests/driver/desktop/main_loop.h"
#include "tests/servers/print_listener.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <vector>

namespace quelm {
namespace {

using servers::Manner;
using servers::PrintListener;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::time_t hour = 3600;

class OutboxSendingTest : public testing::Test {
protected:
    OutboxSendingTest()
    {
        // No timer of the user who runs the tests.
        ::setenv("PATH", folder.path().c_str(), 1);
    }

    /// Puts a job in that is due so many seconds from now; its number.
    int put(std::time_t due, const JobTarget& target, const std::string& stream = "the job")
    {
        Outbox outbox(settings);
        OutboxDraft draft;
        draft.target = target;
        draft.title = "letter.ps";
        draft.user = "ann";
        draft.recipients.resize(1);
        draft.due = currentTime() + due;
        const auto entry = outbox.newEntry();
        entry->sink().write(stream);
        return entry->commit(draft, nullptr);
    }
    int put(std::time_t due) { return put(due, FileTarget{folder / "fax.job"}); }

    OutboxJob job(int number) { return Outbox(settings).job(number); }

    void start()
    {
        sending.emplace(settings,
                        OutboxListeners{
                            [this](const OutboxJob& job, const HandoverEnd& end) {
                                ended.emplace_back(job.number);
                                states.push_back(end.state);
                            },
                            [this](const OutboxJob& job) { settled.push_back(job.number); },
                            [this](const std::vector<OutboxJob>& jobs) {
                                ++looks;
                                overdue.clear();
                                for (const auto& one : jobs)
                                    overdue.push_back(one.number);
                            },
                            [this](const std::string& line) { troubles.push_back(line); },
                        },
                        longestWait);
    }
    /// Starts, and waits until the outbox was looked at.
    void startAndLook()
    {
        start();
        ASSERT_TRUE(loopUntil([this] { return looks > 0; }));
    }
    /// Has it look once more.
    void lookAgain()
    {
        const int before = looks;
        sending->wake();
        ASSERT_TRUE(loopUntil([&] { return looks > before; }));
    }

    std::chrono::seconds longestWait{30};
    KeptVariable searchPath{"PATH"};
    TemporaryFolder folder;
    OutboxSettings settings{folder / "outbox"};
    std::vector<int> ended;
    std::vector<OutboxState> states;
    std::vector<int> settled;
    std::vector<int> overdue;
    std::vector<std::string> troubles;
    int looks = 0;
    std::optional<OutboxSending> sending;
};

TEST_F(OutboxSendingTest, WhatIsDueIsSentAtTheStartAndTold)
{
    const int number = put(-1);
    startAndLook();
    EXPECT_THAT(ended, ElementsAre(number));
    EXPECT_THAT(states, ElementsAre(OutboxState::handedOver));
    EXPECT_EQ(contentOf(folder / "fax.job"), "the job");
    EXPECT_THAT(troubles, IsEmpty());
}

TEST_F(OutboxSendingTest, AJobThatIsQueuedIsSentWhenItIsDueAndNotAhead)
{
    startAndLook();
    const int soon = put(2);
    const std::time_t due = job(soon).due;
    sending->wake();
    // Nothing wakes it again: it knows by itself when the job is due.
    ASSERT_TRUE(loopUntil([this] { return !ended.empty(); }));
    EXPECT_THAT(ended, ElementsAre(soon));
    EXPECT_GE(currentTime(), due);
}

TEST_F(OutboxSendingTest, AJobThatAnotherProgramQueuesIsFoundUntold)
{
    longestWait = std::chrono::seconds(1);
    startAndLook();
    const int number = put(-1);
    ASSERT_TRUE(loopUntil([this] { return !ended.empty(); }));
    EXPECT_THAT(ended, ElementsAre(number));
}

TEST_F(OutboxSendingTest, AJobForLaterWaits)
{
    startAndLook();
    const int later = put(hour);
    lookAgain();
    EXPECT_THAT(ended, IsEmpty());
    EXPECT_EQ(job(later).state, OutboxState::waiting);
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
}

TEST_F(OutboxSendingTest, AnOverdueJobAsksAndIsSentOnlyWhenItIsTold)
{
    const int number = put(-2 * hour);
    startAndLook();
    EXPECT_THAT(overdue, ElementsAre(number));
    EXPECT_THAT(ended, IsEmpty());
    sending->send(number);
    ASSERT_TRUE(loopUntil([this] { return overdue.empty(); }));
    EXPECT_THAT(ended, ElementsAre(number));
    EXPECT_EQ(contentOf(folder / "fax.job"), "the job");
}

TEST_F(OutboxSendingTest, AnOverdueJobCanBeCancelled)
{
    const int number = put(-2 * hour);
    startAndLook();
    sending->cancel(number);
    ASSERT_TRUE(loopUntil([this] { return overdue.empty(); }));
    EXPECT_EQ(job(number).state, OutboxState::cancelled);
    EXPECT_THAT(troubles, IsEmpty());
}

TEST_F(OutboxSendingTest, WhatIsImpossibleIsToldAndTheRestGoesOn)
{
    const int number = put(-2 * hour);
    startAndLook();
    Outbox(settings).cancel(number, currentTime());
    sending->send(number);
    ASSERT_TRUE(loopUntil([this] { return !troubles.empty(); }));
    EXPECT_THAT(troubles.front(), HasSubstr(std::to_string(number)));
    put(-1);
    sending->wake();
    EXPECT_TRUE(loopUntil([this] { return !ended.empty(); }));
}

TEST_F(OutboxSendingTest, AFailureIsToldAndTheJobIsNotTriedAgain)
{
    const int number = put(-1, NetworkAddress{"127.0.0.1", 1});
    startAndLook();
    EXPECT_THAT(states, ElementsAre(OutboxState::failed));
    lookAgain();
    EXPECT_EQ(states.size(), 1U);
    EXPECT_EQ(job(number).state, OutboxState::failed);
}

TEST_F(OutboxSendingTest, ASecondOneSendsNothingUntilTheFirstGoes)
{
    startAndLook();
    const int before = looks;
    OutboxSending second(settings,
                         {[this](const OutboxJob& job, const HandoverEnd&) { ended.push_back(-job.number); },
                          {},
                          [this](const std::vector<OutboxJob>&) { looks += 1000; },
                          [this](const std::string& line) { troubles.push_back(line); }});
    const int number = put(-1);
    second.wake();
    lookAgain();
    ASSERT_TRUE(loopUntil([this] { return !ended.empty(); }));
    EXPECT_THAT(ended, ElementsAre(number));
    EXPECT_LT(looks, before + 1000);

    sending.reset();
    const int another = put(-1);
    second.wake();
    ASSERT_TRUE(loopUntil([this] { return ended.size() == 2; }));
    EXPECT_EQ(ended.back(), -another);
    EXPECT_THAT(troubles, IsEmpty());
}

TEST_F(OutboxSendingTest, ItsEndStopsAJobThatDoesNotBeginAndTheJobWaitsOn)
{
    // A fifo that nobody reads: nothing goes out.
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const int number = put(-1, FileTarget{fifo});
    start();
    ASSERT_TRUE(loopUntil([&] {
        g_main_context_wakeup(nullptr);
        return job(number).state == OutboxState::handingOver;
    }));
    EXPECT_FALSE(sending->isHalfOut());
    const auto begin = std::chrono::steady_clock::now();
    sending.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4));
    EXPECT_EQ(job(number).state, OutboxState::waiting);
    loopUntilIdle();
    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(OutboxSendingTest, AJobThatIsHalfOutSaysSoAndIsUncertainWhenItIsStopped)
{
    PrintListener device(Manner::stalls, 1000);
    const int number = put(-1, parseNetworkAddress(device.address()), std::string(8'000'000, ' '));
    start();
    ASSERT_TRUE(loopUntil([this] {
        g_main_context_wakeup(nullptr);
        return sending->isHalfOut();
    }));
    EXPECT_EQ(jobsLeftBehind(settings, sending->isHalfOut()).count, 0U) << "it does not wait on";
    sending.reset();
    EXPECT_EQ(job(number).state, OutboxState::uncertain);
}

TEST_F(OutboxSendingTest, AnOutboxThatCannotBeUsedIsToldOnce)
{
    settings.folder = writeFile(folder / "no folder", "");
    start();
    ASSERT_TRUE(loopUntil([this] { return !troubles.empty(); }));
    EXPECT_THAT(troubles.front(), HasSubstr("no folder"));
    std::filesystem::remove(settings.folder);
    sending->wake();
    ASSERT_TRUE(loopUntil([this] { return looks > 0; }));
    EXPECT_EQ(troubles.size(), 1U);
}

// --- What is left behind -----------------------------------------------------------------------------

TEST_F(OutboxSendingTest, JobsThatNobodyElseSendsAreLeftBehind)
{
    EXPECT_EQ(jobsLeftBehind(settings).count, 0U);
    put(hour);
    const int last = put(2 * hour);
    put(-2 * hour); // asks again, whenever the desktop is opened
    startAndLook();
    const auto left = jobsLeftBehind(settings);
    EXPECT_EQ(left.count, 2U);
    EXPECT_EQ(left.last, job(last).due);
}

TEST_F(OutboxSendingTest, ATimerOrAnotherProgramLeavesNothingBehind)
{
    put(hour);
    const std::string timer = writeFile(folder / "systemctl", "#!/bin/sh\necho active\n");
    std::filesystem::permissions(timer, std::filesystem::perms::all);
    EXPECT_EQ(jobsLeftBehind(settings).count, 0U);
    std::filesystem::remove(timer);
    EXPECT_EQ(jobsLeftBehind(settings).count, 1U);
    EXPECT_EQ(inProcess([&] {
                  const pid_t parent = ::getpid();
                  const auto worker = OutboxWorker::start(settings, WorkerKind::command);
                  return worker && inProcess([&] {
                                       return ::getpid() != parent && jobsLeftBehind(settings).count == 0 ? 0
                                                                                                          : 1;
                                   }) == 0
                             ? 0
                             : 1;
              }),
              0);
}

} // namespace
} // namespace quelm
