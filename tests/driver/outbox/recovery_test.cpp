// Tests of jobs whose program is killed: at each step, and what the log says afterwards.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"
#include "base/error.h"
#include "driver/outbox/outbox.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/print_listener.h"
#include "tests/support/log_capture.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using servers::Manner;
using servers::PrintListener;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RecoveryTest : public OutboxTest {
protected:
    /// Runs `action` in a process that is killed at the first step that `isIt`; its name, or nothing when
    /// there was none and the action came to its end.
    static std::string killedWhen(const std::function<bool(const std::string& step)>& isIt,
                                  const std::function<void()>& action)
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            setOutboxStepHook([&](const char* step) {
                if (!isIt(step))
                    return;
                writeAll(ends[1], step, "the pipe");
                ::kill(::getpid(), SIGKILL);
            });
            const std::string line = errorLine(action);
            ::_exit(line.empty() ? 0 : 1);
        }
        ::close(ends[1]);
        const FileHandle reader(ends[0]);
        std::string step(200, '\0');
        step.resize(readFully(reader.get(), step.data(), step.size(), -1, "the pipe"));
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) ? WTERMSIG(status) == SIGKILL : status == 0) << status;
        EXPECT_EQ(WIFSIGNALED(status), !step.empty());
        return step;
    }

    /// The same at the step number `count` from 0.
    static std::string killedAt(int count, const std::function<void()>& action)
    {
        return killedWhen([&count](const std::string&) { return count-- == 0; }, action);
    }

    /// The same at the first step of that name.
    static std::string killedAt(const std::string& name, const std::function<void()>& action)
    {
        return killedWhen([&name](const std::string& step) { return step == name; }, action);
    }

    /// For each step of `action`, in a new outbox each time: kills a process at it, then looks.
    void killAtEachStep(const std::function<void()>& prepare, const std::function<void()>& action,
                        const std::function<void()>& look, int leastSteps)
    {
        for (int count = 0;; ++count) {
            fs::remove_all(outboxFolder);
            prepare();
            const std::string step = killedAt(count, action);
            SCOPED_TRACE("killed ahead of: " + step);
            look();
            if (step.empty() || HasFailure()) {
                EXPECT_GE(count, leastSteps);
                return;
            }
        }
    }

    /// How many connections a device has had, with one more that is made here.
    static int connectionsWith(PrintListener& device)
    {
        const auto marker = openDestination(deviceAt(device.port()), {}, nullptr);
        marker->sink().write("marker");
        marker->deliver();
        EXPECT_TRUE(device.waitForBytes(6));
        return device.connections();
    }

    /// Puts in a job with `stream`, which waits; its number.
    int putOne(const JobTarget& target) const
    {
        Outbox outbox = open();
        return put(outbox, draftFor(target), stream);
    }

    /// The job, once what killed programs left was settled.
    OutboxJob settled(int number)
    {
        Outbox outbox = open();
        outbox.settleOrphans(noon);
        EXPECT_THAT(outbox.settleOrphans(noon), IsEmpty()) << "once is enough";
        return outbox.job(number);
    }

    std::string stream = streamWithCard(Pdl::dsc, "4929 1111");
};

TEST_F(RecoveryTest, AJobIsPutInWholeOrNotAtAll)
{
    const Document document = Document::open(file("letter.ps", postScriptPages({"One"})));
    killAtEachStep([&] { open(); },
                   [&] {
                       Outbox outbox = open();
                       put(outbox, draftFor(FileTarget{path("fax.ps")}), stream, &document);
                   },
                   [&] {
                       Outbox outbox = open();
                       const auto jobs = outbox.jobs();
                       if (jobs.empty()) {
                           EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
                           EXPECT_EQ(put(outbox, draftFor(FileTarget{path("fax.ps")}), "another"), 1);
                           return;
                       }
                       EXPECT_EQ(contentOf(jobs.front().documentPath), postScriptPages({"One"}));
                       EXPECT_EQ(outbox.handOver(jobs.front().number, noon).state, OutboxState::handedOver);
                       EXPECT_EQ(contentOf(path("fax.ps")), stream);
                   },
                   5);
}

