// Tests of the way of a job to its destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/job_sending.h"

#include "base/clock.h"
#include "base/error.h"
#include "driver/outbox/outbox_worker.h"
#include "tests/driver/desktop/main_loop.h"
#include "tests/servers/print_listener.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstdlib>
#include <optional>
#include <vector>

namespace quelm {
namespace {

using servers::Manner;
using servers::PrintListener;
using testing::AllOf;
using testing::HasSubstr;
using Kind = SendingEnd::Kind;
using Stage = SendingProgress::Stage;

/// Takes a job as one text.
class TextSink final : public JobSink {
public:
    void write(std::string_view bytes) override { text += bytes; }
    std::string text;
};

class JobSendingTest : public testing::Test {
protected:
    JobSendingTest()
    {
        const auto letter = writeFile(folder / "letter.ps", "%!PS\nshowpage\n" + std::string(600000, '\n'));
        order.document = std::make_shared<const LoadedDocument>(loadDocument(letter, {}));
        // No timer of the user who runs the tests.
        ::setenv("PATH", folder.path().c_str(), 1);
        order.job.attributes = {
            "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n",
            "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n", "%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n",
            "%%QLMbegin\r\n%%QLMend\r\n"};
        order.job.attributesWritten = true;
        order.job.recipients.resize(1);
        order.job.recipients.front().number = "555-1234";
        order.submission.target = FileTarget{folder / "fax.job"};
        order.submission.user = "ann";
        order.outbox = {folder / "outbox"};
        order.now = currentTime();
    }

    void addCard()
    {
        order.job.attributes.back() = "%%QLMbegin\r\n%%OID_ATT_CREDIT_CARD \"4111\";\r\n%%QLMend\r\n";
        order.job.texts.creditCard = "4111";
    }

    static NetworkAddress addressOf(const PrintListener& device)
    {
        return parseNetworkAddress(device.address());
    }

    SendingEnd send(std::function<bool()> cancelled = [] { return false; })
    {
        return sendJob(order, cancelled, [this](const SendingProgress& now) { progress.push_back(now); });
    }

    std::string job() const { return contentOf(folder / "fax.job"); }

