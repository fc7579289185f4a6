// Tests of print queues of a real print server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/cups_destination.h"

#include "base/error.h"
#include "driver/queue/cups_server.h"
#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <thread>
#include <utility>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using servers::CupsdServer;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr std::size_t largeSize = std::size_t{6} << 20U;

class CupsDestinationTest : public CupsTest {
protected:
    void start(const servers::CupsdSettings& settings)
    {
        cupsd = std::make_unique<CupsdServer>(settings);
        useServer(cupsd->address());
    }

    Receipt send(const std::string& bytes, const std::string& queue = "fax")
    {
        const auto destination = openQueue({queue, title, "ann", {}, {}, created}, limits);
        destination->sink().write(bytes);
        return destination->deliver(transfer);
    }

    std::string failureOf(const std::string& bytes, const std::string& queue = "fax")
    {
        return certainLine([&] { send(bytes, queue); });
    }

    std::string doubtOf(const std::string& bytes)
    {
        return doubtLine([&] { send(bytes); });
    }

    /// Does something once, when so much of the job has gone out.
    void onceSent(std::uint64_t bytes, const std::function<void()>& action)
    {
        transfer.progress = [this, bytes, action](std::uint64_t done, std::uint64_t) {
            if (done >= bytes && !acted())
                action();
        };
    }

    /// False the first time.
    bool acted() { return std::exchange(acted_, true); }

    /// A server whose word that it has the document comes once it says so of the job, and as rubbish. It
    /// never tells of the attribute `hidden`.
    std::unique_ptr<servers::ServingListener>
    losingTheLastAnswer(const std::function<bool(const ServerJob&)>& isSo, const std::string& hidden = {})
    {
        directly = cupsd->address();
        const auto isAtDocument = std::make_shared<std::atomic<bool>>(false);
        transfer.progress = [isAtDocument](std::uint64_t done, std::uint64_t) {
            if (done == 0)
                *isAtDocument = true;
        };
        const auto alter = [this, isSo, hidden, isAtDocument](std::string& bytes) {
            if (bytes.starts_with("HTTP/1.1 200") && isAtDocument->exchange(false)) {
                waitForJob(++jobsLost_, isSo);
                bytes.replace(0, 4, "XXXX");
            }
            if (const auto at = bytes.find(hidden); !hidden.empty() && at != std::string::npos)
                bytes[at] = 'X';
        };
        return std::make_unique<servers::ServingListener>(servers::alteringProxy(
            cupsd->port(), [](std::string&) {}, alter));
    }

    int stateOfJob(int job)
    {
        const Transfer none;
        CupsServer server("queue", limits, none);
        auto request = newQueueRequest(IPP_OP_GET_JOB_ATTRIBUTES, "fax", "ann");
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
        return server.ask(std::move(request), "/jobs").integer("job-state");
    }

    std::unique_ptr<CupsdServer> cupsd;
    std::string title = "letter.ps";
    std::function<void(int)> created;
    Transfer transfer;

private:
    bool acted_ = false;
    int jobsLost_ = 0;
};

TEST_F(CupsDestinationTest, TheQueuePrintsTheJobByteForByte)
{
    start({{{"fax", ""}}, {}});
    for (const std::size_t size : {std::size_t{1}, std::size_t{1000}, largeSize}) {
        const auto bytes = bytesOfEveryValue(size);
        EXPECT_THAT(send(bytes).place, MatchesRegex("queue fax, job [1-3]"));
    }
    EXPECT_EQ(cupsd->printed(1).content, bytesOfEveryValue(1));
    EXPECT_TRUE(cupsd->printed(2).content == bytesOfEveryValue(1000));
    EXPECT_TRUE(cupsd->printed(3).content == bytesOfEveryValue(largeSize));
}

TEST_F(CupsDestinationTest, PostScriptPassesNoFilter)
{
    start({{{"fax", ""}}, {}});
    const std::string job = postScriptPages({"One"});
    send(job);
    EXPECT_EQ(cupsd->printed(1).content, job);
}

TEST_F(CupsDestinationTest, AQueuesOwnDriverLeavesTheJobAlone)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.filters = true;
    start({{queue}, {}});
    const std::string job = postScriptPages({"One"});
    send(job);
    EXPECT_EQ(cupsd->printed(1).content, job);
}

TEST_F(CupsDestinationTest, TheReceiptNamesQueueAndJob)
{
    start({{{"fax", ""}, {"other", ""}}, {}});
    EXPECT_EQ(send("a job").place, "queue fax, job 1");
    const auto receipt = send("a job", "other");
    EXPECT_EQ(receipt.place, "queue other, job 2");
    EXPECT_EQ(receipt.note, "");
}