TEST_F(RecoveryTest, AFilesJobIsThereOrWaits)
{
    killAtEachStep(
        [&] {
            fs::remove(path("fax.ps"));
            putOne(FileTarget{path("fax.ps")});
        },
        [&] { open().handOver(1, noon); },
        [&] {
            const OutboxJob job = settled(1);
            if (job.state == OutboxState::handedOver) {
                EXPECT_EQ(contentOf(path("fax.ps")), stream);
                EXPECT_EQ(job.place, path("fax.ps"));
                EXPECT_FALSE(keeps("4929 1111"));
            } else {
                EXPECT_EQ(job.state, OutboxState::waiting);
                EXPECT_FALSE(fs::exists(path("fax.ps")));
                EXPECT_EQ(open().handOver(1, noon).state, OutboxState::handedOver);
                EXPECT_EQ(contentOf(path("fax.ps")), stream);
            }
            EXPECT_THAT(namesInFolder(), ElementsAre("fax.ps", "state"));
        },
        10);
}

TEST_F(RecoveryTest, ADevicesJobIsUncertainOnceItsConnectionMayHaveBegun)
{
    PrintListener device(Manner::takesAll);
    int connections = 0;
    std::vector<OutboxState> states;
    killAtEachStep([&] { putOne(deviceAt(device.port())); }, [&] { open().handOver(1, noon); },
                   [&] {
                       const OutboxJob job = settled(1);
                       states.push_back(job.state);
                       // Connections are served in their order: behind this one the others are counted.
                       const int before = connections;
                       connections = connectionsWith(device);
                       const int made = connections - before - 1;
                       EXPECT_TRUE(job.state == OutboxState::uncertain ||
                                   made == (job.state == OutboxState::waiting ? 0 : 1))
                           << made;
                       EXPECT_TRUE(job.state != OutboxState::handedOver || !keeps("4929 1111"));
                       EXPECT_THAT(job.state, AnyOf(OutboxState::waiting, OutboxState::uncertain,
                                                    OutboxState::handedOver));
                       EXPECT_EQ(job.isUnattended, true);
                   },
                   5);
    // In this order: it waits, nobody can say, it was handed over.
    EXPECT_TRUE(std::ranges::is_sorted(states, {}, [](OutboxState state) {
        return state == OutboxState::waiting ? 0 : state == OutboxState::uncertain ? 1 : 2;
    }));
    EXPECT_EQ(states.front(), OutboxState::waiting);
    EXPECT_EQ(std::ranges::count(states, OutboxState::handedOver) > 0, true);
}

TEST_F(RecoveryTest, WhatIsUncertainIsSentWhenItsUserSaysSo)
{
    PrintListener device(Manner::takesAll);
    putOne(deviceAt(device.port()));
    EXPECT_EQ(killedAt("deliver", [&] { open().handOver(1, noon); }), "deliver");
    const OutboxJob job = settled(1);
    EXPECT_EQ(job.state, OutboxState::uncertain);
    EXPECT_THAT(job.note, HasSubstr("look at the destination"));
    EXPECT_EQ(open().handOver(1, noon).state, OutboxState::handedOver);
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    EXPECT_EQ(device.received(), stream);
}

TEST_F(RecoveryTest, WhatWasUncertainIsSoAgainWhenNothingWentOutTheSecondTime)
{
    for (const bool isUnattended : {true, false}) {
        fs::remove_all(outboxFolder);
        ASSERT_EQ(killedAt("open the destination",
                           [&] {
                               Outbox outbox = open();
                               OutboxDraft draft = draftFor(deviceAt(9));
                               draft.isUnattended = isUnattended;
                               outbox.handOver(put(outbox, draft, stream), noon);
                           }),
                  "open the destination");
        ASSERT_EQ(settled(1).state, OutboxState::uncertain);
        ASSERT_EQ(killedAt("note the end", [&] { open().handOver(1, noon); }), "note the end");
        EXPECT_EQ(settled(1).state, OutboxState::uncertain);
    }
}

