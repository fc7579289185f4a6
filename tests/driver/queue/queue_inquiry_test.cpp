// Tests of finding a job in its queue again, as a program that was killed left it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/queue_inquiry.h"

#include "driver/jobs/cups_destination.h"
#include "driver/queue/cups_server.h"
#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <memory>
#include <optional>
#include <utility>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using servers::CupsdServer;
using testing::HasSubstr;
using Content = QueuedJob::Content;

constexpr const char* token = "5f3a9c2e";
constexpr std::size_t largeSize = std::size_t{6} << 20U;

class QueueInquiryTest : public CupsTest {
protected:
    void start(const servers::CupsdSettings& settings)
    {
        cupsd = std::make_unique<CupsdServer>(settings);
        useServer(cupsd->address());
    }

    /// A job that goes to its queue.
    struct Sent {
        std::string title = "letter.ps";
        std::string user = "ann";
        std::string jobToken = token;
        std::optional<std::time_t> until = {};
        std::function<void(int)> created = {};
    };

    int send(const Sent& job, const std::string& bytes = "the job") const
    {
        const auto destination =
            openQueue({"fax", job.title, job.user, job.jobToken, job.until, job.created}, limits);
        destination->sink().write(bytes);
        return destination->deliver(transfer).job;
    }

    /// Sends a job in a process of its own, which kills itself on the way.
    void sendAndBeKilled(const Sent& job, const std::string& bytes = "the job") const
    {
        const pid_t child = ::fork();
        if (child == 0) {
            errorLine([&] { send(job, bytes); });
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the job ended before the process";
    }

    QueuedJob find(int number = 0, const std::string& user = "ann", const std::string& jobToken = token) const
    {
        return findQueuedJob({"fax", server}, user, jobToken, number, limits);
    }

    bool cancel(int number, const std::string& user = "ann", const std::string& jobToken = token) const
    {
        return cancelQueuedJob({"fax", server}, user, number, limits, jobToken);
    }

    void waitUntilPrinted(int number) const
    {
        const auto job =
            waitForJob(number, [](const ServerJob& told) { return told.state == IPP_JSTATE_COMPLETED; });
        ASSERT_EQ(job.state, IPP_JSTATE_COMPLETED);
    }

    const std::time_t now = std::time(nullptr);
    std::unique_ptr<CupsdServer> cupsd;
    std::string server;
    Transfer transfer;
};

/// Ends this process as its killing by another would.
void die(int /*job*/ = 0) { ::raise(SIGKILL); }

TEST_F(QueueInquiryTest, AHeldJobIsFoundByItsNumberAndByItsToken)
{
    start({{{"fax"}}});
    send({.jobToken = "other"});
    const int number = send({.until = now + 3600});
    for (const int asked : {0, number}) {
        const auto job = find(asked);
        EXPECT_EQ(job.content, Content::complete);
        EXPECT_EQ(job.number, number);
        EXPECT_TRUE(job.isHeld);
        EXPECT_FALSE(job.isCancelled);
    }
}

TEST_F(QueueInquiryTest, AJobThatWaitsInAPausedQueueIsThere)
{
    servers::PrinterQueue queue{"fax"};
    queue.pausedWith = "wait";
    start({{queue}});
    const int number = send({});
    EXPECT_EQ(find(0).content, Content::complete);
    EXPECT_FALSE(find(number).isHeld);
}

TEST_F(QueueInquiryTest, APrintedJobIsFoundInTheHistory)
{
    start({{{"fax"}}});
    const int number = send({});
    waitUntilPrinted(number);
    for (const int asked : {0, number}) {
        EXPECT_EQ(find(asked).content, Content::complete);
        EXPECT_FALSE(find(asked).isHeld);
        EXPECT_FALSE(find(asked).isCancelled);
    }
}

TEST_F(QueueInquiryTest, AServerThatForgetsHasNoPrintedJob)
{
    servers::CupsdSettings settings{{{"fax"}}};
    settings.forgetsJobs = true;
    start(settings);
    const int number = send({});
    cupsd->printed(number);
    const auto job = waitForJob(number, [](const ServerJob& told) { return told.number == 0; });
    EXPECT_EQ(job.number, 0);
    EXPECT_EQ(find(number).content, Content::absent);
    EXPECT_EQ(find().content, Content::absent);
    EXPECT_TRUE(cancel(number)) << "there is nothing to cancel any more";
}

TEST_F(QueueInquiryTest, AnotherJobOfTheNumberIsNotTheOne)
{
    start({{{"fax"}}});
    const int others = send({.user = "bob", .jobToken = "", .until = now + 3600});
    EXPECT_EQ(find(others).content, Content::absent);
    EXPECT_EQ(find().content, Content::absent) << "though it has the same title";
    const int own = send({.jobToken = "0badcafe", .until = now + 3600});
    EXPECT_EQ(find(own).content, Content::absent);
    EXPECT_TRUE(cancel(own)) << "the one that is meant is not there";
    EXPECT_TRUE(find(own, "ann", "0badcafe").isHeld) << "and this one stays";
    EXPECT_EQ(find(77).content, Content::absent);
}

TEST_F(QueueInquiryTest, AProgramThatIsKilledBeforeTheDocumentLeavesAJobWithoutIt)
{
    start({{{"fax"}}});
    sendAndBeKilled({.created = die});
    const auto job = find();
    EXPECT_EQ(job.content, Content::incomplete);
    EXPECT_EQ(job.number, 1);
    EXPECT_FALSE(job.isHeld);
    EXPECT_TRUE(cancel(job.number));
    EXPECT_EQ(find(1).content, Content::incomplete);
    EXPECT_TRUE(find(1).isCancelled);
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(QueueInquiryTest, AProgramThatIsKilledInTheMiddleOfTheDocumentLeavesAJobWithoutIt)
{
    start({{{"fax"}}});
    transfer.progress = [](std::uint64_t done, std::uint64_t) {
        if (done > 1'000'000)
            die();
    };
    for (const auto until : {std::optional<std::time_t>(), std::optional(now + 3600)})
        sendAndBeKilled({.until = until}, bytesOfEveryValue(largeSize));
    for (const int number : {1, 2}) {
        EXPECT_EQ(find(number).content, Content::incomplete);
        EXPECT_TRUE(cancel(number));
        EXPECT_FALSE(cupsd->wasPrinted(number));
    }
}

TEST_F(QueueInquiryTest, AProgramThatIsKilledBehindTheDocumentLeavesTheJob)
{
    servers::PrinterQueue queue{"fax"};
    queue.pausedWith = "wait";
    start({{queue}});
    transfer.progress = [](std::uint64_t done, std::uint64_t total) {
        if (done == total)
            die();
    };
    sendAndBeKilled({});
    // The server may take a moment for what it was sent.
    const auto job = waitForJob(1, [](const ServerJob& told) { return !told.isIncoming; });
    EXPECT_FALSE(job.isIncoming);
    EXPECT_EQ(find().content, Content::complete);
    EXPECT_EQ(find(1).content, Content::complete);
}

TEST_F(QueueInquiryTest, OfSeveralJobsWithTheTokenTheWholeOneCounts)
{
    start({{{"fax"}}});
    sendAndBeKilled({.created = die});
    const int whole = send({.until = now + 3600});
    sendAndBeKilled({.created = die});
    EXPECT_EQ(find().number, whole);
    EXPECT_EQ(find().content, Content::complete);
}

TEST_F(QueueInquiryTest, AHeldJobIsCancelledByItsOwnerOnly)
{
    start({{{"fax"}}});
    const int number = send({.until = now + 3600});
    EXPECT_FALSE(cancelQueuedJob({"fax", {}}, "bob", number, limits));
    EXPECT_TRUE(find(number).isHeld);
    EXPECT_TRUE(cancel(number));
    EXPECT_TRUE(find(number).isCancelled);
    EXPECT_TRUE(cancel(number)) << "it is cancelled already";
}

TEST_F(QueueInquiryTest, APrintedJobIsNotCancelled)
{
    start({{{"fax"}}});
    const int number = send({});
    waitUntilPrinted(number);
    EXPECT_FALSE(cancel(number));
}

TEST_F(QueueInquiryTest, AJobIsLookedForOnTheServerThatItWasSentTo)
{
    start({{{"fax"}}});
    const int number = send({.until = now + 3600});
    useServer(path("no-socket"));
    for (const std::string& place : {cupsd->address(), cupsd->socketPath()}) {
        server = place;
        EXPECT_TRUE(find(number).isHeld);
    }
    EXPECT_TRUE(cancel(number));
    server = {};
    EXPECT_THAT(errorLine([&] { find(number); }), HasSubstr(" cannot be reached"));
    EXPECT_FALSE(cancel(number));
}

TEST_F(QueueInquiryTest, AJobGoesToTheServerThatItIsFor)
{
    start({{{"fax"}}});
    useServer(path("no-socket"));
    const auto destination = openQueue(
        {.queue = "fax", .title = "letter.ps", .user = "ann", .token = token, .server = cupsd->socketPath()},
        limits);
    destination->sink().write("the job");
    EXPECT_EQ(destination->deliver(transfer).job, 1);
    EXPECT_EQ(cupsd->printed(1).content, "the job");
    EXPECT_EQ(cupsd->printed(1).title, "letter.ps [quelm 5f3a9c2e]");
}

TEST_F(QueueInquiryTest, AQueueThatIsNotThereHasNoJobs)
{
    start({{{"other"}}});
    EXPECT_EQ(find().content, Content::absent);
    EXPECT_EQ(find(1).content, Content::absent);
    start({{}});
    EXPECT_EQ(find().content, Content::absent);
}

TEST_F(QueueInquiryTest, AServerThatCannotBeAskedIsAnError)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 300ms;
    limits.cancel = 300ms;
    const auto reason = "queue fax: cannot be asked about its jobs: the print server " + silent.address() +
                        " does not answer";
    EXPECT_EQ(errorLine([&] { find(); }), reason);
    EXPECT_EQ(errorLine([&] { find(3); }), reason);
    EXPECT_FALSE(cancel(3));
    EXPECT_FALSE(cancel(3, "ann", ""));
}

/// Jobs as a server tells them, each with this name.
std::string answerWithJobs(int count, const std::string& name)
{
    std::string message("\x02\x00\x00\x00\x00\x00\x00\x01", 8);
    for (int job = 1; job <= count; ++job) {
        message += std::string("\x02\x21\x00\x06job-id\x00\x04\x00\x00", 14) + static_cast<char>(job / 256) +
                   static_cast<char>(job % 256);
        message += std::string("\x42\x00\x08job-name\x00", 12) + static_cast<char>(name.size()) + name;
    }
    message += '\x03';
    return "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
           std::to_string(message.size()) + "\r\n\r\n" + message;
}

TEST_F(QueueInquiryTest, ALongHistoryIsReadPageByPage)
{
    // Such a server begins with its first job whatever it is asked; a second page would be the first again.
    servers::ServingListener endless(servers::answeringPosts(
        {answerWithJobs(500, "letter.ps"), answerWithJobs(500, "letter.ps"), answerWithJobs(0, "")}));
    useServer(endless.address());
    EXPECT_EQ(errorLine([&] { find(); }), "queue fax: cannot be asked about its jobs: the print server " +
                                              endless.address() + " has too many jobs to look through");
    servers::ServingListener patient(
        servers::answeringPosts({answerWithJobs(500, "letter.ps"), answerWithJobs(499, "letter.ps")}));
    useServer(patient.address());
    EXPECT_EQ(find().content, Content::absent);
    const auto name = "letter.ps [quelm " + std::string(token) + "]";
    servers::ServingListener talkative(servers::answeringPosts({answerWithJobs(700, name)}));
    useServer(talkative.address());
    EXPECT_EQ(find().number, 700) << "it tells all at once";
}

} // namespace
} // namespace quelm::tests
