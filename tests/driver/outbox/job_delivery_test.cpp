// Tests of handing a job over: to print queues, at their time, cancelled, and with a full disk.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"
#include "base/error.h"
#include "driver/jobs/print_server.h"
#include "driver/jobs/queue_inquiry.h"
#include "driver/outbox/outbox.h"
#include "driver/outbox/outbox_log.h"
#include "driver/outbox/submission.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"
#include "tests/servers/print_listener.h"
#include "tests/servers/refused_port.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using servers::CupsdServer;
using servers::Manner;
using servers::PrintListener;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class QueueDeliveryTest : public OutboxTest {
protected:
    QueueDeliveryTest()
    {
        // A server holds jobs by the real clock.
        releaseClock();
        cupsd = std::make_unique<CupsdServer>(servers::CupsdSettings{{{"fax"}}, {}});
        useServer(cupsd->address());
    }

    JobTarget queue() const { return QueueTarget{"fax", cupsd->address()}; }

    /// What the queue has of a job.
    QueuedJob find(int number) const
    {
        const LogRow row = OutboxLog(OutboxFolder(outboxFolder)).find(number);
        return findQueuedJob(std::get<QueueTarget>(queue()), "ann", row.token, row.queueJob);
    }

    const std::time_t now = std::time(nullptr);
    std::unique_ptr<CupsdServer> cupsd;
};

TEST_F(QueueDeliveryTest, AQueueGetsTheJobByteForByteAndItsNumberIsKept)
{
    const std::string stream = streamWithCard(Pdl::dsc, "4929 1111");
    Outbox outbox = open();
    const int number = put(outbox, draftFor(queue(), now), stream);
    const HandoverEnd end = outbox.handOver(number, now);
    EXPECT_EQ(end.state, OutboxState::handedOver);
    EXPECT_FALSE(end.isHeld);
    EXPECT_EQ(outbox.job(number).queueJob, 1);
    EXPECT_EQ(outbox.job(number).place, "queue fax, job 1");
    const auto printed = cupsd->printed(1);
    EXPECT_EQ(printed.content, stream);
    EXPECT_EQ(printed.user, "ann");
    EXPECT_THAT(printed.title, HasSubstr("letter.ps"));
}

TEST_F(QueueDeliveryTest, AJobForLaterIsHeldThereAndCanBeCancelledThere)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(queue(), now + 3600));
    const HandoverEnd end = outbox.handOver(number, now);
    EXPECT_EQ(end.state, OutboxState::handedOver) << end.trouble;
    EXPECT_TRUE(end.isHeld);
    EXPECT_TRUE(outbox.job(number).waitsInQueue(now));
    EXPECT_FALSE(outbox.job(number).waitsInQueue(now + 3600));
    EXPECT_TRUE(find(number).isHeld);
    outbox.cancel(number, now);
    EXPECT_EQ(outbox.job(number).state, OutboxState::cancelled);
    EXPECT_FALSE(outbox.job(number).hasStream);
    EXPECT_TRUE(find(number).isCancelled);
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(QueueDeliveryTest, WhatTheQueueHoldsNoLongerCannotBeCancelled)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(queue(), now + 3600));
    outbox.handOver(number, now);
    ASSERT_TRUE(cancelQueuedJob(std::get<QueueTarget>(queue()), "ann", 1));
    outbox.cancel(number, now);
    EXPECT_EQ(outbox.job(number).state, OutboxState::cancelled) << "its user was faster";
    const int second = put(outbox, draftFor(queue(), now));
    outbox.handOver(second, now);
    EXPECT_EQ(errorLine([&] { outbox.cancel(second, now); }),
              "job 2 of the outbox cannot be cancelled: it was handed over already");
}

