// Tests of the way of a fax from the component to its destination, now or later.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/submission.h"

#include "driver/outbox/outbox_worker.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/servers/print_listener.h"
#include "tests/servers/refused_port.h"
#include "tests/support/log_capture.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <filesystem>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using servers::Manner;
using servers::PrintListener;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = SubmissionEnd::Kind;

class SubmissionTest : public OutboxTest {
protected:
    SubmissionTest() { session.cover = true; }

    SubmissionEnd submitTo(const JobTarget& target, std::optional<std::time_t> sendAt = {}, int keepDays = 30,
                           bool toOutbox = false)
    {
        Outbox outbox = open(keepDays);
        Submission submission;
        submission.target = target;
        submission.user = "ann";
        submission.sendAt = sendAt;
        submission.toOutbox = toOutbox;
        submission.options = {{"LanFax Resolution", "1"}};
        return submit(&outbox, session, document, submission, someFacts(), noon, {},
                      [this] { ++timesWritten; });
    }

    std::string job() { return writtenJob(session, document, Pdl::dsc); }

    Document document = Document::open(file("letter.ps", postScriptPages({"One"})));
    FakeFaxSession session;
    int timesWritten = 0;
};

TEST_F(SubmissionTest, AJobForADeviceGoesOutAndIsKept)
{
    PrintListener device(Manner::takesAll);
    const SubmissionEnd end = submitTo(deviceAt(device.port()));
    EXPECT_EQ(end.kind, Kind::handedOver);
    EXPECT_EQ(end.receipt.place, "device " + device.address());
    EXPECT_EQ(end.number, 1);
    EXPECT_EQ(timesWritten, 1);
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    EXPECT_EQ(device.received(), job());
    const OutboxJob kept = jobOf(1);
    EXPECT_EQ(kept.state, OutboxState::handedOver);
    EXPECT_EQ(kept.title, "letter.ps");
    EXPECT_EQ(kept.user, "ann");
    EXPECT_EQ(kept.recipients, session.recipients());
    EXPECT_EQ(kept.options.at("LanFax Resolution"), "1");
    EXPECT_EQ(contentOf(kept.documentPath), postScriptPages({"One"}));
}

TEST_F(SubmissionTest, WhereNothingIsKeptAJobForADeviceGoesOutAllTheSame)
{
    PrintListener device(Manner::takesAll);
    EXPECT_EQ(submitTo(deviceAt(device.port()), {}, 0).number, 0);
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    EXPECT_EQ(device.received(), job());
    EXPECT_THAT(open(30).jobs(), IsEmpty());
}

TEST_F(SubmissionTest, AFileAtOnceIsNotKept)
{
    EXPECT_EQ(submitTo(FileTarget{path("fax.ps")}).number, 0);
    EXPECT_EQ(contentOf(path("fax.ps")), job());
    EXPECT_THAT(open().jobs(), IsEmpty());
}

TEST_F(SubmissionTest, AFileForLaterWaitsAndIsTheSameThen)
{
    const SubmissionEnd end = submitTo(FileTarget{path("fax.ps")}, noon + 60);
    EXPECT_EQ(end.kind, Kind::waiting);
    EXPECT_EQ(end.due, noon + 60);
    EXPECT_FALSE(fs::exists(path("fax.ps")));
    Outbox outbox = open();
    EXPECT_EQ(outbox.handOver(end.number, noon + 60).state, OutboxState::handedOver);
    EXPECT_EQ(contentOf(path("fax.ps")), job());
}

TEST_F(SubmissionTest, ARelativePathMeansTheFolderOfThatTime)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder());
    submitTo(FileTarget{"fax.ps"}, noon + 60);
    fs::current_path(before);
    EXPECT_EQ(std::get<FileTarget>(jobOf(1).target).path, path("fax.ps"));
}

TEST_F(SubmissionTest, AFileThatCannotBeWrittenIsToldAtOnce)
{
    EXPECT_THAT(errorLine([&] { submitTo(FileTarget{path("missing/fax.ps")}, noon + 60); }),
                HasSubstr("missing"));
    EXPECT_THAT(errorLine([&] { submitTo(FileTarget{path("letter.ps")}, noon + 60); }),
                HasSubstr("is the document itself"));
    EXPECT_THAT(open().jobs(), IsEmpty());
}

