// Tests of leaving a job with a queue until its time: what servers can be trusted to, and what they do with
// it. SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/queue_hold.h"

#include "base/clock.h"
#include "driver/jobs/cups_destination.h"
#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"
#include "tests/support/kept_variable.h"
#include "tests/support/utc.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using servers::CupsdServer;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;

constexpr std::time_t hour = 3600;

TEST(HoldTime, IsTheTimeOfDayInUtcWhateverTheZone)
{
    const KeptVariable zone("TZ");
    for (const char* name : {"IST-5:30", "CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0", "UTC0"}) {
        setenv("TZ", name, 1);
        EXPECT_EQ(holdTime(utc("2026-03-29T01:30")), "01:30:00");
        EXPECT_EQ(holdTime(utc("2026-07-01T22:05") + 7), "22:05:07");
    }
}

TEST(TimeInIpp, IsReadInEveryZoneAndSeason)
{
    const KeptVariable zone("TZ");
    for (const char* name : {"IST-5:30", "CET-1CEST,M3.5.0,M10.5.0/3", "UTC0"}) {
        setenv("TZ", name, 1);
        tzset();
        const std::array<ipp_uchar_t, 11> summer{7, 234, 7, 1, 12, 30, 5, 0, '+', 0, 0};
        EXPECT_EQ(timeInIpp(summer.data()), utc("2026-07-01T12:30") + 5) << name;
        const std::array<ipp_uchar_t, 11> east{7, 234, 1, 1, 0, 30, 0, 0, '+', 5, 30};
        EXPECT_EQ(timeInIpp(east.data()), utc("2025-12-31T19:00")) << name;
        const std::array<ipp_uchar_t, 11> west{7, 234, 12, 31, 23, 30, 0, 0, '-', 5, 0};
        EXPECT_EQ(timeInIpp(west.data()), utc("2027-01-01T04:30")) << name;
    }
    EXPECT_EQ(timeInIpp(nullptr), std::nullopt);
    const std::array<ipp_uchar_t, 11> nonsense{0, 0, 13, 1, 0, 0, 0, 0, '+', 0, 0};
    EXPECT_EQ(timeInIpp(nonsense.data()), std::nullopt);
    const std::array<ipp_uchar_t, 11> noZone{7, 234, 1, 1, 0, 30, 0, 0, 0, 5, 30};
    EXPECT_EQ(timeInIpp(noZone.data()), std::nullopt);
}

/// Replaces `from` by a text of the same length.
servers::Alteration replacing(const std::string& from, const std::string& to)
{
    return [from, to](std::string& bytes) {
        for (auto at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at))
            bytes.replace(at, from.size(), to);
    };
}

void unaltered(std::string& /*bytes*/) {}

/// Puts the server's clock ahead, or back, by so many seconds.
servers::Alteration movingClock(std::time_t seconds)
{
    return [seconds](std::string& bytes) {
        const std::string name = "printer-current-time";
        const auto at = bytes.find(name);
        if (at == std::string::npos)
            return;
        auto* date = reinterpret_cast<ipp_uchar_t*>(&bytes[at + name.size() + 2]); // behind its length
        const auto shown = timeInIpp(date);
        ASSERT_TRUE(shown);
        const std::time_t moved = *shown + seconds;
        std::tm time{};
        gmtime_r(&moved, &time);
        const std::array<int, 11> parts{(time.tm_year + 1900) / 256,
                                        (time.tm_year + 1900) % 256,
                                        time.tm_mon + 1,
                                        time.tm_mday,
                                        time.tm_hour,
                                        time.tm_min,
                                        time.tm_sec,
                                        0,
                                        '+',
                                        0,
                                        0};
        for (const int part : parts)
            *date++ = static_cast<ipp_uchar_t>(part);
    };
}

class QueueHoldTest : public CupsTest {
protected:
    void start(const servers::CupsdSettings& settings)
    {
        cupsd = std::make_unique<CupsdServer>(settings);
        useServer(cupsd->address());
    }

    /// Talks to the server through a proxy from now on.
    void alter(servers::Alteration toServer, servers::Alteration toClient)
    {
        proxy = std::make_unique<servers::ServingListener>(
            servers::alteringProxy(cupsd->port(), std::move(toServer), std::move(toClient)));
        useServer(proxy->address());
    }

