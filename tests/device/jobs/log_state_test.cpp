// Tests of devices that are killed, or run out of room, at each step of what they do.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/sqlite/sqlite.h"
#include "tests/device/jobs/state_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <iterator>
#include <map>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;

class LogRecoveryTest : public StateTest {
protected:
    /// For each step of `action`: kills a device at it, in the state as it is now, then looks at what the
    /// next device finds. Returns the number of steps.
    int killAtEachStep(const std::function<void()>& action, const std::function<void()>& look)
    {
        close();
        fs::rename(path, outer.path() / "before");
        int count = 0;
        for (bool isKilled = true; isKilled && !HasFailure(); ++count) {
            fs::remove_all(path);
            fs::copy(outer.path() / "before", path, fs::copy_options::recursive);
            isKilled = isKilledAt(count, [&] {
                open();
                action();
            });
            SCOPED_TRACE("killed at step " + std::to_string(count));
            open();
            look();
            close();
        }
        return count - 1;
    }
};

TEST_F(LogRecoveryTest, AJobIsTakenWholeOrNotAtAll)
{
    open();
    const int steps = killAtEachStep([&] { add(faxFor({"111"}), "the job"); },
                                     [&] {
                                         if (log->jobs(0, 10).empty()) {
                                             EXPECT_THAT(files(), IsEmpty());
                                             EXPECT_TRUE(fs::is_empty(path / "jobs"));
                                             EXPECT_EQ(add(faxFor({"111"}), "the job"), 1);
                                         }
                                         EXPECT_THAT(files(), ElementsAre("jobs/1/job"));
                                         EXPECT_EQ(contentOf(folder->jobFile(1)), "the job");
                                         EXPECT_EQ(log->nextToRender()->number, 1);
                                     });
    EXPECT_GE(steps, 6);
}

TEST_F(LogRecoveryTest, AReceiverKeepsItsPagesWhenTheCallIsKnownAndIsCalledAgainOtherwise)
{
    open();
    addRendered(faxFor({"111"}));
    int known = 0;
    const int steps = killAtEachStep([&] { endSent(begin(), "111", "the pages"); },
                                     [&] {
                                         const auto pages = folder->receivedCall("111", 1);
                                         EXPECT_THAT(log->load().runningCalls, Eq(0));
                                         if (recipientsOf(1) == "sent 1") {
                                             ++known;
                                             EXPECT_EQ(contentOf(pages), "the pages");
                                             EXPECT_EQ(log->job(1)->state, JobState::done);
                                             EXPECT_FALSE(log->beginCall(noon))
                                                 << "a call that succeeded is never made again";
                                         } else {
                                             EXPECT_EQ(recipientsOf(1), "waiting 0");
                                             EXPECT_EQ(log->job(1)->state, JobState::calling);
                                             EXPECT_FALSE(fs::exists(pages));
                                             EXPECT_EQ(begin().call.attempt, 1);
                                         }
                                         EXPECT_TRUE(fs::is_empty(path / "incoming"));
                                     });
    EXPECT_GE(steps, 8);
    EXPECT_GE(known, 4) << "behind the commit, ahead of the name, and so on";
    EXPECT_GE(steps - known, 3);
}

TEST_F(LogRecoveryTest, ACardIsForgottenWhereverItsJobEnds)
{
    open();
    ReceivedJob reading = faxFor({"111"});
    reading.creditCard = "4000123412341234";
    addRendered(reading, 1, "%!PS 4000123412341234");
    killAtEachStep([&] { endSent(begin()); },
                   [&] {
                       if (recipientsOf(1) != "sent 1")
                           endSent(begin());
                       EXPECT_FALSE(keeps("4000123412341234"));
                       EXPECT_THAT(files(), ElementsAre("jobs/1/pages.tif"));
                   });
}

