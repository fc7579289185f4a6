// Tests of the program that sends what waits: one at a time, in order, and what is due.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_worker.h"

#include "base/error.h"
#include "base/file_io.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/servers/print_listener.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

namespace quelm::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OutboxWorkerTest : public OutboxTest {
protected:
    OutboxSettings settings() const { return {outboxFolder, 30}; }

    std::unique_ptr<OutboxWorker> start(WorkerKind kind = WorkerKind::command) const
    {
        return OutboxWorker::start(settings(), kind);
    }

    /// Sends what is due; the numbers of what was sent.
    std::vector<int> send(std::time_t now = noon, const Transfer& transfer = {})
    {
        Outbox outbox = open();
        std::vector<int> sent;
        start()->sendDue(outbox, now, transfer, [&](const OutboxJob& job, const HandoverEnd& end) {
            EXPECT_EQ(end.state, OutboxState::handedOver) << end.trouble;
            sent.push_back(job.number);
        });
        return sent;
    }

    int putForFile(const std::string& name, std::time_t due)
    {
        Outbox outbox = open();
        return put(outbox, draftFor(FileTarget{path(name)}, due), name);
    }
};

TEST_F(OutboxWorkerTest, OneAtATimeHasTheRight)
{
    EXPECT_FALSE(OutboxWorker::living(settings()));
    EXPECT_FALSE(std::filesystem::exists(outboxFolder)) << "to ask makes nothing";
    auto worker = start(WorkerKind::desktop);
    ASSERT_NE(worker, nullptr);
    EXPECT_EQ(start(), nullptr);
    const auto presence = OutboxWorker::living(settings());
    ASSERT_TRUE(presence);
    EXPECT_EQ(presence->kind, WorkerKind::desktop);
    EXPECT_EQ(presence->process, ::getpid());
    worker.reset();
    EXPECT_FALSE(OutboxWorker::living(settings()));
    EXPECT_NE(start(), nullptr);
}

TEST_F(OutboxWorkerTest, TheRightEndsWithItsProcess)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const auto worker = start();
        writeAll(ends[1], worker != nullptr ? "y" : "n", "the pipe");
        for (;;)
            ::pause();
    }
    ::close(ends[1]);
    const FileHandle reader(ends[0]);
    char answer = ' ';
    ASSERT_EQ(readFully(reader.get(), &answer, 1, -1, "the pipe"), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_EQ(start(), nullptr);
    const auto presence = OutboxWorker::living(settings());
    ASSERT_TRUE(presence);
    EXPECT_EQ(presence->kind, WorkerKind::command);
    EXPECT_EQ(presence->process, child);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_FALSE(OutboxWorker::living(settings())) << "its words are still there, and count for nothing";
    EXPECT_NE(start(), nullptr);
}