    /// Lets the job go as soon as the server has its document, and then does this.
    void beforeTheLastLook(const std::function<void()>& action)
    {
        directly = cupsd->address();
        transfer.progress = [this](std::uint64_t done, std::uint64_t total) { isSent = done == total; };
        const auto letGo = [this, action](std::string& bytes) {
            if (!isSent || bytes.find("requested-attributes") == std::string::npos)
                return;
            isSent = false;
            release(1);
            action();
        };
        alter(letGo, unaltered);
    }

    Receipt send(const std::string& bytes, std::time_t until)
    {
        const auto destination = openQueue({"fax", "letter.ps", "ann", "5f3a9c2e", until,
                                            [this](int job) {
                                                created.push_back(job);
                                                if (onCreated)
                                                    onCreated();
                                            }},
                                           limits);
        destination->sink().write(bytes);
        return destination->deliver(transfer);
    }

    /// The line of the HoldRefused that ends a job; of another error, behind "not refused: ".
    std::string refusal(const std::string& bytes, std::time_t until)
    {
        try {
            send(bytes, until);
        } catch (const HoldRefused& refused) {
            return refused.what();
        } catch (const Error& error) {
            return "not refused: " + std::string(error.what());
        }
        return "nothing";
    }

    ServerJob jobNow(int number)
    {
        return waitForJob(number, [](const ServerJob&) { return true; });
    }

    std::string serverName() const { return proxy ? proxy->address() : cupsd->address(); }

    const std::time_t now = std::time(nullptr);
    std::unique_ptr<CupsdServer> cupsd;
    std::unique_ptr<servers::ServingListener> proxy;
    std::atomic<bool> isSent = false;
    std::vector<int> created;
    std::function<void()> onCreated;
    Transfer transfer;
};