TEST_F(CupsDestinationTest, TheJobCarriesItsTitleAndItsUser)
{
    start({{{"fax", ""}}, {}});
    title = "Brief für Zoë.ps";
    send("a job");
    EXPECT_EQ(cupsd->printed(1).user, "ann");
    EXPECT_EQ(cupsd->printed(1).title, "Brief für Zoë.ps");
}

TEST_F(CupsDestinationTest, NoTitleIsTooOddForTheQueue)
{
    start({{{"fax", ""}}, {}});
    int job = 0;
    for (const std::string& odd : {std::string(), std::string("\xff\xfe"), std::string("a\nb\x01"),
                                   std::string(1000, 'x'), std::string(254, 'x') + "ü"}) {
        title = odd;
        send("a job");
        EXPECT_EQ(cupsd->printed(++job).content, "a job") << odd;
    }
}

TEST_F(CupsDestinationTest, NoBannerPageJoinsTheJob)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.banners = true;
    start({{queue}, {}});
    send("a job");
    EXPECT_EQ(cupsd->printed(1).content, "a job");
}

TEST_F(CupsDestinationTest, ProgressGoesFromNothingToTheWhole)
{
    start({{{"fax", ""}}, {}});
    std::vector<std::uint64_t> seen;
    transfer.progress = [&seen](std::uint64_t done, std::uint64_t total) {
        EXPECT_EQ(total, largeSize);
        seen.push_back(done);
    };
    send(bytesOfEveryValue(largeSize));
    ASSERT_GT(seen.size(), 10U);
    EXPECT_EQ(seen.front(), 0U);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    EXPECT_EQ(seen.back(), largeSize);
}

TEST_F(CupsDestinationTest, APausedQueueTakesTheJobAndSaysSo)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.pausedWith = "Out of paper";
    start({{queue}, {}});
    const auto receipt = send("a job");
    EXPECT_EQ(receipt.place, "queue fax, job 1");
    EXPECT_EQ(receipt.note, "the queue is paused (Out of paper)");
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(CupsDestinationTest, AQueueThatHoldsJobsByItsOwnSettingsSaysSo)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.holds = "indefinite";
    start({{queue}, {}});
    EXPECT_EQ(send("a job").note, "the queue itself holds the job (indefinite); release it there");
    EXPECT_EQ(stateOfJob(1), IPP_JSTATE_HELD);
}

TEST_F(CupsDestinationTest, AQueueThatTakesNoJobsIsOneLine)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.accepting = false;
    start({{queue}, {}});
    EXPECT_EQ(failureOf("a job"), "queue fax: takes no jobs at present; let it take them again with "
                                  "cupsaccept, or choose another queue");
}

TEST_F(CupsDestinationTest, AnUnknownQueueIsToldBesideTheKnownOnes)
{
    start({{{"fax", ""}, {"desk", ""}}, {}});
    EXPECT_EQ(failureOf("a job", "fox"),
              "queue fox: the print server " + cupsd->address() + " knows no such queue; it has desk, fax");
}

TEST_F(CupsDestinationTest, OfManyQueuesTheFirstAreNamed)
{
    servers::CupsdSettings settings;
    for (char letter = 'a'; letter <= 'k'; ++letter)
        settings.queues.push_back({std::string("q") + letter, ""});
    start(settings);
    EXPECT_THAT(failureOf("a job"), EndsWith("; it has qa, qb, qc, qd, qe, qf, qg, qh, qi, qj and more"));
}

TEST_F(CupsDestinationTest, AServerWithoutQueuesSaysSo)
{
    start({});
    EXPECT_THAT(failureOf("a job"), EndsWith(" knows no such queue; it has no queues"));
}

TEST_F(CupsDestinationTest, ANameThatNoQueueHasIsRefusedAtOnce)
{
    for (const std::string& name : {std::string(), std::string("fax\n"), std::string("a\x01")})
        EXPECT_EQ(errorLine([&] {
                      openQueue({name, "", "ann"});
                  }),
                  "a queue is named by a text without control characters; list queues with lpstat -e");
}

TEST_F(CupsDestinationTest, AServerThatDoesNotRunIsOneLine)
{
    useServer(path("no-socket"));
    EXPECT_EQ(failureOf("a job"),
              "queue fax: the print server " + path("no-socket") +
                  " cannot be reached; start CUPS, or set CUPS_SERVER to the server that has the queue");
}