TEST_F(QueueDeliveryTest, WhatIsReleasedEarlyIsNotHeldAnyMore)
{
    Outbox outbox = open();
    for (const int number : {1, 2}) {
        put(outbox, draftFor(queue(), now + 3600));
        ASSERT_TRUE(outbox.handOver(number, now).isHeld);
        release(number);
    }
    EXPECT_THAT(errorLine([&] { outbox.cancel(1, now); }), HasSubstr("does not hold it any more"));
    EXPECT_FALSE(outbox.job(1).waitsInQueue(now));
    EXPECT_EQ(outbox.job(1).state, OutboxState::handedOver);
    EXPECT_EQ(outbox.job(1).note, "the queue does not hold it any more");
    EXPECT_TRUE(outbox.job(2).waitsInQueue(now));
    outbox.askAboutHeld(now);
    EXPECT_FALSE(jobOf(2).waitsInQueue(now));
    EXPECT_EQ(jobOf(2).state, OutboxState::handedOver);
    EXPECT_EQ(jobOf(2).note, "the queue did not hold it until its time");
}

TEST_F(QueueDeliveryTest, WhatIsCancelledInItsQueueIsCancelledHere)
{
    Outbox outbox = open();
    put(outbox, draftFor(queue(), now + 3600));
    put(outbox, draftFor(queue(), now + 3600));
    ASSERT_TRUE(outbox.handOver(1, now).isHeld);
    ASSERT_TRUE(outbox.handOver(2, now).isHeld);
    ASSERT_TRUE(cancelQueuedJob(std::get<QueueTarget>(queue()), "ann", 1));
    outbox.askAboutHeld(now);
    EXPECT_EQ(jobOf(1).state, OutboxState::cancelled);
    EXPECT_EQ(jobOf(1).note, "it was cancelled in its queue");
    EXPECT_EQ(jobOf(1).ended, now);
    EXPECT_TRUE(jobOf(2).waitsInQueue(now)) << "it is held there";
    cupsd.reset();
    outbox.askAboutHeld(now);
    EXPECT_TRUE(jobOf(2).waitsInQueue(now)) << "nobody knows better";
}

TEST_F(QueueDeliveryTest, LessThanFiveMinutesAheadNoQueueHoldsIt)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(queue(), now + 300));
    EXPECT_FALSE(outbox.handOver(number, now).isHeld);
    EXPECT_EQ(cupsd->printed(1).content, "the job");
}

TEST_F(QueueDeliveryTest, AtOnceMeansAtOnce)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(queue(), now + 7200));
    EXPECT_FALSE(outbox.handOver(number, now, {}, true).isHeld);
    EXPECT_FALSE(outbox.job(number).waitsInQueue(now));
    EXPECT_EQ(cupsd->printed(1).content, "the job");
}

TEST_F(QueueDeliveryTest, WhatTheQueueWillNotHoldWaitsHere)
{
    Outbox outbox = open();
    // More than a day ahead cannot be said to a queue.
    OutboxDraft draft = draftFor(queue(), now + 3 * 24 * 3600);
    draft.isUnattended = false;
    const int number = put(outbox, draft);
    const HandoverEnd end = outbox.handOver(number, now);
    EXPECT_EQ(end.state, OutboxState::waiting);
    EXPECT_THAT(end.trouble, HasSubstr("queue fax"));
    const OutboxJob job = outbox.job(number);
    EXPECT_EQ(job.state, OutboxState::waiting);
    EXPECT_TRUE(job.isUnattended) << "a worker sends it";
    EXPECT_EQ(job.note, end.trouble);
    EXPECT_EQ(outbox.handOver(number, job.due).state, OutboxState::handedOver);
}

class QueueSubmissionTest : public QueueDeliveryTest {
protected:
    SubmissionEnd submitAt(std::time_t sendAt)
    {
        Outbox outbox = open();
        Submission submission;
        submission.target = QueueTarget{"fax"};
        submission.user = "ann";
        submission.sendAt = sendAt;
        Transfer transfer;
        transfer.cancelled = [this] { return isBrokenOff; };
        return submit(&outbox, session, document, submission, someFacts(), now, transfer);
    }

    bool isBrokenOff = false;