TEST_F(SubmissionTest, StandardOutputCannotWait)
{
    EXPECT_THAT(errorLine([&] { submitTo(FileTarget{"-"}, noon + 60); }), HasSubstr("standard output"));
    EXPECT_THAT(errorLine([&] { submitTo(FileTarget{"-"}, {}, 30, true); }), HasSubstr("standard output"));
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle reader(ends[0]);
    const FileHandle writer(ends[1]);
    const std::string open = "/dev/fd/" + std::to_string(writer.get());
    EXPECT_THAT(errorLine([&] { submitTo(FileTarget{open}, noon + 60); }), HasSubstr("standard output"));
}

TEST_F(SubmissionTest, AMomentThatIsPastMeansAtOnce)
{
    PrintListener device(Manner::takesAll);
    EXPECT_EQ(submitTo(deviceAt(device.port()), noon).kind, Kind::handedOver);
    EXPECT_EQ(device.connections(), 1);
}

TEST_F(SubmissionTest, ADeviceForLaterIsNotConnectedTo)
{
    PrintListener device(Manner::takesAll);
    EXPECT_EQ(submitTo(deviceAt(device.port()), noon + 1).kind, Kind::waiting);
    EXPECT_EQ(device.connections(), 0);
}

TEST_F(SubmissionTest, TheOutboxTakesAnyJobAndAWorkerSendsIt)
{
    const SubmissionEnd end = submitTo(FileTarget{path("fax.ps")}, {}, 30, true);
    EXPECT_EQ(end.kind, Kind::waiting);
    EXPECT_FALSE(fs::exists(path("fax.ps")));
    Outbox outbox = open();
    OutboxWorker::start({outboxFolder, 30}, WorkerKind::command)->sendDue(outbox, noon, {}, {});
    EXPECT_EQ(contentOf(path("fax.ps")), job());
}

TEST_F(SubmissionTest, AJobThatFailsLeavesNoRecord)
{
    const servers::RefusedPort refused(servers::Transport::tcp);
    EXPECT_THAT(errorLine([&] { submitTo(deviceAt(refused.port())); }), HasSubstr("refuse"));
    EXPECT_THAT(open().jobs(), IsEmpty());
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

TEST_F(SubmissionTest, AJobThatCannotBeWrittenLeavesNothing)
{
    session.writesCoverPage = false;
    PrintListener device(Manner::takesAll);
    EXPECT_THAT(errorLine([&] { submitTo(deviceAt(device.port())); }), HasSubstr("cover page"));
    EXPECT_EQ(device.connections(), 0);
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

TEST_F(SubmissionTest, AJobThatHasToWaitNeedsTheOutbox)
{
    Submission submission;
    submission.target = deviceAt(9100);
    submission.sendAt = noon + 60;
    EXPECT_THAT(errorLine([&] { submit(nullptr, session, document, submission, someFacts(), noon, {}); }),
                HasSubstr("no outbox"));
}

TEST_F(SubmissionTest, WithoutAnOutboxAJobGoesOutAtOnce)
{
    PrintListener device(Manner::takesAll);
    Submission submission;
    submission.target = deviceAt(device.port());
    EXPECT_EQ(submit(nullptr, session, document, submission, someFacts(), noon, {}).kind, Kind::handedOver);
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    EXPECT_EQ(device.received(), job());
}

TEST_F(SubmissionTest, WhatCannotBeKeptGoesOutAllTheSameWithAWarning)
{
    LogCapture capture;
    PrintListener device(Manner::takesAll);
    open();
    for (const std::string at : {"keep the document", "name the job's folder", "begin to hand over"}) {
        setOutboxStepHook([at](const char* step) {
            if (at == step)
                throw Error("the disk is full");
        });
        capture.messages.clear();
        const SubmissionEnd end = submitTo(deviceAt(device.port()));
        EXPECT_EQ(end.kind, Kind::handedOver);
        EXPECT_EQ(end.number, 0);
        EXPECT_THAT(capture.messages, ElementsAre("the fax job is not kept: the disk is full")) << at;
        setOutboxStepHook({});
        EXPECT_THAT(open().jobs(), IsEmpty()) << at;
        EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new")) << at;
    }
    EXPECT_EQ(device.connections(), 3);
}

} // namespace
} // namespace quelm::tests
