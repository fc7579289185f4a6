// Tests of the way of a job to its destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/job_sending.h"

#include "base/error.h"
#include "tests/driver/desktop/main_loop.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

namespace quelm {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using Kind = SendingEnd::Kind;
using Stage = SendingProgress::Stage;

/// Keeps what it was handed, as long as nothing else is asked of it.
class Keeper final : public JobDestination, private JobSink {
public:
    explicit Keeper(std::string& kept, std::function<Receipt(const Transfer&)> deliver)
        : kept_(kept), deliver_(std::move(deliver))
    {
    }
    JobSink& sink() override { return *this; }
    void restrictToOwner() override { kept_ += "(restricted)"; }
    Receipt deliver(const Transfer& transfer) override { return deliver_(transfer); }

private:
    void write(std::string_view bytes) override { kept_ += bytes; }

    std::string& kept_;
    std::function<Receipt(const Transfer&)> deliver_;
};

class JobSendingTest : public testing::Test {
protected:
    JobSendingTest()
    {
        const auto path = writeFile(folder / "letter.ps", "%!PS\nshowpage\n" + std::string(600000, '\n'));
        order.document = std::make_shared<const LoadedDocument>(loadDocument(path, {}));
        order.job.attributes = {
            "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n",
            "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n", "%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n",
            "%%QLMbegin\r\n%%QLMend\r\n"};
        order.job.attributesWritten = true;
        order.job.recipients.resize(1);
        order.job.recipients.front().number = "555-1234";
        order.open = [this](const Document&) { return std::make_unique<Keeper>(kept, deliver); };
    }

    SendingEnd send(std::function<bool()> cancelled = [] { return false; })
    {
        return sendJob(order, cancelled, [this](const SendingProgress& now) { progress.push_back(now); });
    }

    TemporaryFolder folder;
    JobOrder order;
    std::string kept;
    std::function<Receipt(const Transfer&)> deliver = [](const Transfer&) {
        return Receipt{"the place", "a note"};
    };
    std::vector<SendingProgress> progress;
};

TEST_F(JobSendingTest, TheJobHoldsWhatTheComponentWroteAndTheDocument)
{
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::handedOver);
    EXPECT_EQ(end.receipt.place, "the place");
    EXPECT_EQ(end.receipt.note, "a note");
    EXPECT_THAT(kept, AllOf(HasSubstr("PHONE \"5551234\";\r\n"), HasSubstr("showpage")));
}

TEST_F(JobSendingTest, AJobWithACreditCardIsRestrictedAheadOfItsFirstByte)
{
    send();
    EXPECT_THAT(kept, testing::Not(HasSubstr("(restricted)")));
    kept.clear();
    order.job.attributes.back() = "%%QLMbegin\r\n%%OID_ATT_CREDIT_CARD \"4111\";\r\n%%QLMend\r\n";
    EXPECT_EQ(send().kind, Kind::handedOver);
    EXPECT_THAT(kept, AllOf(testing::StartsWith("(restricted)%!PS"), HasSubstr("4111")));
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
    deliver = [](const Transfer& transfer) {
        transfer.report(5, 10);
        return Receipt{};
    };
    send();
    ASSERT_GE(progress.size(), 3U);
    EXPECT_EQ(progress.front().stage, Stage::writing);
    EXPECT_GT(progress.front().total, 0U);
    EXPECT_EQ(progress.back().stage, Stage::handingOver);
    EXPECT_EQ(progress.back().done, 5U);
    EXPECT_EQ(progress.back().total, 10U);
}

TEST_F(JobSendingTest, AFailureIsTheDestinationsLine)
{
    deliver = [](const Transfer&) -> Receipt { throw Error("the device hung up"); };
    const auto end = send();
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_EQ(end.trouble, "the device hung up");
}

TEST_F(JobSendingTest, ADestinationThatCannotBeOpenedIsAFailure)
{
    order.open = [](const Document&) -> std::unique_ptr<JobDestination> { throw Error("no such folder"); };
    EXPECT_EQ(send().trouble, "no such folder");
}

TEST_F(JobSendingTest, CancellingEndsTheWritingBeforeAnythingIsHandedOver)
{
    bool delivered = false;
    deliver = [&](const Transfer&) {
        delivered = true;
        return Receipt{};
    };
    const auto end = send([this] { return !progress.empty(); });
    EXPECT_EQ(end.kind, Kind::cancelled);
    EXPECT_THAT(end.trouble, HasSubstr("nothing was handed over"));
    EXPECT_FALSE(delivered);
}

TEST_F(JobSendingTest, CancellingTheHandingOverTellsWhatTheDestinationSays)
{
    bool cancelled = false;
    deliver = [&](const Transfer& transfer) -> Receipt {
        EXPECT_FALSE(transfer.isCancelled());
        cancelled = true;
        EXPECT_TRUE(transfer.isCancelled());
        throw Error("cancelled after 3 of 10 bytes");
    };
    const auto end = send([&] { return cancelled; });
    EXPECT_EQ(end.kind, Kind::cancelled);
    EXPECT_EQ(end.trouble, "cancelled after 3 of 10 bytes");
}

TEST_F(JobSendingTest, ACancellationThatComesTooLateChangesNothing)
{
    bool cancelled = false;
    deliver = [&](const Transfer&) {
        cancelled = true;
        return Receipt{"the place", {}};
    };
    EXPECT_EQ(send([&] { return cancelled; }).kind, Kind::handedOver);
}

TEST_F(JobSendingTest, TheMainLoopRunsWhileAJobIsSent)
{
    std::atomic<bool> release = false;
    deliver = [&](const Transfer& transfer) {
        transfer.report(1, 4);
        while (!release)
            std::this_thread::yield();
        return Receipt{};
    };
    JobSending sending;
    std::optional<SendingEnd> end;
    sending.start(order, [&](const SendingEnd& told) { end = told; });
    EXPECT_TRUE(sending.running());
    // The loop's clock wakes the loop; nothing else does while the job is on its way.
    const guint clock = g_timeout_add(
        5, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    ASSERT_TRUE(loopUntil([&] { return sending.progress().total == 4; }));
    EXPECT_FALSE(end);
    release = true;
    ASSERT_TRUE(loopUntil([&] { return end.has_value(); }));
    g_source_remove(clock);
    EXPECT_EQ(end->kind, Kind::handedOver);
    EXPECT_FALSE(sending.running());
}

TEST_F(JobSendingTest, CancellingIsHeardOnTheOtherThread)
{
    deliver = [](const Transfer& transfer) -> Receipt {
        while (!transfer.isCancelled())
            std::this_thread::yield();
        throw Error("cancelled");
    };
    JobSending sending;
    std::optional<SendingEnd> end;
    sending.start(order, [&](const SendingEnd& told) { end = told; });
    sending.cancel();
    ASSERT_TRUE(loopUntil([&] { return end.has_value(); }));
    EXPECT_EQ(end->kind, Kind::cancelled);
}

} // namespace
} // namespace quelm