TEST_F(LogRecoveryTest, AKilledDevicesCallsAreBrokenOff)
{
    open();
    addRendered(faxFor({"111", "222"}));
    const DueCall busy = begin();
    log->endCall(busy.call, false, noon + std::chrono::minutes(1));
    const DueCall again = begin(noon + std::chrono::minutes(1));
    EXPECT_EQ(again.call.attempt, 2);
    writeFile(folder->incomingCall(again.call.number), "half");
    begin();
    open();
    EXPECT_EQ(recipientsOf(1), "waiting 1, waiting 0");
    EXPECT_TRUE(fs::is_empty(path / "incoming"));
    EXPECT_EQ(log->callsOf(1)[1].state, CallState::brokenOff);
    EXPECT_EQ(begin(noon + std::chrono::minutes(1)).call.attempt, 2);
}

TEST_F(LogRecoveryTest, AtEachStepThatFailsAJobStaysItsSenders)
{
    open();
    std::string line;
    int count = 0;
    int last = 0;
    const auto addOne = [&] { last = add(faxFor({"111"}), "the job"); };
    for (; failsAt(count, addOne, line) && !HasFailure(); ++count) {
        SCOPED_TRACE(count);
        if (line.empty())
            break; // what is to be done behind the commit is done by the next device
        const auto jobs = log->jobs(0, 100);
        EXPECT_THAT(line, HasSubstr("no room to"));
        EXPECT_THAT(jobs, IsEmpty());
        EXPECT_THAT(files(), ElementsAre("incoming/spooled"));
        EXPECT_EQ(contentOf(folder->incoming() / "spooled"), "the job");
        EXPECT_TRUE(fs::is_empty(path / "jobs"));
    }
    EXPECT_EQ(line, "");
    EXPECT_GE(count, 6);
    EXPECT_EQ(last, 1);
}

TEST_F(LogRecoveryTest, AtEachStepThatFailsTheEndOfACallCanBeEnteredAgain)
{
    for (int count = 0; !HasFailure(); ++count) {
        SCOPED_TRACE(count);
        fs::remove_all(path);
        open();
        addRendered(faxFor({"111"}));
        const DueCall due = begin();
        std::string line;
        const bool hasFailed = failsAt(
            count, [&] { endSent(due, "111", "the pages"); }, line);
        if (!hasFailed)
            break;
        if (recipientsOf(1) == "calling 1")
            endSent(due, "111", "the pages");
        EXPECT_EQ(recipientsOf(1), "sent 1");
        open();
        EXPECT_EQ(contentOf(folder->receivedCall("111", 1)), "the pages");
        EXPECT_TRUE(fs::is_empty(path / "incoming"));
        close();
    }
}

TEST_F(LogRecoveryTest, AJobWhoseFilesAreGoneIsRenderedAgainOrFails)
{
    open();
    add(faxFor({"111"}));
    addRendered(faxFor({"222"}));
    addRendered(faxFor({"333", "444"}));
    endSent(begin());
    endSent(begin());
    addRendered(faxFor({"555"}));
    const DueCall due = begin();
    EXPECT_EQ(due.keys, "444");
    close();
    fs::remove_all(path / "jobs/1");
    fs::remove(path / "jobs/4/pages.tif");
    fs::remove_all(path / "jobs/3");
    open();
    EXPECT_EQ(log->job(1)->state, JobState::failed);
    EXPECT_THAT(log->job(1)->problem, HasSubstr("gone"));
    EXPECT_EQ(recipientsOf(1), "failed 0");
    EXPECT_EQ(log->job(2)->state, JobState::done);
    EXPECT_EQ(log->job(3)->state, JobState::done);
    EXPECT_EQ(recipientsOf(3), "sent 1, failed 0");
    EXPECT_THAT(log->job(3)->recipients[1].result, HasSubstr("gone"));
    EXPECT_EQ(log->nextToRender()->number, 4);
    EXPECT_FALSE(log->beginCall(noon)) << "of one that is to be rendered again";
}

TEST_F(LogRecoveryTest, WhoHasReceivedAJobThatIsRenderedAgainIsNotCalledAgain)
{
    open();
    addRendered(faxFor({"111", "222", "333"}));
    endSent(begin());
    log->endCall(begin().call, false, {});
    close();
    fs::remove(path / "jobs/1/pages.tif");
    open();
    EXPECT_EQ(recipientsOf(1), "sent 1, failed 1, waiting 0");
    writeFile(folder->pagesFile(1), "pages");
    log->setRendered(1, 1, noon);
    EXPECT_EQ(begin().keys, "333");
    EXPECT_FALSE(log->beginCall(noon));
}