TEST_F(CupsDestinationTest, AServerThatAsksForAPasswordGetsNone)
{
    start({{{"fax", ""}}, "Create-Job"});
    EXPECT_EQ(failureOf("a job"), "queue fax: the print server " + cupsd->address() +
                                      " wants a password; ask its administrator to let ann print there");
}

TEST_F(CupsDestinationTest, AUserWhoMayNotPrintThereIsTold)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.onlyFor = "bob";
    start({{queue}, {}});
    EXPECT_EQ(failureOf("a job"), "queue fax: the print server " + cupsd->address() +
                                      " does not permit it; ask its administrator to let ann print there");
}

TEST_F(CupsDestinationTest, AJobWhoseDocumentIsRefusedIsCancelled)
{
    start({{{"fax", ""}}, "Send-Document"});
    EXPECT_THAT(failureOf("a job"),
                MatchesRegex("queue fax: the print server .* wants a password after [05] of 5 bytes of the "
                             "job; job 1 was cancelled in the queue; send it again"));
    EXPECT_EQ(stateOfJob(1), IPP_JSTATE_CANCELED);
}

TEST_F(CupsDestinationTest, ASilentServerIsOneLine)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 300ms;
    EXPECT_EQ(failureOf("a job"), "queue fax: the print server " + silent.address() +
                                      " does not answer; nothing of the job went out");
}

TEST_F(CupsDestinationTest, AServerThatPausesIsNotASilentOne)
{
    start({{{"fax", ""}}, {}});
    limits.answer = 1s;
    std::atomic<int> asked = 0;
    std::atomic<bool> frozen = false;
    transfer.progress = [&](std::uint64_t done, std::uint64_t) {
        asked = 0;
        if (done < 1'000'000 || acted())
            return;
        // From here on more time has passed in all than the server may be silent for at once.
        const auto now = std::chrono::steady_clock::now();
        while (std::chrono::steady_clock::now() < now + limits.answer)
            std::this_thread::yield();
        cupsd->process().freeze();
        frozen = true;
    };
    transfer.cancelled = [&] {
        // Asked a second time without progress between: the sender waits for the server.
        if (++asked > 1 && frozen) {
            cupsd->process().thaw();
            frozen = false;
        }
        return false;
    };
    const auto bytes = bytesOfEveryValue(largeSize * 4);
    send(bytes);
    EXPECT_TRUE(cupsd->printed(1).content == bytes);
}

