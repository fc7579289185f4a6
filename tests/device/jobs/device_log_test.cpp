// Tests of what the device remembers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/device_log.h"

#include "base/sqlite/sqlite.h"
#include "tests/device/jobs/state_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Counts the steps that SQLite takes for each statement, in databases that are opened from now on.
class StatementWork {
public:
    StatementWork()
    {
        forget();
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&StatementWork::watch));
    }
    ~StatementWork() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&StatementWork::watch)); }
    StatementWork(const StatementWork&) = delete;
    StatementWork& operator=(const StatementWork&) = delete;

    static void forget()
    {
        mostSteps = 0;
        mostText.clear();
    }
    static int most() { return mostSteps; }
    /// The statement that took the most.
    static const std::string& mostWork() { return mostText; }

private:
    static int watch(sqlite3* database, char**, const void*)
    {
        return sqlite3_trace_v2(database, SQLITE_TRACE_PROFILE, &StatementWork::note, nullptr);
    }
    static int note(unsigned, void*, void* ended, void*)
    {
        auto* const statement = static_cast<sqlite3_stmt*>(ended);
        const int steps = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_VM_STEP, 1);
        if (steps > mostSteps) {
            mostSteps = steps;
            mostText = sqlite3_sql(statement);
        }
        return 0;
    }

    static inline int mostSteps = 0;
    static inline std::string mostText;
};

class DeviceLogTest : public StateTest {
protected:
    DeviceLogTest() { open(); }

    std::vector<int> numbersOf(const std::vector<JobRecord>& jobs)
    {
        std::vector<int> numbers;
        for (const JobRecord& job : jobs)
            numbers.push_back(job.number);
        return numbers;
    }
};