TEST_F(LogRecoveryTest, AJobWhoseFileIsGoneForgetsItsCard)
{
    open();
    ReceivedJob reading = faxFor({"111"});
    reading.creditCard = "4000123412341234";
    add(reading);
    EXPECT_TRUE(keeps("4000123412341234"));
    close();
    fs::remove_all(path / "jobs/1");
    open();
    EXPECT_EQ(log->job(1)->state, JobState::failed);
    EXPECT_FALSE(keeps("4000123412341234"));
}

TEST_F(LogRecoveryTest, ARecipientWhoseCallIsNotKnownIsCalled)
{
    open();
    addRendered(faxFor({"111"}));
    close();
    sqlite::run(sqlite::open(path / "device.db", SQLITE_OPEN_READWRITE),
                "UPDATE recipient SET state = 'calling'");
    open();
    EXPECT_EQ(begin().keys, "111");
}

TEST_F(LogRecoveryTest, AJobFolderOfOneThatWasRefusedIsSetAside)
{
    open();
    ReceivedJob reading = faxFor({"111"});
    reading.refusals = {{3, "stands twice"}};
    add(reading);
    close();
    fs::create_directories(path / "jobs/1");
    writeFile(path / "jobs/1/job", "of another database");
    const LogCapture capture;
    open();
    EXPECT_EQ(contentOf(path / "unknown/1/job"), "of another database");
    EXPECT_THAT(capture.messages, ElementsAre("job folder 1 is not in device.db; it was moved to unknown/1"));
}

TEST_F(LogRecoveryTest, WhatIsInIncomingOfNoCallThatEndedIsRemoved)
{
    open();
    addRendered(faxFor({"111"}));
    endSent(begin());
    close();
    writeFile(path / "incoming/call-1.tif", "of a call that no machine received");
    open();
    EXPECT_THAT(files(), Not(Contains(HasSubstr("call-"))));
}

TEST_F(LogRecoveryTest, WhatIsInIncomingOfACallThatIsNotKnownIsSetAside)
{
    open();
    close();
    writeFile(path / "incoming/call-77.tif", "of no call");
    const LogCapture capture;
    open();
    EXPECT_EQ(contentOf(path / "unknown/call-77.tif"), "of no call");
    EXPECT_THAT(capture.messages,
                ElementsAre("call-77.tif is of no call in device.db; it was moved to unknown/call-77.tif"));
    addRendered(faxFor({"111"}));
    EXPECT_EQ(begin().call.number, 78);
}

/// A state with job 1, which is sent; `copy` is its database. Then come job 2, which is sent too, job 3,
/// which is printed, and job 4, which is still to be rendered.
class LostMemory : public StateTest {
protected:
    LostMemory()
    {
        open();
        sendOne("pages of call 1");
        close();
        fs::copy(path / "device.db", outer.path() / "copy");
        open();
        sendOne("pages of call 2");
        ReceivedJob plain;
        plain.postScriptEnd = 4;
        add(plain, "%!PS");
        writeFile(folder->printedFile(3), "print of job 3");
        log->setPrinted(3, 1);
        writeFile(folder->reportText(2), "sheet of job 2");
        add(faxFor({"222"}), "job 4");
        close();
    }

    void sendOne(const char* pages)
    {
        addRendered(faxFor({"111"}), 1, pages);
        endSent(begin(), "111", pages);
    }

    /// Runs another fax and another print, which overwrite nothing.
    void workOn(int job, int call)
    {
        const auto before = contents();
        EXPECT_FALSE(log->nextToRender()) << "nobody is called for what is not known";
        EXPECT_FALSE(log->beginCall(noon));
        EXPECT_EQ(addRendered(faxFor({"111"})), job);
        const DueCall due = begin();
        EXPECT_EQ(due.call.number, call);
        endSent(due, "111", "of the next call");
        EXPECT_EQ(add(ReceivedJob{}), job + 1);
        for (const auto& [name, content] : before)
            EXPECT_EQ(contentOf(path / name), content) << name;
    }