TEST_F(RecoveryTest, AJobOfItsOwnProgramThatDidNotBeginFailedAndSaysWhy)
{
    killedAt("begin to hand over", [&] {
        Outbox outbox = open();
        OutboxDraft draft = draftFor(deviceAt(9));
        draft.isUnattended = false;
        outbox.handOver(put(outbox, draft, stream), noon);
    });
    EXPECT_EQ(jobOf(1).state, OutboxState::handingOver) << "until somebody looks";
    const OutboxJob job = settled(1);
    EXPECT_EQ(job.state, OutboxState::failed);
    EXPECT_EQ(job.note, "the program that was to hand it over ended before anything of it went out");
}

TEST_F(RecoveryTest, AJobThatSomebodyHandsOverIsLeftAlone)
{
    Outbox outbox = open();
    OutboxDraft draft = draftFor(FileTarget{path("fax.ps")});
    draft.isUnattended = false;
    const int number = put(outbox, draft);
    Outbox other = open();
    EXPECT_THAT(outbox.settleOrphans(noon), IsEmpty());
    EXPECT_THAT(other.settleOrphans(noon), IsEmpty());
    const std::string line = "job 1 of the outbox is being handed over by another program; wait for its end";
    EXPECT_EQ(errorLine([&] { other.handOver(number, noon); }), line);
    EXPECT_EQ(errorLine([&] { other.cancel(number, noon); }), line);
    EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::handedOver);
}

TEST_F(RecoveryTest, ACancelledJobIsAsItWasOrGone)
{
    killAtEachStep([&] { putOne(FileTarget{path("fax.ps")}); }, [&] { open().cancel(1, noon); },
                   [&] {
                       const OutboxJob job = settled(1);
                       if (job.state == OutboxState::waiting) {
                           EXPECT_EQ(open().handOver(1, noon).state, OutboxState::handedOver);
                           EXPECT_EQ(contentOf(path("fax.ps")), stream);
                           return;
                       }
                       EXPECT_EQ(job.state, OutboxState::cancelled);
                       EXPECT_FALSE(job.hasStream);
                       EXPECT_THAT(allBelow(outboxFolder),
                                   ElementsAre("jobs", "jobs/1", "jobs/1/lock", "log.db", "new"));
                   },
                   5);
}

TEST_F(RecoveryTest, AJobSentAgainIsThereOnceOrNot)
{
    killAtEachStep(
        [&] {
            putOne(FileTarget{path("fax.ps")});
            open().handOver(1, noon);
        },
        [&] { open().sendAgain(1, "37-00", noon, true); },
        [&] {
            Outbox outbox = open();
            const auto jobs = outbox.jobs();
            ASSERT_GE(jobs.size(), 1);
            EXPECT_EQ(jobs.front().state, OutboxState::handedOver);
            if (jobs.size() == 1) {
                EXPECT_FALSE(keeps("37-00"));
                return;
            }
            EXPECT_EQ(outbox.handOver(2, noon).state, OutboxState::handedOver);
            EXPECT_EQ(contentOf(path("fax.ps")), streamWithCard(Pdl::dsc, "37-00"));
        },
        3);
}

TEST_F(RecoveryTest, WithNoDaysAJobIsThereOrHandedOver)
{
    killAtEachStep(
        [&] {
            fs::remove(path("fax.ps"));
            putOne(FileTarget{path("fax.ps")});
        },
        [&] { open(0).handOver(1, noon); },
        [&] {
            Outbox outbox = open(0);
            outbox.settleOrphans(noon);
            const bool isThere = !outbox.jobs().empty();
            EXPECT_EQ(contentOf(path("fax.ps")), isThere ? "(no file)" : stream);
            EXPECT_EQ(allBelow(outboxFolder).size(), isThere ? 7 : 3);
        },
        10);
}