TEST_F(DeviceLogTest, KeepsAJobAsItWasRead)
{
    ReceivedJob reading = faxFor({"9,5550104477", "555/010\xFF"});
    reading.destinations[1].number = "555/0108812";
    reading.destinations[0].mailbox = "12";
    reading.form = JobForm::pjl;
    reading.title = std::string("A\0letter\xFF", 9);
    reading.coverSheet = true;
    reading.confirmationSheet = true;
    reading.resolution = Resolution::superfine;
    reading.speed = Speed::forced4800;
    reading.size = 5'000'000'000;
    reading.postScriptBegin = 100;
    reading.postScriptEnd = 4'999'999'999;
    reading.objections = {{7, "an attribute that the device does not know"}, {9, "\xCE\xB1"}};
    EXPECT_EQ(add(reading, "the job"), 1);
    open();

    const JobRecord job = *log->job(1);
    EXPECT_EQ(job.number, 1);
    EXPECT_EQ(job.state, JobState::received);
    EXPECT_EQ(job.receivedAt, noon);
    EXPECT_EQ(job.from, "127.0.0.1");
    EXPECT_EQ(job.reading.form, JobForm::pjl);
    EXPECT_EQ(job.reading.title, reading.title);
    EXPECT_TRUE(job.reading.isFax && job.reading.coverSheet && job.reading.confirmationSheet);
    EXPECT_EQ(job.reading.resolution, Resolution::superfine);
    EXPECT_EQ(job.reading.speed, Speed::forced4800);
    EXPECT_EQ(job.reading.size, 5'000'000'000U);
    EXPECT_EQ(job.reading.postScriptBegin, 100U);
    EXPECT_EQ(job.reading.postScriptEnd, 4'999'999'999U);
    ASSERT_EQ(job.recipients.size(), 2U);
    EXPECT_EQ(job.recipients[0].position, 1);
    EXPECT_EQ(job.recipients[0].number, "9,5550104477");
    EXPECT_EQ(job.recipients[0].mailbox, "12");
    EXPECT_EQ(job.recipients[1].keys, "5550108812");
    EXPECT_EQ(job.recipients[1].state, RecipientState::waiting);
    EXPECT_EQ(job.reading.destinations[1].line, 4U);
    ASSERT_EQ(job.reading.objections.size(), 2U);
    EXPECT_EQ(job.reading.objections[0].line, 7U);
    EXPECT_EQ(job.reading.objections[1].text, "\xCE\xB1");
    EXPECT_FALSE(job.hasReport);
    EXPECT_EQ(contentOf(folder->jobFile(1)), "the job");
    EXPECT_THAT(files(), ElementsAre("jobs/1/job"));
    EXPECT_FALSE(log->job(2));
}

TEST_F(DeviceLogTest, ARefusedJobIsRememberedWithoutItsBytesAndItsCard)
{
    ReceivedJob reading = faxFor({"555x", "4000123412341234"}); // a card in a line of another kind
    reading.destinations[0].mailbox = "4000123412341234";
    reading.creditCard = "4000123412341234";
    reading.refusals = {{3, "has a sign that no telephone has"}, {4, "stands twice"}};
    EXPECT_EQ(add(reading, "4000123412341234"), 1);
    open();
    const JobRecord job = *log->job(1);
    EXPECT_EQ(job.state, JobState::refused);
    EXPECT_EQ(job.problem, "has a sign that no telephone has");
    EXPECT_EQ(job.reading.refusals.size(), 2U);
    EXPECT_THAT(job.recipients, IsEmpty());
    EXPECT_THAT(job.reading.destinations, IsEmpty());
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_FALSE(keeps("4000123412341234"));
    EXPECT_FALSE(log->nextToRender());
    EXPECT_FALSE(log->beginCall(noon));
    EXPECT_EQ(log->load().waitingJobs, 0);
}

TEST_F(DeviceLogTest, AJobThatCannotBeDialledIsNotTaken)
{
    EXPECT_THAT(failureLine([&] { add(faxFor({"5550104477", "55x"})); }), HasSubstr("no key"));
    ReceivedJob reading = faxFor({"5550104477"});
    reading.creditCard = "4000x1234";
    EXPECT_THAT(failureLine([&] { add(reading); }), AllOf(HasSubstr("no key"), Not(HasSubstr("4000"))));
    EXPECT_THAT(log->jobs(0, 10), IsEmpty());
    EXPECT_THAT(files(), ElementsAre("incoming/spooled")) << "still its sender's";
}

TEST_F(DeviceLogTest, JobsAreRenderedInTheirOrderAndMayBePassedOver)
{
    add(faxFor({"111"}));
    add(faxFor({"222"}));
    EXPECT_EQ(log->nextToRender()->number, 1);
    EXPECT_EQ(log->nextToRender(1)->number, 2);
    EXPECT_FALSE(log->nextToRender(2));
}

TEST_F(DeviceLogTest, NobodyIsCalledBeforeAJobIsRendered)
{
    add(faxFor({"5550104477"}));
    EXPECT_FALSE(log->beginCall(noon));
    EXPECT_EQ(log->load().toRender, 1);
    EXPECT_EQ(log->nextToRender()->number, 1);
    writeFile(folder->pagesFile(1), "pages");
    log->setRendered(1, 3, noon);
    EXPECT_FALSE(log->nextToRender());
    const DueCall due = begin();
    EXPECT_EQ(due.pages, 3);
    EXPECT_EQ(due.keys, "5550104477");
    EXPECT_EQ(due.speed, Speed::upTo14400);
    EXPECT_EQ(log->load().waitingJobs, 1);
    EXPECT_EQ(log->load().runningCalls, 1);
}

TEST_F(DeviceLogTest, PagesThatAreNotThereAreNotEntered)
{
    add(faxFor({"5550104477"}));
    EXPECT_THAT(failureLine([&] { log->setRendered(1, 3, noon); }), HasSubstr("pages.tif"));
    EXPECT_EQ(log->job(1)->state, JobState::received);
}

TEST_F(DeviceLogTest, RecipientsAreCalledInOrderEachNumberOnceAtATime)
{
    addRendered(faxFor({"111", "222", "111"}));
    addRendered(faxFor({"111", "333"}));
    const DueCall first = begin();
    EXPECT_EQ(first.call.number, 1);
    EXPECT_EQ(first.keys, "111");
    EXPECT_EQ(begin().keys, "222");
    const DueCall third = begin();
    EXPECT_EQ(third.keys, "333");
    EXPECT_EQ(third.call.job, 2);
    EXPECT_FALSE(log->beginCall(noon));
    EXPECT_FALSE(endSent(first));
    EXPECT_EQ(begin().call.position, 3);
    EXPECT_FALSE(log->beginCall(noon));
}

TEST_F(DeviceLogTest, ARecipientIsCalledAgainWhenItsMomentHasCome)
{
    addRendered(faxFor({"111", "222"}));
    const DueCall busy = begin();
    EXPECT_EQ(busy.call.attempt, 1);
    log->endCall(busy.call, false, noon + minutes(1));
    EXPECT_EQ(recipientsOf(1), "waiting 1, waiting 0");
    EXPECT_EQ(begin().keys, "222");
    EXPECT_FALSE(log->beginCall(noon + minutes(1) - seconds(1)));
    EXPECT_EQ(log->load().nextAttempt, noon + minutes(1));
    EXPECT_EQ(log->job(1)->recipients[0].nextAttempt, noon + minutes(1));
    const DueCall again = begin(noon + minutes(1));
    EXPECT_EQ(again.call.attempt, 2);
    EXPECT_EQ(again.call.begunAt, noon + minutes(1));
}

TEST_F(DeviceLogTest, AJobIsDoneWithItsLastRecipient)
{
    ReceivedJob reading = faxFor({"111", "222"});
    reading.confirmationSheet = true;
    addRendered(reading);
    const DueCall first = begin();
    const DueCall second = begin();
    CallRecord failed = second.call;
    failed.result = "the line is too noisy";
    failed.code = 39;
    failed.pagesSent = 2;
    failed.duration = seconds(33);
    EXPECT_FALSE(log->endCall(failed, false, {}));
    EXPECT_THAT(log->missingReports(), IsEmpty());
    EXPECT_TRUE(endSent(first));

    const JobRecord job = *log->job(1);
    EXPECT_EQ(job.state, JobState::done);
    EXPECT_EQ(job.recipients[0].state, RecipientState::sent);
    EXPECT_EQ(job.recipients[1].state, RecipientState::failed);
    EXPECT_EQ(job.recipients[1].result, "the line is too noisy");
    EXPECT_EQ(job.recipients[1].code, 39);
    EXPECT_EQ(job.recipients[1].pagesSent, 2);
    EXPECT_EQ(job.recipients[1].lastCallAt, noon);
    EXPECT_EQ(job.recipients[1].lastDuration, seconds(33));
    EXPECT_EQ(log->load().waitingJobs, 0);
    EXPECT_THAT(log->missingReports(), ElementsAre(1));
    log->setReported(1);
    EXPECT_THAT(log->missingReports(), IsEmpty());
    EXPECT_TRUE(log->job(1)->hasReport);
}

TEST_F(DeviceLogTest, ACallIsKeptWithAllThatIsKnownOfIt)
{
    addRendered(faxFor({"111"}));
    CallRecord call = begin().call;
    call.duration = seconds(41);
    call.dialled = "111 ****";
    call.receiver = "111";
    call.result = "sent";
    call.libraryWords = "OK";
    call.code = -1;
    call.pagesSent = 3;
    call.pagesKept = 4;
    call.bitRate = 14400;
    call.errorCorrection = true;
    call.identity = "+1 555";
    call.fellBack = true;
    call.repeatedFrames = 5;
    call.damagedRows = 6;
    call.mailbox = "12";
    log->endCall(call, true, {});
    open();
    const auto calls = log->callsOf(1);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].state, CallState::ended);
    EXPECT_EQ(calls[0].begunAt, noon);
    EXPECT_EQ(calls[0].duration, seconds(41));
    EXPECT_EQ(calls[0].dialled, "111 ****");
    EXPECT_EQ(calls[0].receiver, "111");
    EXPECT_EQ(calls[0].libraryWords, "OK");
    EXPECT_EQ(calls[0].code, -1);
    EXPECT_EQ(calls[0].pagesKept, 4);
    EXPECT_EQ(calls[0].bitRate, 14400);
    EXPECT_TRUE(calls[0].errorCorrection && calls[0].fellBack);
    EXPECT_EQ(calls[0].identity, "+1 555");
    EXPECT_EQ(calls[0].repeatedFrames, 5);
    EXPECT_EQ(calls[0].damagedRows, 6);
    EXPECT_EQ(calls[0].mailbox, "12");
    EXPECT_EQ(log->latestMoment(), noon + seconds(41));
}