    Document document = Document::open(file("letter.ps", postScriptPages({"One"})));
    FakeFaxSession session;
};

TEST_F(QueueSubmissionTest, AFaxForLaterIsHeldByItsQueue)
{
    const SubmissionEnd end = submitAt(now + 3600);
    EXPECT_EQ(end.kind, SubmissionEnd::Kind::held);
    EXPECT_EQ(end.due, now + 3600);
    EXPECT_EQ(end.receipt.job, 1);
    EXPECT_EQ(std::get<QueueTarget>(jobOf(end.number).target).server, currentPrintServer());
}

TEST_F(QueueSubmissionTest, AFaxForSoonWaitsHere)
{
    const SubmissionEnd end = submitAt(now + 300);
    EXPECT_EQ(end.kind, SubmissionEnd::Kind::waiting);
    EXPECT_EQ(end.reason, "");
}

TEST_F(QueueSubmissionTest, AFaxForLaterWaitsHereWhenItsServerCannotBeAsked)
{
    cupsd.reset();
    const SubmissionEnd end = submitAt(now + 3600);
    EXPECT_EQ(end.kind, SubmissionEnd::Kind::waiting);
    EXPECT_THAT(end.reason, HasSubstr("queue fax"));
    EXPECT_EQ(jobOf(end.number).state, OutboxState::waiting);
}

TEST_F(QueueSubmissionTest, AQueueThatIsNotThereIsToldAtOnce)
{
    cupsd = std::make_unique<CupsdServer>(servers::CupsdSettings{{{"other"}}, {}});
    useServer(cupsd->address());
    EXPECT_THAT(errorLine([&] { submitAt(now + 3600); }), HasSubstr("knows no such queue"));
    EXPECT_THAT(open().jobs(), IsEmpty());
}

TEST_F(QueueSubmissionTest, AFaxWhoseWaitingCannotBeNotedIsToldAndWaitsAllTheSame)
{
    const std::time_t due = now + 3 * 24 * 3600;
    setOutboxStepHook([](const std::string& step) {
        if (step == "note the end")
            throw Error("the disk is full");
    });
    const std::string line = errorLine([&] { submitAt(due); });
    setOutboxStepHook({});
    EXPECT_THAT(line, HasSubstr("job 1"));
    EXPECT_THAT(line, HasSubstr("the disk is full"));
    Outbox outbox = open();
    outbox.settleOrphans(now);
    EXPECT_EQ(outbox.job(1).state, OutboxState::waiting);
    EXPECT_EQ(outbox.handOver(1, due).state, OutboxState::handedOver);
}

TEST_F(QueueSubmissionTest, AFaxThatCouldNotBeBegunWaits)
{
    setOutboxStepHook([](const std::string& step) {
        if (step == "begin to hand over")
            throw Error("the disk is full");
    });
    const SubmissionEnd end = submitAt(now + 3600);
    setOutboxStepHook({});
    EXPECT_EQ(end.kind, SubmissionEnd::Kind::waiting);
    EXPECT_EQ(end.reason, "the disk is full");
    EXPECT_EQ(jobOf(end.number).state, OutboxState::waiting);
    EXPECT_EQ(open().handOver(end.number, now + 3600).state, OutboxState::handedOver);
}

TEST_F(QueueSubmissionTest, AFaxForLaterWaitsWhateverStepItsProgramIsKilledAt)
{
    for (const std::string at : {"begin to hand over", "open the destination", "note the end"}) {
        fs::remove_all(outboxFolder);
        const pid_t child = ::fork();
        if (child == 0) {
            setOutboxStepHook([&](const std::string& step) {
                if (step == at)
                    ::_exit(7);
            });
            errorLine([&] { submitAt(now + 3 * 24 * 3600); });
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7) << at;
        Outbox outbox = open();
        outbox.settleOrphans(now);
        EXPECT_EQ(outbox.job(1).state, OutboxState::waiting) << at;
    }
}