    std::map<std::string, std::string> contents()
    {
        std::map<std::string, std::string> found;
        for (const std::string& name : files())
            found[name] = contentOf(path / name);
        return found;
    }
};

TEST_F(LostMemory, AnOlderCopyOfTheDatabaseCostsNoJobAndNoReceivedFax)
{
    fs::copy(outer.path() / "copy", path / "device.db", fs::copy_options::overwrite_existing);
    const LogCapture capture;
    open();
    EXPECT_THAT(capture.messages, ElementsAre("job folder 2 is not in device.db; it was moved to unknown/2",
                                              "job folder 3 is not in device.db; it was moved to unknown/3",
                                              "job folder 4 is not in device.db; it was moved to unknown/4"));
    EXPECT_THAT(files(),
                ElementsAre("jobs/1/job", "jobs/1/pages.tif", "printed/job-3.tif", "received/111/call-1.tif",
                            "received/111/call-2.tif", "reports/job-2.txt", "unknown/2/job",
                            "unknown/2/pages.tif", "unknown/3/job", "unknown/4/job"));
    EXPECT_EQ(contentOf(path / "unknown/4/job"), "job 4");
    workOn(5, 3);
}

TEST_F(LostMemory, AMissingOrEmptyDatabaseCostsNoneEither)
{
    for (const bool isMissing : {true, false}) {
        fs::remove(path / "device.db");
        if (!isMissing)
            writeFile(path / "device.db", "");
        const LogCapture capture;
        open();
        ASSERT_EQ(capture.messages.size(), isMissing ? 5U : 3U);
        EXPECT_THAT(capture.messages[0], HasSubstr("device.db was missing or empty"));
        EXPECT_THAT(capture.messages[1], HasSubstr("job folder"));
        EXPECT_EQ(contentOf(path / "unknown/4/job"), "job 4");
        workOn(isMissing ? 5 : 7, isMissing ? 3 : 4);
        close();
    }
}

TEST_F(LostMemory, WhatPeopleMovedAwayAndBackIsSetAsideBesideIt)
{
    fs::remove(path / "device.db");
    open();
    close();
    fs::copy(path / "unknown/2", path / "jobs/2", fs::copy_options::recursive);
    const LogCapture capture;
    open();
    EXPECT_THAT(capture.messages,
                ElementsAre("job folder 2 is not in device.db; it was moved to unknown/2-2"));
    open();
    EXPECT_EQ(capture.messages.size(), 1U) << "and not told of again";
    EXPECT_EQ(add(faxFor({"111"})), 5);
}

TEST_F(LostMemory, ACopyInWhichSomebodyStillWaitsIsSaidToBeOld)
{
    fs::copy(outer.path() / "copy", path / "device.db", fs::copy_options::overwrite_existing);
    sqlite::run(sqlite::open(path / "device.db", SQLITE_OPEN_READWRITE),
                "UPDATE job SET state = 'calling'; UPDATE recipient SET state = 'waiting', next_attempt = 1");
    const LogCapture capture;
    open();
    ASSERT_EQ(capture.messages.size(), 4U);
    EXPECT_THAT(capture.messages[0], HasSubstr("device.db is older than the files beside it"));
}

TEST_F(LostMemory, ManyJobsAreToldOfInAFewLines)
{
    for (int job = 5; job <= 60; ++job) {
        fs::create_directories(path / "jobs" / std::to_string(job));
        writeFile(path / "jobs" / std::to_string(job) / "job", "x");
    }
    const LogCapture capture;
    open();
    ASSERT_EQ(capture.messages.size(), 12U);
    EXPECT_THAT(capture.messages[10], HasSubstr("unknown/14"));
    EXPECT_THAT(capture.messages[11], HasSubstr("46 more job folders"));
    EXPECT_EQ(std::distance(fs::directory_iterator(path / "unknown"), {}), 56);
    EXPECT_EQ(add(faxFor({"111"})), 61);
}