TEST_F(DeviceLogTest, WhatAReceiverKeptIsInItsPlaceOnceTheCallHasEnded)
{
    addRendered(faxFor({"111", "222"}));
    const DueCall due = begin();
    writeFile(folder->incomingCall(due.call.number), "the pages");
    EXPECT_FALSE(fs::exists(folder->receivedCall("111", 1)));
    endSent(due, "111", "the pages");
    EXPECT_EQ(contentOf(folder->receivedCall("111", 1)), "the pages");
    EXPECT_EQ(fs::status(folder->receivedCall("111", 1)).permissions(), fs::perms(0600));
    endSent(begin()); // one that kept nothing
    EXPECT_THAT(files(), ElementsAre("jobs/1/job", "jobs/1/pages.tif", "received/111/call-1.tif"));
}

TEST_F(DeviceLogTest, ACallThatEndsLeavesTheOthersTheirPages)
{
    addRendered(faxFor({"111", "222", "333"}));
    const DueCall sent = begin();
    const DueCall broken = begin();
    const DueCall lasting = begin();
    writeFile(folder->incomingCall(lasting.call.number), "half");
    endSent(sent, "111");
    log->breakOffCall(broken.call.number);
    EXPECT_EQ(contentOf(folder->incomingCall(lasting.call.number)), "half");
    endSent(lasting, "333", "the pages");
    EXPECT_EQ(contentOf(folder->receivedCall("333", lasting.call.number)), "the pages");
}