TEST_F(QueueHoldTest, AQueueHoldsTheJobAndPrintsItsBytesWhenItIsReleased)
{
    start({{{"fax"}}});
    const auto bytes = bytesOfEveryValue(100'000);
    const auto receipt = send(bytes, now + 6 * hour);
    EXPECT_EQ(receipt.place, "queue fax, job 1");
    EXPECT_EQ(receipt.note, "");
    EXPECT_EQ(receipt.job, 1);
    EXPECT_EQ(created, std::vector<int>{1});
    const auto job = jobNow(1);
    EXPECT_EQ(job.state, IPP_JSTATE_HELD);
    EXPECT_EQ(job.holdUntil, holdTime(now + 6 * hour));
    EXPECT_EQ(job.name, "letter.ps [quelm 5f3a9c2e]");
    EXPECT_FALSE(cupsd->wasPrinted(1));
    release(1);
    EXPECT_TRUE(cupsd->printed(1).content == bytes);
}

TEST_F(QueueHoldTest, ALocalMomentIsHeldAsItsTimeInUtc)
{
    const KeptVariable zone("TZ");
    start({{{"fax"}}});
    const std::time_t until = now + 7 * hour;
    // A zone whose clock is put forward between now and the moment.
    std::tm soon{};
    const std::time_t change = now + 3 * hour;
    gmtime_r(&change, &soon);
    const auto springs = "AAA0BBB," + std::to_string(soon.tm_yday) + "/" + std::to_string(soon.tm_hour) +
                         "," + std::to_string((soon.tm_yday + 180) % 365);
    int number = 0;
    for (const std::string& name : {std::string("IST-5:30"), springs}) {
        setenv("TZ", name.c_str(), 1);
        tzset();
        EXPECT_EQ(momentOf(localTimeAt(until)), until) << name;
        EXPECT_EQ(localTimeAt(until).tm_gmtoff - localTimeAt(now).tm_gmtoff, name == springs ? hour : 0);
        send("the job", until);
        EXPECT_EQ(jobNow(++number).holdUntil, holdTime(until)) << name;
    }
    unsetenv("TZ");
    tzset();
}

TEST_F(QueueHoldTest, AQueuesOwnChoiceToHoldGivesWayToTheTime)
{
    servers::PrinterQueue queue{"fax"};
    queue.holds = "indefinite";
    start({{queue}});
    send("the job", now + hour);
    EXPECT_EQ(jobNow(1).holdUntil, holdTime(now + hour));
    const auto destination = openQueue({"fax", "letter.ps", "ann"}, limits);
    destination->sink().write("the job");
    destination->deliver(transfer);
    EXPECT_EQ(jobNow(2).holdUntil, "indefinite") << "a job without a time is the queue's own affair";
}

TEST_F(QueueHoldTest, APausedQueueIsToldOf)
{
    servers::PrinterQueue queue{"fax"};
    queue.pausedWith = "Out of paper";
    start({{queue}});
    EXPECT_EQ(send("the job", now + hour).note, "the queue is paused (Out of paper)");
}

TEST_F(QueueHoldTest, AServerWhoseClockDiffersIsNotTrusted)
{
    start({{{"fax"}}});
    for (const std::time_t apart : {-hour, std::time_t{-90}, std::time_t{90}, 24 * hour}) {
        alter(unaltered, movingClock(apart));
        EXPECT_EQ(refusal("the job", now + hour), "queue fax: the clock of the print server " + serverName() +
                                                      " differs from this machine's by more than a minute")
            << apart;
    }
    EXPECT_TRUE(created.empty()) << "nothing is put into the queue";
    for (const std::time_t apart : {std::time_t{-40}, std::time_t{40}}) {
        alter(unaltered, movingClock(apart));
        EXPECT_EQ(refusal("the job", now + hour), "nothing") << apart;
    }
}

TEST_F(QueueHoldTest, AServerWhoseClockIsNotKnownIsNotTrusted)
{
    start({{{"fax"}}});
    alter(unaltered, replacing("printer-current-time", "printer-current-xxxx"));
    EXPECT_EQ(refusal("the job", now + hour),
              "queue fax: the print server " + serverName() + " does not say what its clock shows");
    EXPECT_TRUE(created.empty());
}

TEST_F(QueueHoldTest, TheClockIsTheProgramsOwnAlsoWhenItStandsStill)
{
    start({{{"fax"}}});
    fixClock(parseLocalTime("2024-03-09T14:05"));
    const auto line = refusal("the job", currentTime() + hour);
    releaseClock();
    EXPECT_THAT(line, EndsWith(" differs from this machine's by more than a minute"));
}

TEST_F(QueueHoldTest, AMomentThatIsTooNearOrMoreThanADayAheadIsRefused)
{
    start({{{"fax"}}});
    for (const std::time_t ahead : {-hour, std::time_t{0}, std::time_t{60}})
        EXPECT_EQ(refusal("the job", now + ahead),
                  "queue fax: there is too little time left for the print server " + serverName() +
                      " to hold the job");
    for (const std::time_t ahead : {24 * hour, 25 * hour, 40 * hour})
        EXPECT_EQ(refusal("the job", now + ahead),
                  "queue fax: the print server " + serverName() + " can hold a job for a day at most");
    EXPECT_TRUE(created.empty());
    EXPECT_EQ(refusal("the job", now + 24 * hour - 200), "nothing");
    EXPECT_EQ(jobNow(1).holdUntil, holdTime(now - 200));
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(QueueHoldTest, AServerThatIgnoresTheTimeGetsNoDocument)
{
    start({{{"fax"}}});
    // The server knows no such attribute.
    alter(replacing("job-hold-until", "job-hold-umtil"), unaltered);
    EXPECT_EQ(refusal("the job", now + hour),
              "queue fax: the print server " + serverName() + " does not hold the job until its time");
    EXPECT_EQ(created, std::vector<int>{1});
    const auto job = jobNow(1);
    EXPECT_EQ(job.state, IPP_JSTATE_CANCELED);
    EXPECT_EQ(job.wasProcessed, false);
    EXPECT_EQ(job.documents, 0);
}

TEST_F(QueueHoldTest, AServerThatTakesAnotherTimeGetsNoDocument)
{
    start({{{"fax"}}});
    const auto other = holdTime(now + 2 * hour);
    alter(replacing(holdTime(now + hour), other), unaltered);
    EXPECT_EQ(refusal("the job", now + hour),
              "queue fax: the print server " + serverName() + " does not hold the job until its time");
    EXPECT_EQ(jobNow(1).state, IPP_JSTATE_CANCELED);
    EXPECT_EQ(jobNow(1).documents, 0);
}

TEST_F(QueueHoldTest, AServerThatRefusesATimeIsAskedNothingMore)
{
    const auto answer = [](const std::string& message) {
        return "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
               std::to_string(message.size()) + "\r\n\r\n" + message;
    };
    std::tm time{};
    gmtime_r(&now, &time);
    std::string clock("\x02\x00\x00\x00\x00\x00\x00\x01\x04\x31\x00\x14printer-current-time\x00\x0b", 34);
    for (const int part : {(time.tm_year + 1900) / 256, (time.tm_year + 1900) % 256, time.tm_mon + 1,
                           time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec, 0, int{'+'}, 0, 0})
        clock += static_cast<char>(part);
    clock += '\x03';
    const std::string refused("\x02\x00\x04\x0b\x00\x00\x00\x01\x03", 9);
    servers::ServingListener picky(servers::answeringPosts({answer(clock), answer(refused)}));
    useServer(picky.address());
    EXPECT_EQ(refusal("the job", now + hour),
              "queue fax: the print server " + picky.address() + " does not hold the job until its time");
    EXPECT_TRUE(created.empty());
}

TEST_F(QueueHoldTest, AJobThatIsLetGoBeforeItsDocumentIsThereIsTakenBack)
{
    start({{{"fax"}}});
    onCreated = [this] { release(1); };
    EXPECT_EQ(refusal("the job", now + hour),
              "queue fax: the print server " + serverName() + " does not hold the job until its time");
    EXPECT_TRUE(jobNow(1).isEndedEarly());
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(QueueHoldTest, AJobThatIsNotHeldBehindItsDocumentIsTakenBack)
{
    servers::PrinterQueue queue{"fax"};
    queue.pausedWith = "wait"; // so that nothing of it is printed
    start({{queue}});
    beforeTheLastLook([] {});
    EXPECT_EQ(refusal("the job", now + hour),
              "queue fax: the print server " + serverName() + " does not hold the job until its time");
    const auto job = jobNow(1);
    EXPECT_EQ(job.state, IPP_JSTATE_CANCELED);
    EXPECT_EQ(job.documents, 1) << "it had its document";
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(QueueHoldTest, AJobThatIsPrintedTooEarlyIsInDoubt)
{
    start({{{"fax"}}});
    beforeTheLastLook([this] {
        EXPECT_EQ(waitForJob(1, [](const ServerJob& job) { return job.state == IPP_JSTATE_COMPLETED; }).state,
                  IPP_JSTATE_COMPLETED);
    });
    EXPECT_EQ(doubtLine([&] { send("the job", now + hour); }),
              "queue fax: the print server " + serverName() +
                  " does not hold the job until its time; something of job 1 may "
                  "have been printed; look at the device before sending it again");
}

TEST_F(QueueHoldTest, AServerThatFallsSilentBeforeTheDocumentLeavesADoubt)
{
    start({{{"fax"}}});
    limits.answer = 500ms;
    limits.cancel = 100ms;
    onCreated = [this] { cupsd->process().freeze(); };
    const auto line = doubtLine([&] { send("the job", now + hour); });
    cupsd->process().thaw();
    EXPECT_EQ(line,
              "queue fax: the print server " + serverName() +
                  " does not answer after 0 of 7 bytes of the job; job 1 may be left in the queue; cancel "
                  "it there before sending it again");
}

TEST_F(QueueHoldTest, AQueueThatIsNotThereIsAnErrorAndNoRefusal)
{
    start({{{"other"}}});
    EXPECT_EQ(refusal("the job", now + hour), "not refused: queue fax: the print server " + serverName() +
                                                  " knows no such queue; it has other");
}

TEST_F(QueueHoldTest, AQueueThatTakesNoJobsIsAnErrorAndNoRefusal)
{
    servers::PrinterQueue queue{"fax"};
    queue.accepting = false;
    start({{queue}});
    EXPECT_THAT(refusal("the job", now + hour),
                HasSubstr("not refused: queue fax: takes no jobs at present"));
}

TEST_F(QueueHoldTest, AServerThatCannotBeAskedIsNotTrusted)
{
    useServer(path("no-socket"));
    EXPECT_THAT(refusal("the job", now + hour),
                MatchesRegex("queue fax: the print server .* cannot be reached; .*"));
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 300ms;
    EXPECT_EQ(refusal("the job", now + hour), "queue fax: the print server " + silent.address() +
                                                  " does not answer; nothing of the job went out");
}

TEST_F(QueueHoldTest, AUserWhoCancelsIsNoRefusal)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 60s;
    std::atomic<int> asked = 0;
    transfer.cancelled = [&asked] { return ++asked > 2; };
    EXPECT_EQ(refusal("the job", now + hour),
              "not refused: queue fax: the job was cancelled; nothing of the job went out");
}

} // namespace
} // namespace quelm::tests