    KeptVariable searchPath{"PATH"};
    TemporaryFolder folder;
    JobOrder order;
    std::vector<SendingProgress> progress;
};

TEST_F(JobSendingTest, TheJobHoldsWhatTheComponentWroteAndTheDocument)
{
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::submitted) << end.trouble;
    EXPECT_EQ(end.result.kind, SubmissionEnd::Kind::handedOver);
    EXPECT_EQ(end.result.receipt.place, folder / "fax.job");
    EXPECT_THAT(job(), AllOf(HasSubstr("PHONE \"5551234\";\r\n"), HasSubstr("showpage")));
}

TEST_F(JobSendingTest, WhatIsLookedAtIsWhatIsSent)
{
    TextSink sink;
    writeJob(order, sink, {});
    send();
    EXPECT_EQ(sink.text, job());
    EXPECT_THROW(writeJob(order, sink, [] { return true; }), Error);
}

TEST_F(JobSendingTest, AJobWithACreditCardIsItsOwnersAlone)
{
    const auto path = writeFile(folder / "fax.job", "before");
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    addCard();
    EXPECT_EQ(send().kind, Kind::submitted);
    EXPECT_THAT(job(), HasSubstr("4111"));
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(JobSendingTest, ARecordThatIsNotTheJobsOwnIsAFailure)
{
    order.job.recipients.front().number = "555-1235";
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_THAT(end.trouble, HasSubstr("a line that does not belong there"));
}

TEST_F(JobSendingTest, ProgressIsToldOfBothStages)
{
    PrintListener device(Manner::takesAll);
    order.submission.target = addressOf(device);
    EXPECT_EQ(send().kind, Kind::submitted);
    ASSERT_GE(progress.size(), 3U);
    EXPECT_EQ(progress.front().stage, Stage::writing);
    EXPECT_GT(progress.front().total, 0U);
    EXPECT_EQ(progress.back().stage, Stage::handingOver);
    EXPECT_EQ(progress.back().done, progress.back().total);
    EXPECT_EQ(progress.back().total, device.received().size());
}

TEST_F(JobSendingTest, WhatADeviceTookIsKept)
{
    PrintListener device(Manner::takesAll);
    order.submission.target = addressOf(device);
    const auto end = send();
    ASSERT_EQ(end.kind, Kind::submitted) << end.trouble;
    const auto kept = Outbox(order.outbox).job(end.result.number);
    EXPECT_EQ(kept.state, OutboxState::handedOver);
    EXPECT_EQ(kept.title, "letter.ps");
    EXPECT_EQ(kept.recipients, order.job.recipients);
}

TEST_F(JobSendingTest, WithoutAnOutboxADeviceGetsTheJobAllTheSame)
{
    PrintListener device(Manner::takesAll);
    order.submission.target = addressOf(device);
    order.outbox = {writeFile(folder / "no folder", "")};
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::submitted) << end.trouble;
    EXPECT_EQ(end.result.number, 0);
    EXPECT_THAT(device.received(), HasSubstr("5551234"));
}

TEST_F(JobSendingTest, AJobForLaterWaitsAndSaysWhatSendsIt)
{
    order.submission.sendAt = order.now + 3600;
    const auto end = send();
    ASSERT_EQ(end.kind, Kind::submitted) << end.trouble;
    EXPECT_EQ(end.result.kind, SubmissionEnd::Kind::waiting);
    EXPECT_EQ(end.result.due, order.now + 3600);
    EXPECT_NE(end.sender, "");
    EXPECT_TRUE(end.isUnattended);
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
    EXPECT_EQ(Outbox(order.outbox).job(end.result.number).state, OutboxState::waiting);

    const auto worker = OutboxWorker::start(order.outbox, WorkerKind::desktop);
    const auto another = send();
    EXPECT_FALSE(another.isUnattended);
    EXPECT_NE(another.sender, end.sender);
}

TEST_F(JobSendingTest, AJobForLaterNeedsAnOutbox)
{
    order.submission.sendAt = order.now + 3600;
    order.outbox = {};
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_NE(end.trouble, "");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
}

TEST_F(JobSendingTest, AFailureIsTheDestinationsLine)
{
    order.submission.target = NetworkAddress{"127.0.0.1", 1};
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_THAT(end.trouble, HasSubstr("device 127.0.0.1:1"));
}

TEST_F(JobSendingTest, ADestinationThatCannotBeOpenedIsAFailure)
{
    order.submission.target = FileTarget{folder / "no such folder/fax.job"};
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_THAT(end.trouble, HasSubstr("no such folder"));
}

TEST_F(JobSendingTest, CancellingEndsTheWritingBeforeAnythingIsHandedOver)
{
    for (const bool isDevice : {false, true}) {
        PrintListener device(Manner::takesAll);
        if (isDevice)
            order.submission.target = addressOf(device);
        progress.clear();
        const auto end = send([this] { return !progress.empty(); });
        EXPECT_EQ(end.kind, Kind::cancelled);
        EXPECT_THAT(end.trouble, HasSubstr("nothing was handed over"));
        EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
        EXPECT_EQ(device.connections(), 0);
        EXPECT_TRUE(Outbox(order.outbox).jobs().empty());
    }
}

TEST_F(JobSendingTest, CancellingTheHandingOverTellsWhatTheDestinationSays)
{
    PrintListener device(Manner::neverCloses);
    order.submission.target = addressOf(device);
    const auto end = send([this] {
        return !progress.empty() && progress.back().done > 0 && progress.back().stage == Stage::handingOver;
    });
    EXPECT_EQ(end.kind, Kind::cancelled);
    EXPECT_THAT(end.trouble, HasSubstr("cancelled"));
}

TEST_F(JobSendingTest, ACancellationThatComesTooLateChangesNothing)
{
    const auto end =
        send([this] { return !progress.empty() && progress.back().stage == Stage::handingOver; });
    EXPECT_EQ(end.kind, Kind::submitted);
    EXPECT_THAT(job(), HasSubstr("showpage"));
}

TEST_F(JobSendingTest, TheMainLoopRunsWhileAJobIsSentAndCancellingIsHeardOnTheOtherThread)
{
    PrintListener device(Manner::neverCloses);
    order.submission.target = addressOf(device);
    JobSending sending;
    std::optional<SendingEnd> end;
    sending.start(order, [&](const SendingEnd& told) { end = told; });
    EXPECT_TRUE(sending.running());
    // The loop's clock wakes the loop; nothing else does while the job is on its way.
    const guint clock = g_timeout_add(
        5, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    ASSERT_TRUE(loopUntil([&] {
        const auto now = sending.progress();
        return now.stage == Stage::handingOver && now.total > 0 && now.done == now.total;
    }));
    EXPECT_FALSE(end);
    sending.cancel();
    ASSERT_TRUE(loopUntil([&] { return end.has_value(); }));
    g_source_remove(clock);
    EXPECT_EQ(end->kind, Kind::cancelled);
    EXPECT_FALSE(sending.running());
}

} // namespace
} // namespace quelm