TEST_F(DeviceLogTest, ACallWhosePagesWouldLieElsewhereIsNotEntered)
{
    addRendered(faxFor({"111"}));
    const DueCall due = begin();
    EXPECT_THAT(failureLine([&] { endSent(due, "../../x"); }), HasSubstr("a call's number is none"));
    EXPECT_EQ(recipientsOf(1), "calling 1");
    EXPECT_EQ(log->callsOf(1)[0].state, CallState::calling);
    EXPECT_THAT(files(), ElementsAre("incoming/call-1.tif", "jobs/1/job", "jobs/1/pages.tif"));
}

TEST_F(DeviceLogTest, AReceiverWhosePlaceIsTakenGetsItsPagesWithTheNextCall)
{
    addRendered(faxFor({"111", "222", "333"}));
    writeFile(path / "received/111", "no folder");
    const LogCapture capture;
    endSent(begin(), "111", "the pages");
    EXPECT_EQ(recipientsOf(1), "sent 1, waiting 0, waiting 0") << "the call is known to have succeeded";
    EXPECT_EQ(contentOf(folder->incomingCall(1)), "the pages");
    endSent(begin());
    EXPECT_EQ(capture.messages.size(), 1U) << "it is told of once";
    EXPECT_THAT(capture.messages[0], HasSubstr("received/111"));
    fs::remove(path / "received/111");
    endSent(begin());
    EXPECT_EQ(contentOf(folder->receivedCall("111", 1)), "the pages");
    EXPECT_EQ(capture.messages.size(), 1U);
}