TEST_F(OutboxWorkerTest, WordsThatNobodyWroteAreNobodys)
{
    open();
    std::ofstream(outboxFolder + "/worker") << "desktop " << ::getpid() << "\n";
    std::filesystem::permissions(outboxFolder + "/worker",
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_FALSE(OutboxWorker::living(settings()));
    EXPECT_NE(start(), nullptr);
}

TEST_F(OutboxWorkerTest, WhatIsDueGoesInTheOrderOfItsTime)
{
    EXPECT_EQ(putForFile("a", noon), 1);
    EXPECT_EQ(putForFile("b", noon + 1), 2);
    EXPECT_EQ(putForFile("c", noon - 3600), 3);
    EXPECT_EQ(putForFile("d", noon - 3601), 4);
    EXPECT_EQ(putForFile("e", noon), 5);
    EXPECT_THAT(send(), ElementsAre(3, 1, 5));
    EXPECT_THAT(send(), IsEmpty());
    EXPECT_EQ(contentOf(path("c")), "c");
    EXPECT_EQ(jobOf(2).state, OutboxState::waiting);
    EXPECT_EQ(jobOf(4).state, OutboxState::waiting) << "it asks";
    EXPECT_THAT(send(noon + 1), ElementsAre(2));
}

TEST_F(OutboxWorkerTest, AClockThatGoesBackSendsNothingTwiceOrEarly)
{
    putForFile("a", noon);
    EXPECT_THAT(send(noon - 7200), IsEmpty());
    EXPECT_THAT(send(noon), ElementsAre(1));
    EXPECT_THAT(send(noon - 7200), IsEmpty());
    EXPECT_THAT(send(noon), IsEmpty());
}

TEST_F(OutboxWorkerTest, WhatWasCancelledBetweenTwoJobsStays)
{
    putForFile("a", noon);
    putForFile("b", noon);
    putForFile("c", noon);
    Outbox outbox = open();
    Outbox other = open();
    std::vector<int> sent;
    start()->sendDue(outbox, noon, {}, [&](const OutboxJob& job, const HandoverEnd&) {
        sent.push_back(job.number);
        if (job.number == 1)
            other.cancel(2, noon);
    });
    EXPECT_THAT(sent, ElementsAre(1, 3));
    EXPECT_EQ(jobOf(2).state, OutboxState::cancelled);
}

TEST_F(OutboxWorkerTest, ACancellationStopsBetweenTwoJobs)
{
    putForFile("a", noon);
    putForFile("b", noon);
    Outbox outbox = open();
    bool isCancelled = false;
    Transfer transfer;
    transfer.cancelled = [&] { return isCancelled; };
    start()->sendDue(outbox, noon, transfer,
                     [&](const OutboxJob&, const HandoverEnd&) { isCancelled = true; });
    EXPECT_EQ(jobOf(1).state, OutboxState::handedOver);
    EXPECT_EQ(jobOf(2).state, OutboxState::waiting);
}

TEST_F(OutboxWorkerTest, WhatItsUserSendsMeanwhileGoesOutOnce)
{
    servers::PrintListener device(servers::Manner::stalls, 10);
    {
        Outbox outbox = open();
        put(outbox, draftFor(deviceAt(device.port())), bytesOfEveryValue(20'000'000));
    }
    putForFile("b", noon);
    std::atomic<bool> isOver{false};
    std::thread user([&] {
        Outbox outbox = open();
        Transfer transfer;
        transfer.cancelled = [&] { return isOver.load(); };
        outbox.handOver(1, noon, transfer);
    });
    ASSERT_TRUE(device.waitForBytes(10));
    const std::string line = "job 1 of the outbox is being handed over by another program; wait for its end";
    Outbox outbox = open();
    std::vector<int> sent;
    start()->sendDue(outbox, noon, {},
                     [&](const OutboxJob& job, const HandoverEnd&) { sent.push_back(job.number); });
    EXPECT_THAT(sent, ElementsAre(2));
    EXPECT_EQ(errorLine([&] { outbox.handOver(1, noon); }), line);
    EXPECT_EQ(errorLine([&] { outbox.cancel(1, noon); }), line);
    EXPECT_EQ(errorLine([&] { outbox.sendAgain(1, "", noon, true); }), line);
    EXPECT_EQ(outbox.job(1).state, OutboxState::handingOver);
    isOver = true;
    user.join();
    EXPECT_EQ(outbox.job(1).state, OutboxState::uncertain) << "a part of it went out";
    EXPECT_EQ(device.connections(), 1);
}

TEST_F(OutboxWorkerTest, TwoProgramsThatSendTheSameJobsSendEachOnce)
{
    servers::PrintListener device(servers::Manner::takesAll);
    constexpr int jobs = 10;
    for (int i = 0; i < jobs; ++i) {
        Outbox outbox = open();
        put(outbox, draftFor(deviceAt(device.port())));
    }
    const auto sendAll = [&] {
        Outbox outbox = open();
        for (int number = 1; number <= jobs; ++number)
            errorLine([&] { outbox.handOver(number, noon); });
    };
    std::thread one(sendAll);
    std::thread other(sendAll);
    one.join();
    other.join();
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    device.stop();
    EXPECT_EQ(device.connections(), jobs);
    for (const auto& job : open().jobs())
        EXPECT_EQ(job.state, OutboxState::handedOver);
}

TEST_F(OutboxWorkerTest, AWorkerThatDiesBetweenTwoJobsLeavesTheRestToTheNext)
{
    putForFile("a", noon);
    putForFile("b", noon);
    const pid_t child = ::fork();
    if (child == 0) {
        Outbox outbox = open();
        start()->sendDue(outbox, noon, {},
                         [](const OutboxJob&, const HandoverEnd&) { ::kill(::getpid(), SIGKILL); });
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(jobOf(1).state, OutboxState::handedOver);
    EXPECT_THAT(send(), ElementsAre(2));
}

} // namespace
} // namespace quelm::tests