TEST_F(QueueSubmissionTest, AFaxForLaterThatItsUserBreaksOffLeavesNothing)
{
    isBrokenOff = true;
    EXPECT_NE(errorLine([&] { submitAt(now + 3600); }), "");
    EXPECT_THAT(open().jobs(), IsEmpty());
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

TEST_F(QueueSubmissionTest, AFaxThatWasToldToHaveFailedNeverGoesOut)
{
    cupsd = std::make_unique<CupsdServer>(servers::CupsdSettings{{{"other"}}, {}});
    useServer(cupsd->address());
    setOutboxStepHook([](const std::string& step) {
        if (step == "note the end")
            throw Error("the disk is full");
    });
    EXPECT_THAT(errorLine([&] { submitAt(now + 3600); }), HasSubstr("knows no such queue"));
    setOutboxStepHook({});
    Outbox outbox = open();
    outbox.settleOrphans(now);
    EXPECT_EQ(outbox.handOver(1, now + 3600).state, OutboxState::failed);
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

class JobDeliveryTest : public OutboxTest {
protected:
    /// Does `action` with a disk that is full at its step number `count`; false when it has no such step.
    static bool isFullAt(int count, const std::function<void()>& action)
    {
        bool isFull = false;
        setOutboxStepHook([&](const std::string& step) {
            // To go on needs no room.
            if (step.starts_with("go on") || count-- != 0)
                return;
            isFull = true;
            throw Error("the disk is full");
        });
        action();
        setOutboxStepHook({});
        return isFull;
    }
};

TEST_F(JobDeliveryTest, AJobThatIsCancelledBeforeAByteWentOutIsWhatItWas)
{
    PrintListener device(Manner::takesAll);
    Outbox outbox = open();
    const int number = put(outbox, draftFor(deviceAt(device.port())));
    Transfer transfer;
    transfer.cancelled = [] { return true; };
    const HandoverEnd end = outbox.handOver(number, noon, transfer);
    EXPECT_TRUE(end.cancelled);
    EXPECT_EQ(end.state, OutboxState::waiting);
    EXPECT_EQ(outbox.job(number).state, OutboxState::waiting);
    EXPECT_EQ(outbox.job(number).note, "");
    EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::handedOver);
}

TEST_F(JobDeliveryTest, AFileThatIsCancelledIsNotWritten)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(FileTarget{path("fax.ps")}));
    Transfer transfer;
    transfer.cancelled = [] { return true; };
    EXPECT_EQ(outbox.handOver(number, noon, transfer).state, OutboxState::waiting);
    EXPECT_THAT(namesInFolder(), ElementsAre("state"));
}

TEST_F(JobDeliveryTest, ADeviceThatBreaksOffMakesItUncertain)
{
    PrintListener device(Manner::resets, 1000);
    Outbox outbox = open();
    OutboxDraft draft = draftFor(deviceAt(device.port()));
    draft.isUnattended = false;
    const int number = put(outbox, draft, bytesOfEveryValue(5'000'000));
    const HandoverEnd end = outbox.handOver(number, noon);
    EXPECT_EQ(end.state, OutboxState::uncertain);
    EXPECT_EQ(outbox.job(number).state, OutboxState::uncertain);
    EXPECT_EQ(outbox.job(number).note, end.trouble);
    EXPECT_TRUE(outbox.job(number).hasStream);
}