TEST_F(DeviceLogTest, ACallThatIsBrokenOffIsMadeAgainAndUsesNoAttemptUp)
{
    addRendered(faxFor({"111"}));
    const DueCall due = begin();
    writeFile(folder->incomingCall(1), "half");
    log->breakOffCall(due.call.number);
    EXPECT_EQ(recipientsOf(1), "waiting 0");
    EXPECT_EQ(log->callsOf(1)[0].state, CallState::brokenOff);
    EXPECT_FALSE(fs::exists(folder->incomingCall(1)));
    const DueCall again = begin();
    EXPECT_EQ(again.call.number, 2);
    EXPECT_EQ(again.call.attempt, 1);
    log->breakOffCall(1); // which has ended
    EXPECT_EQ(recipientsOf(1), "calling 1");
}

TEST_F(DeviceLogTest, ACardIsKnownToItsCallsAloneAndForgottenWithTheJob)
{
    const std::string card = "4000-1234-1234-1234";
    ReceivedJob reading = faxFor({"111", "222"});
    reading.creditCard = card;
    addRendered(reading, 1, "%!PS\n" + card);
    EXPECT_EQ(log->job(1)->reading.creditCard, std::string(card.size(), '*'));
    EXPECT_EQ(log->jobs(0, 1)[0].reading.creditCard, std::string(card.size(), '*'));
    const DueCall first = begin();
    EXPECT_EQ(first.card, card);
    endSent(first);
    EXPECT_TRUE(keeps(card));
    endSent(begin());
    EXPECT_FALSE(keeps(card));
    EXPECT_EQ(log->job(1)->reading.creditCard, std::string(card.size(), '*'));
    EXPECT_THAT(files(), ElementsAre("jobs/1/pages.tif"));
}

TEST_F(DeviceLogTest, AJobWithALineThatMayHoldACardDropsItsBytes)
{
    ReceivedJob reading = faxFor({"111"});
    reading.objections = {{7, "an attribute that the device does not know: \"*** *** ***-***\""}};
    addRendered(reading, 1, "4000123412341234");
    EXPECT_TRUE(keeps("4000123412341234"));
    endSent(begin());
    EXPECT_FALSE(keeps("4000123412341234"));

    reading.objections = {{7, "an attribute that the device does not know: \"***\" and \"*** *****-***\""}};
    addRendered(reading, 1, "%!PS");
    endSent(begin());
    EXPECT_TRUE(fs::exists(folder->jobFile(2)));
}

TEST_F(DeviceLogTest, ItsMomentsAreThoseOfJobsAndCalls)
{
    EXPECT_FALSE(log->latestMoment());
    addRendered(faxFor({"111"}));
    EXPECT_EQ(log->latestMoment(), noon);
    begin(noon + seconds(5));
    EXPECT_EQ(log->latestMoment(), noon + seconds(5));
}

TEST_F(DeviceLogTest, AJobThatCannotBeRenderedCallsNobodyAndForgetsItsCard)
{
    ReceivedJob reading = faxFor({"111"});
    reading.creditCard = "4000123412341234";
    add(reading, "4000123412341234");
    log->setFailed(1, "it is no PostScript");
    EXPECT_EQ(log->job(1)->state, JobState::failed);
    EXPECT_EQ(log->job(1)->problem, "it is no PostScript");
    EXPECT_EQ(recipientsOf(1), "failed 0");
    EXPECT_FALSE(log->beginCall(noon));
    EXPECT_FALSE(keeps("4000123412341234"));

    EXPECT_THAT(log->missingReports(), IsEmpty());

    reading = faxFor({"111"});
    reading.confirmationSheet = true;
    add(reading);
    log->setFailed(2, "nor this");
    EXPECT_TRUE(fs::exists(folder->jobFile(2))) << "without a card, for its sender to look at";
    EXPECT_THAT(log->missingReports(), ElementsAre(2));
}

TEST_F(DeviceLogTest, AJobWithoutAttributesIsPrinted)
{
    ReceivedJob reading;
    reading.postScriptEnd = 14;
    add(reading);
    EXPECT_FALSE(log->nextToRender()->reading.isFax);
    writeFile(folder->printedFile(1), "pages");
    log->setPrinted(1, 2);
    EXPECT_EQ(log->job(1)->state, JobState::printed);
    EXPECT_EQ(log->job(1)->pages, 2);
    EXPECT_EQ(log->load().waitingJobs, 0);
}