TEST_F(CupsDestinationTest, ACancelledJobIsCancelledInTheQueue)
{
    start({{{"fax", ""}}, {}});
    std::atomic<bool> cancel = false;
    transfer.cancelled = [&cancel] { return cancel.load(); };
    onceSent(1'000'000, [&cancel] { cancel = true; });
    EXPECT_THAT(failureOf(bytesOfEveryValue(largeSize)),
                MatchesRegex("queue fax: the job was cancelled after 1[0-9]* of " +
                             std::to_string(largeSize) +
                             " bytes of the job; job 1 was cancelled in the queue; send it again"));
    EXPECT_EQ(stateOfJob(1), IPP_JSTATE_CANCELED);
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(CupsDestinationTest, ATemporaryCopyThatIsDamagedCancelsTheJob)
{
    start({{{"fax", ""}}, {}});
    onceSent(1'000'000, [this] { emptyUnnamedFiles(); });
    EXPECT_THAT(
        failureOf(bytesOfEveryValue(largeSize)),
        MatchesRegex("queue fax: the temporary copy of the job became shorter .* after 1[0-9]* of .*; "
                     "job 1 was cancelled in the queue; send it again"));
    EXPECT_EQ(stateOfJob(1), IPP_JSTATE_CANCELED);
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(CupsDestinationTest, AJobWithoutANumberIsNoJob)
{
    // A successful answer without attributes.
    const std::string message("\x02\x00\x00\x00\x00\x00\x00\x01\x03", 9);
    servers::ServingListener odd(servers::answering(
        "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: 9\r\n\r\n" + message));
    useServer(odd.address());
    EXPECT_EQ(failureOf("a job"),
              "queue fax: the print server " + odd.address() + " gives the job no number");
}

TEST_F(CupsDestinationTest, AServerThatIsContentBeforeItHasAllHasNotTakenTheJob)
{
    const auto answer = [](const std::string& message) {
        return "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
               std::to_string(message.size()) + "\r\n\r\n" + message;
    };
    const std::string success("\x02\x00\x00\x00\x00\x00\x00\x01", 8);
    const std::string jobSeven("\x02\x21\x00\x06job-id\x00\x04\x00\x00\x00\x07", 16);
    servers::ServingListener hasty(
        servers::answeringPosts({answer(success + jobSeven + "\x03"), answer(success + "\x03")}));
    useServer(hasty.address());
    EXPECT_THAT(failureOf(bytesOfEveryValue(largeSize)),
                MatchesRegex("queue fax: the print server " + hasty.address() +
                             " did not take the rest after [0-9]+ of " + std::to_string(largeSize) +
                             " bytes of the job; job 7 was cancelled in the queue; send it again"));
}

TEST_F(CupsDestinationTest, TheNumberIsToldBeforeAnythingOfTheContentIsSent)
{
    start({{{"fax", ""}}, {}});
    std::vector<std::string> events;
    created = [&](int number) { events.push_back("created " + std::to_string(number)); };
    transfer.progress = [&](std::uint64_t done, std::uint64_t) {
        events.push_back("sent " + std::to_string(done));
    };
    send("a job");
    EXPECT_EQ(events, (std::vector<std::string>{"created 1", "sent 0", "sent 5"}));
}

TEST_F(CupsDestinationTest, AJobWhoseNumberCannotBeKeptIsCancelled)
{
    start({{{"fax", ""}}, {}});
    created = [](int) { throw Error("the list is full"); };
    EXPECT_EQ(failureOf("a job"), "the list is full");
    EXPECT_EQ(stateOfJob(1), IPP_JSTATE_CANCELED);
}

TEST_F(CupsDestinationTest, AnAnswerThatIsLostBehindTheLastByteLeavesADoubtWhenTheJobWasPrinted)
{
    start({{{"fax", ""}}, {}});
    const auto proxy =
        losingTheLastAnswer([](const ServerJob& job) { return job.state == IPP_JSTATE_COMPLETED; });
    useServer(proxy->address());
    EXPECT_THAT(doubtOf("a job"),
                MatchesRegex("queue fax: .* after 5 of 5 bytes of the job; something of job 1 may have been "
                             "printed; look at the device before sending it again"));
}

TEST_F(CupsDestinationTest, AnAnswerThatIsLostBehindTheLastByteIsNoDoubtWhenNothingWasPrinted)
{
    servers::PrinterQueue queue{"fax", ""};
    queue.pausedWith = "wait";
    start({{queue}, {}});
    const auto isThere = [](const ServerJob& job) { return !job.isIncoming; };
    const auto proxy = losingTheLastAnswer(isThere);
    useServer(proxy->address());
    EXPECT_THAT(failureOf("a job"), MatchesRegex("queue fax: .* after 5 of 5 bytes of the job; job 1 was "
                                                 "cancelled in the queue; send it again"));
    EXPECT_EQ(waitForJob(1, isThere).state, IPP_JSTATE_CANCELED);
    // A server that does not tell whether it printed may have.
    const auto silent = losingTheLastAnswer(isThere, "time-at-processing");
    useServer(silent->address());
    EXPECT_THAT(doubtOf("a job"), HasSubstr("; something of job 2 may have been printed; "));
}

TEST_F(CupsDestinationTest, AServerThatIsKilledHalfWayIsToldWithWhatIsLeft)
{
    start({{{"fax", ""}}, {}});
    onceSent(1'000'000, [this] { cupsd->process().kill(); });
    const auto line = doubtOf(bytesOfEveryValue(largeSize));
    EXPECT_THAT(line, StartsWith("queue fax: the print server " + cupsd->address() +
                                 " broke off the connection after "));
    EXPECT_THAT(line, EndsWith(" of " + std::to_string(largeSize) +
                               " bytes of the job; job 1 may be left in the queue; cancel it there before "
                               "sending it again"));
}

TEST_F(CupsDestinationTest, AServerThatFreezesHalfWayIsWaitedForWithinTheLimit)
{
    start({{{"fax", ""}}, {}});
    limits.answer = 4s;
    limits.cancel = 100ms; // much shorter, or the wait would be twice as long
    std::chrono::steady_clock::time_point frozen;
    onceSent(1'000'000, [&] {
        cupsd->process().freeze();
        frozen = std::chrono::steady_clock::now(); // not counting the job before, which a busy machine makes
                                                   // slowly
    });
    const auto line = doubtOf(bytesOfEveryValue(largeSize * 4));
    EXPECT_LT(std::chrono::steady_clock::now() - frozen, 7500ms);
    cupsd->process().thaw();
    EXPECT_THAT(line, HasSubstr(" does not answer after "));
    EXPECT_THAT(line, EndsWith("job 1 may be left in the queue; cancel it there before sending it again"));
}

} // namespace
} // namespace quelm::tests