TEST_F(JobDeliveryTest, WhatIsUncertainStaysSoWhenItCannotBeSentAgain)
{
    Outbox outbox = open();
    OutboxDraft draft = draftFor(FileTarget{path("fax.ps")});
    for (const bool isUnattended : {true, false}) {
        PrintListener device(Manner::resets, 1000);
        draft.target = deviceAt(device.port());
        draft.isUnattended = isUnattended;
        const int number = put(outbox, draft, bytesOfEveryValue(5'000'000));
        ASSERT_EQ(outbox.handOver(number, noon).state, OutboxState::uncertain);
        const std::string note = outbox.job(number).note;
        device.stop();
        Transfer transfer;
        transfer.cancelled = [] { return true; };
        const HandoverEnd cancelled = outbox.handOver(number, noon, transfer);
        EXPECT_TRUE(cancelled.cancelled);
        EXPECT_EQ(cancelled.state, OutboxState::uncertain);
        EXPECT_EQ(outbox.job(number).note, note) << "it is what it was";
        fs::remove(outboxFolder + "/jobs/" + std::to_string(number) + "/stream");
        EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::uncertain) << "nothing of it went out";
        EXPECT_EQ(outbox.job(number).state, OutboxState::uncertain);
        EXPECT_THAT(outbox.job(number).note, HasSubstr("stream"));
    }
}

TEST_F(JobDeliveryTest, ADeviceThatRefusesHasNothing)
{
    const servers::RefusedPort refused(servers::Transport::tcp);
    Outbox outbox = open();
    const int number = put(outbox, draftFor(deviceAt(refused.port())));
    EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::failed);
}

TEST_F(JobDeliveryTest, WithAFullDiskAtEachStepWhatIsToldOfAFileIsTrue)
{
    LogCapture capture;
    int count = 0;
    for (bool isFull = true; isFull && !HasFailure(); ++count) {
        fs::remove_all(outboxFolder);
        fs::remove(path("fax.ps"));
        {
            Outbox outbox = open();
            put(outbox, draftFor(FileTarget{path("fax.ps")}));
            std::optional<HandoverEnd> end;
            isFull = isFullAt(count, [&] { errorLine([&] { end = outbox.handOver(1, noon); }); });
            const bool isTold = end && end->state == OutboxState::handedOver;
            EXPECT_EQ(fs::exists(path("fax.ps")), isTold) << count;
        }
        Outbox outbox = open();
        outbox.settleOrphans(noon);
        const auto state = outbox.job(1).state;
        EXPECT_EQ(state == OutboxState::handedOver, fs::exists(path("fax.ps"))) << count;
        EXPECT_THAT(state, AnyOf(OutboxState::waiting, OutboxState::failed, OutboxState::handedOver))
            << count;
        fs::remove(path("fax.ps"));
        EXPECT_THAT(namesInFolder(), ElementsAre("state")) << count;
    }
    EXPECT_GE(count, 8);
}

TEST_F(JobDeliveryTest, WithAFullDiskAtEachStepAJobIsPutInOrNothingIsLeft)
{
    int count = 0;
    for (bool isFull = true; isFull && !HasFailure(); ++count) {
        fs::remove_all(outboxFolder);
        open();
        std::string line;
        isFull = isFullAt(count, [&] {
            line = errorLine([&] {
                Outbox outbox = open();
                put(outbox, draftFor(FileTarget{path("fax.ps")}), streamWithCard(Pdl::dsc, "4929"));
            });
        });
        if (open().jobs().empty()) {
            EXPECT_EQ(line, "the disk is full");
            EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new")) << count;
        }
    }
    EXPECT_GE(count, 4);
}

TEST_F(JobDeliveryTest, ADiskThatFillsUpIsOneSentenceAndLeavesNothing)
{
    open();
    for (const rlim_t limit : {rlim_t{100'000}, rlim_t{4096}, rlim_t{0}}) {
        const FileSizeLimit full(limit);
        const std::string line = errorLine([&] {
            Outbox outbox = open();
            put(outbox, draftFor(FileTarget{path("fax.ps")}),
                limit == 4096 ? std::string(2000, 'x') : bytesOfEveryValue(300'000));
        });
        EXPECT_THAT(line, HasSubstr("outbox")) << limit;
        EXPECT_THAT(line, Not(HasSubstr("\n")));
        EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new")) << limit;
    }
    Outbox outbox = open();
    EXPECT_THAT(outbox.jobs(), IsEmpty());
    EXPECT_EQ(put(outbox, draftFor(FileTarget{path("fax.ps")})), 1);
}

} // namespace
} // namespace quelm::tests