TEST_F(RecoveryTest, AFileThatWasReplacedMeanwhileIsUncertain)
{
    putOne(FileTarget{path("fax.ps")});
    EXPECT_EQ(killedAt("go on behind the delivery", [&] { open().handOver(1, noon); }),
              "go on behind the delivery");
    file("other", "another's");
    fs::rename(path("other"), path("fax.ps"));
    EXPECT_EQ(settled(1).state, OutboxState::uncertain);
    EXPECT_EQ(contentOf(path("fax.ps")), "another's");
}

TEST_F(RecoveryTest, AFifosJobIsUncertain)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    putOne(FileTarget{path("fifo")});
    EXPECT_EQ(killedAt("deliver", [&] { open().handOver(1, noon); }), "deliver");
    EXPECT_EQ(settled(1).state, OutboxState::uncertain);
}

class QueueRecoveryTest : public RecoveryTest {
protected:
    QueueRecoveryTest()
    {
        releaseClock(); // a server holds jobs by the real one
        useServer(cupsd.address());
    }

    /// Kills a process at each step of handing over a job that is due at `due`, then lets it go out.
    void killAtEachStepUntil(std::time_t due, int leastSteps)
    {
        int last = 0; // number of a job in the queue
        killAtEachStep(
            [&] {
                Outbox outbox = open();
                put(outbox, draftFor(QueueTarget{"fax", cupsd.address()}, due), stream);
            },
            [&] { open().handOver(1, now); },
            [&] {
                Outbox outbox = open();
                outbox.settleOrphans(now);
                if (outbox.job(1).state != OutboxState::handedOver) {
                    EXPECT_EQ(outbox.job(1).state, OutboxState::waiting);
                    const HandoverEnd end = outbox.handOver(1, now);
                    ASSERT_EQ(end.state, OutboxState::handedOver) << end.trouble;
                }
                const OutboxJob job = outbox.job(1);
                ASSERT_GT(job.queueJob, last);
                EXPECT_EQ(job.place, "queue fax, job " + std::to_string(job.queueJob));
                if (due <= now)
                    EXPECT_EQ(cupsd.printed(job.queueJob).content, stream);
                else
                    outbox.cancel(1, now); // it is held there
                for (int other = last + 1; other < job.queueJob; ++other)
                    EXPECT_FALSE(cupsd.wasPrinted(other)) << "once is enough";
                last = job.queueJob;
                EXPECT_FALSE(keeps("4929 1111"));
            },
            leastSteps);
    }

    const std::time_t now = std::time(nullptr);
    servers::CupsdServer cupsd{servers::CupsdSettings{{{"fax"}}, {}}};
};

TEST_F(QueueRecoveryTest, AQueuesJobIsPrintedOnceWheneverItsProgramIsKilled) { killAtEachStepUntil(now, 10); }

TEST_F(QueueRecoveryTest, AQueuesJobIsHeldOnceWheneverItsProgramIsKilled)
{
    killAtEachStepUntil(now + 3600, 10);
}

TEST_F(QueueRecoveryTest, AQueueThatCannotBeAskedLeavesItsJobAsItIs)
{
    Outbox outbox = open();
    put(outbox, draftFor(QueueTarget{"fax", "127.0.0.1:1"}, now), stream);
    EXPECT_EQ(killedAt("deliver", [&] { open().handOver(1, now); }), "deliver");
    EXPECT_THAT(outbox.settleOrphans(now), IsEmpty());
    EXPECT_EQ(outbox.job(1).state, OutboxState::handingOver);
    EXPECT_THAT(errorLine([&] { outbox.handOver(1, now); }), HasSubstr("its program ended"));
    constexpr std::time_t day = 24 * 3600;
    EXPECT_THAT(outbox.settleOrphans(now + day), IsEmpty());
    EXPECT_EQ(outbox.settleOrphans(now + day + 60).size(), 1);
    EXPECT_EQ(outbox.job(1).state, OutboxState::uncertain);
}

} // namespace
} // namespace quelm::tests