TEST_F(DeviceLogTest, ListsTheNewestFirstPageByPage)
{
    for (int job = 0; job < 5; ++job)
        addRendered(faxFor({"11" + std::to_string(job)}));
    EXPECT_THAT(numbersOf(log->jobs(0, 2)), ElementsAre(5, 4));
    EXPECT_THAT(numbersOf(log->jobs(4, 2)), ElementsAre(3, 2));
    EXPECT_THAT(numbersOf(log->jobs(2, 2)), ElementsAre(1));
    EXPECT_THAT(numbersOf(log->jobs(1, 2)), IsEmpty());
    for (int call = 0; call < 3; ++call)
        begin();
    EXPECT_EQ(log->calls(0, 2).front().number, 3);
    EXPECT_EQ(log->calls(0, 2).size(), 2U);
    EXPECT_EQ(log->calls(2, 2).front().number, 1);
}

TEST_F(DeviceLogTest, ManyThreadsAddAndCallAtOnce)
{
    constexpr int threads = 4;
    constexpr int each = 5;
    std::vector<std::thread> senders;
    for (int thread = 0; thread < threads; ++thread)
        senders.emplace_back([&, thread] {
            for (int job = 0; job < each; ++job) {
                const std::string spooled = folder->incoming() / ("spooled-" + std::to_string(thread));
                writeFile(spooled, "%!PS");
                const int number =
                    log->addJob(faxFor({std::to_string(1000 + thread * each + job)}), spooled, "::1", noon);
                writeFile(folder->pagesFile(number), "pages");
                log->setRendered(number, 1, noon);
                if (const auto due = log->beginCall(noon))
                    endSent(*due);
            }
        });
    for (std::thread& sender : senders)
        sender.join();
    while (const auto due = log->beginCall(noon))
        endSent(*due);
    const auto jobs = log->jobs(0, 100);
    EXPECT_EQ(jobs.size(), std::size_t{threads * each});
    for (const JobRecord& job : jobs)
        EXPECT_EQ(job.state, JobState::done) << job.number;
    EXPECT_EQ(log->calls(0, 100).size(), jobs.size());
}

TEST_F(DeviceLogTest, WithTenThousandJobsNoStatementLooksAtAllOfThem)
{
    close();
    const auto database = sqlite::open(path / "device.db", SQLITE_OPEN_READWRITE);
    sqlite::run(database, R"(PRAGMA synchronous=OFF; BEGIN;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT INTO job SELECT i, 'done',
  1700000000000, x'', 'DSC', x'', 1, 0, 0, 'standard', '14400', x'', 0, 9, 0, 9, 1, x'', 0, 0 FROM n;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT INTO recipient SELECT i, 1,
  x'31', x'', 3, '111', 'sent', 1, 0, x'', 0, 1, 1700000000000, 1 FROM n;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT INTO call SELECT i, i, 1, 1,
  'ended', 1700000000000, 1, '111', '', x'', x'', 0, 1, 1, 14400, 1, x'', 0, 0, 0, x'' FROM n; COMMIT)");
    StatementWork work;
    open();
    work.forget(); // a start looks at all that is kept
    addRendered(faxFor({"111", "222"}));
    EXPECT_EQ(log->load().waitingJobs, 1);
    EXPECT_FALSE(log->nextToRender());
    EXPECT_FALSE(log->beginCall(noon - minutes(1)));
    EXPECT_EQ(log->jobs(0, 20).size(), 20U);
    EXPECT_EQ(log->calls(0, 20).size(), 20U);
    EXPECT_EQ(log->callsOf(5000).size(), 1U);
    EXPECT_THAT(log->missingReports(), IsEmpty());
    EXPECT_EQ(begin().call.job, 10001);
    EXPECT_GT(work.most(), 20) << "that is what one takes";
    EXPECT_LT(work.most(), 5000) << work.mostWork();
}

} // namespace
} // namespace quelm::device::tests