TEST_F(LostMemory, NumbersThatNoDeviceGaveAreNoneOfItsOwn)
{
    for (const char* name : {"2147483647", "99999999999999", "-3", "007", "x"})
        fs::create_directories(path / "jobs" / name);
    writeFile(path / "printed/job-2147483647.tif", "x");
    writeFile(path / "received/111/call-2147483647.tif", "x");
    fs::create_symlink(path / "received/111", path / "received/link");
    open();
    EXPECT_EQ(add(faxFor({"111"})), 5);
    EXPECT_TRUE(fs::exists(path / "jobs/x"));
    EXPECT_TRUE(fs::exists(path / "jobs/007"));
}

TEST_F(LostMemory, EachPlaceTellsWhichNumbersWereGiven)
{
    int job = 4;
    for (const char* name : {"printed/job-", "reports/job-", "unknown/"}) {
        open();
        close();
        fs::create_directories(path / "unknown");
        job += 10;
        const std::string named = name + std::to_string(job);
        if (std::string_view(name) == "unknown/")
            fs::create_directory(path / named);
        else
            writeFile(path / (named + (job == 14 ? ".tif" : ".pdf")), "x");
        open();
        EXPECT_EQ(add(faxFor({"111"})), ++job) << name;
    }
    EXPECT_EQ(addRendered(faxFor({"111", "222", "333"})), ++job);
    EXPECT_EQ(begin().call.number, 3);
    close();
    writeFile(path / "unknown/call-20.tif", "x");
    open();
    EXPECT_EQ(begin().call.number, 21);
    close();
    fs::create_directories(path / "received/444");
    writeFile(path / "received/444/call-30.tif", "x");
    fs::create_directory(outer.path() / "elsewhere");
    writeFile(outer.path() / "elsewhere/call-40.tif", "x");
    fs::create_directory_symlink(outer.path() / "elsewhere", path / "received/555");
    open();
    EXPECT_EQ(begin().call.number, 31) << "nothing is looked for behind a link";
}

TEST_F(LostMemory, AFolderThatCannotBeListedKeepsTheDeviceFromStarting)
{
    writeFile(path / "unknown", "no folder");
    EXPECT_THAT(failureLine([&] { open(); }), HasSubstr("unknown"));
}

TEST_F(LostMemory, ANameThatIsTakenMeanwhileIsLeftOut)
{
    open();
    fs::create_directories(path / "jobs/5");
    writeFile(path / "jobs/5/job", "somebody's");
    EXPECT_EQ(add(faxFor({"111"})), 6);
    EXPECT_EQ(contentOf(path / "jobs/5/job"), "somebody's");
    addRendered(faxFor({"111"}));
    fs::create_directories(path / "received/111");
    writeFile(path / "received/111/call-3.tif", "somebody's");
    const LogCapture capture;
    endSent(begin(), "111", "the next");
    EXPECT_EQ(contentOf(path / "received/111/call-3.tif"), "somebody's");
    EXPECT_EQ(contentOf(folder->incomingCall(3)), "the next");
    ASSERT_EQ(capture.messages.size(), 1U);
    EXPECT_THAT(capture.messages[0], HasSubstr("call-3.tif"));
}

TEST_F(LogRecoveryTest, AReceiverThatTheDatabaseMadeUpLeadsNowhereElse)
{
    open();
    addRendered(faxFor({"111", "222"}));
    const DueCall first = begin();
    const DueCall second = begin();
    endSent(first, "111", "pages of 111");
    endSent(second, "222", "pages of 222");
    close();
    for (const DueCall* due : {&first, &second})
        fs::rename(path / ("received/" + due->keys + "/call-" + std::to_string(due->call.number) + ".tif"),
                   path / ("incoming/call-" + std::to_string(due->call.number) + ".tif"));
    sqlite::run(sqlite::open(path / "device.db", SQLITE_OPEN_READWRITE),
                "UPDATE call SET receiver = '../../x' WHERE number = 1");
    const LogCapture capture;
    open();
    EXPECT_FALSE(fs::exists(outer.path() / "x"));
    EXPECT_EQ(contentOf(folder->incomingCall(1)), "pages of 111") << "left for a person to look at";
    EXPECT_EQ(contentOf(folder->receivedCall("222", 2)), "pages of 222");
    ASSERT_EQ(capture.messages.size(), 1U);
    EXPECT_THAT(capture.messages[0], HasSubstr("a call's number is none"));
}

} // namespace
} // namespace quelm::device::tests
