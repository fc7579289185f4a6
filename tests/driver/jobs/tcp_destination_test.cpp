// Tests of sending jobs to devices: good ones, and ones that fail in every manner.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/tcp_destination.h"

#include "tests/driver/jobs/job_support.h"
#include "tests/servers/print_listener.h"
#include "tests/servers/refused_port.h"
#include "tests/servers/slapd_server.h"

#include <gmock/gmock.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using servers::Ending;
using servers::Manner;
using servers::PrintListener;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

/// More than the buffers between sender and device have room for.
constexpr std::size_t largeSize = std::size_t{24} << 20U;

class TcpDestinationTest : public JobTest {
protected:
    // A program that does not ignore the signal of a broken connection must not die of it.
    TcpDestinationTest()
    {
        struct sigaction usual = {};
        usual.sa_handler = SIG_DFL;
        ::sigaction(SIGPIPE, &usual, &pipeBefore_);
    }
    ~TcpDestinationTest() override { ::sigaction(SIGPIPE, &pipeBefore_, nullptr); }

    Receipt send(const std::string& bytes, const std::string& address)
    {
        const auto destination = openDevice(parseNetworkAddress(address), limits);
        destination->sink().write(bytes);
        return destination->deliver(transfer);
    }

    std::string failureOf(const std::string& bytes, const std::string& address)
    {
        return certainLine([&] { send(bytes, address); });
    }

    std::string doubtOf(const std::string& bytes, const std::string& address)
    {
        return doubtLine([&] { send(bytes, address); });
    }

    /// The number in "... after NUMBER of TOTAL bytes ..."
    static std::size_t bytesIn(const std::string& line)
    {
        const auto place = line.find("after ");
        return place == std::string::npos ? 0 : std::stoul(line.substr(place + 6));
    }

    Transfer transfer;
    DeviceLimits limits;

private:
    struct sigaction pipeBefore_ = {};
};

TEST_F(TcpDestinationTest, ADeviceGetsTheJobByteForByte)
{
    PrintListener device(Manner::takesAll);
    for (const std::size_t size : {std::size_t{1}, std::size_t{1000}, std::size_t{65536}, largeSize}) {
        const auto bytes = bytesOfEveryValue(size);
        const auto receipt = send(bytes, device.address());
        EXPECT_EQ(receipt.place, "device " + device.address());
        EXPECT_EQ(receipt.note, "");
        EXPECT_EQ(device.waitForEnding(), Ending::closed);
        EXPECT_TRUE(device.received() == bytes) << size;
    }
    EXPECT_EQ(device.connections(), 4);
}

TEST_F(TcpDestinationTest, AnEmptyJobIsAConnectionWithoutBytes)
{
    PrintListener device(Manner::takesAll);
    send("", device.address());
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), "");
}

TEST_F(TcpDestinationTest, NothingIsSentBeforeTheJobIsComplete)
{
    PrintListener device(Manner::takesAll);
    openDevice(parseNetworkAddress(device.address()), limits)->sink().write("half a jo");
    EXPECT_EQ(device.connections(), 0);
}

TEST_F(TcpDestinationTest, ADeviceOnIpv6GetsTheJob)
{
    if (!servers::hasIpv6()) {
        EXPECT_THAT(failureOf("the job", "[::1]:9100"), StartsWith("device [::1]:9100: cannot be"));
        return;
    }
    PrintListener device(Manner::takesAll, 0, true);
    EXPECT_EQ(send("the job", device.address()).place, "device " + device.address());
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), "the job");
}

TEST_F(TcpDestinationTest, ADeviceIsFoundByItsName)
{
    PrintListener device(Manner::takesAll);
    const auto name = "localhost:" + std::to_string(device.port());
    EXPECT_EQ(send("the job", name).place, "device " + name);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), "the job");
}

TEST_F(TcpDestinationTest, ProgressCountsWhatTheDeviceHasTaken)
{
    constexpr std::size_t accepted = 100'000;
    PrintListener device(Manner::stalls, accepted);
    limits.stall = 300ms;
    std::vector<std::uint64_t> seen;
    transfer.progress = [&](std::uint64_t done, std::uint64_t total) {
        EXPECT_EQ(total, largeSize);
        seen.push_back(done);
    };
    doubtOf(bytesOfEveryValue(largeSize), device.address());
    ASSERT_GE(seen.size(), 2U);
    EXPECT_EQ(seen.front(), 0U);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    EXPECT_GE(seen.back(), accepted);
    // The system on this side had room for megabytes more.
    EXPECT_LT(seen.back(), accepted + 1'000'000);

    PrintListener other(Manner::takesAll);
    send(bytesOfEveryValue(largeSize), other.address());
    EXPECT_EQ(seen.back(), largeSize);
}

TEST_F(TcpDestinationTest, WhatADeviceAnswersIsReadAndDropped)
{
    PrintListener device(Manner::answersFirst);
    const auto bytes = bytesOfEveryValue(100'000);
    send(bytes, device.address());
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_TRUE(device.received() == bytes);
}

TEST_F(TcpDestinationTest, ASlowDeviceIsNotAStalledOne)
{
    PrintListener device(Manner::slow);
    limits.stall = 400ms;
    const auto bytes = bytesOfEveryValue(1'000'000);
    const auto start = std::chrono::steady_clock::now();
    send(bytes, device.address());
    EXPECT_GT(std::chrono::steady_clock::now() - start, limits.stall)
        << "the job was too short for this test";
    EXPECT_TRUE(device.received() == bytes);
}

TEST_F(TcpDestinationTest, AStalledDeviceIsWaitedForWithinTheLimit)
{
    PrintListener device(Manner::stalls, 5000);
    limits.stall = 300ms;
    const auto start = std::chrono::steady_clock::now();
    const auto line = doubtOf(bytesOfEveryValue(largeSize), device.address());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
    EXPECT_THAT(line, StartsWith("device " + device.address() + ": took nothing for 300 ms, after "));
    EXPECT_THAT(line,
                HasSubstr(" of " + std::to_string(largeSize) + " bytes of the job; look at the device"));
    EXPECT_GE(bytesIn(line), 5000U);
    EXPECT_LT(bytesIn(line), largeSize);
    EXPECT_EQ(device.waitForEnding(), Ending::reset) << "a close would tell it that the job ends here";
}

TEST_F(TcpDestinationTest, ADeviceThatClosesEarlyIsTold)
{
    PrintListener device(Manner::closes, 5000);
    const auto line = doubtOf(bytesOfEveryValue(largeSize), device.address());
    EXPECT_THAT(line, StartsWith("device " + device.address() + ": broke off the connection after "));
    EXPECT_THAT(line, HasSubstr(" of " + std::to_string(largeSize) +
                                " bytes of the job; look at the device, then send the job again"));
    EXPECT_LT(bytesIn(line), largeSize);
}

TEST_F(TcpDestinationTest, ADeviceThatResetsTheConnectionIsTold)
{
    PrintListener device(Manner::resets, 5000);
    const auto line = doubtOf(bytesOfEveryValue(largeSize), device.address());
    EXPECT_THAT(line, StartsWith("device " + device.address() + ": broke off the connection after "));
    EXPECT_GE(bytesIn(line), 5000U);
    EXPECT_LT(bytesIn(line), largeSize);
}

TEST_F(TcpDestinationTest, ADeviceThatHasClosedItsSideAheadIsStillWatched)
{
    for (const std::size_t size : {std::size_t{60'000}, largeSize}) {
        PrintListener device(Manner::halfClosesThenResets, 100);
        limits.stall = 3s;
        EXPECT_THAT(doubtOf(bytesOfEveryValue(size), device.address()),
                    StartsWith("device " + device.address() + ": broke off the connection after "));
    }
}

TEST_F(TcpDestinationTest, ADeviceThatStallsOnTheLastBytesIsNotLetBe)
{
    PrintListener device(Manner::stalls, 1);
    limits.close = 50ms;
    limits.stall = 500ms;
    EXPECT_THAT(doubtOf(bytesOfEveryValue(60'000), device.address()),
                HasSubstr(": took nothing for 500 ms, after "));
}

TEST_F(TcpDestinationTest, AResetBehindTheLastByteIsToldAsDoubt)
{
    PrintListener device(Manner::resetsAtTheEnd);
    EXPECT_EQ(doubtOf(bytesOfEveryValue(1000), device.address()),
              "device " + device.address() +
                  ": broke off the connection after all 1000 bytes of the job, and may have dropped it; look "
                  "at the device before sending it again");
}

TEST_F(TcpDestinationTest, ADeviceThatClosesOnAShortJobIsTold)
{
    PrintListener device(Manner::closes, 10);
    EXPECT_THAT(doubtOf(bytesOfEveryValue(1000), device.address()),
                StartsWith("device " + device.address() + ": broke off the connection after all 1000 bytes"));
}

TEST_F(TcpDestinationTest, ADeviceThatNeverClosesIsLetBe)
{
    PrintListener device(Manner::neverCloses);
    limits.close = 200ms;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(send("the job", device.address()).place, "device " + device.address());
    const auto taken = std::chrono::steady_clock::now() - start;
    EXPECT_GE(taken, 200ms);
    EXPECT_LT(taken, 8s);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    device.stop();
    EXPECT_EQ(device.waitForEnding(), Ending::closed) << "a reset would take back what it has not read yet";
    EXPECT_EQ(device.received(), "the job");
}

TEST_F(TcpDestinationTest, ADeviceThatIsNotThereIsOneLine)
{
    const servers::RefusedPort refused(servers::Transport::tcp);
    const auto address = refused.address();
    EXPECT_EQ(failureOf("the job", address),
              "device " + address +
                  ": refuses the connection; check the port, and whether the device is ready for jobs");
    EXPECT_EQ(failureOf("the job", "127.255.255.255"),
              "device 127.255.255.255:9100: cannot be reached (Network is unreachable); check the address "
              "and the network");
    EXPECT_EQ(failureOf("the job", "unknown.test"),
              "device unknown.test:9100: there is no host of that name; check the name");
}

TEST_F(TcpDestinationTest, ACancelledJobIsBrokenOffAndSaysWhatWentOut)
{
    PrintListener device(Manner::stalls, 5000);
    transfer.cancelled = [&] { return device.received().size() == 5000; };
    const auto start = std::chrono::steady_clock::now();
    const auto line = doubtOf(bytesOfEveryValue(largeSize), device.address());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
    EXPECT_THAT(line,
                MatchesRegex("device .*: the job was cancelled after [0-9]+ of " + std::to_string(largeSize) +
                             " bytes; look at the device whether it does something with them"));
    EXPECT_GE(bytesIn(line), 5000U);
    EXPECT_EQ(device.waitForEnding(), Ending::reset) << "a close would tell it that the job ends here";
}

TEST_F(TcpDestinationTest, WhatWasNotBegunIsNotInDoubt)
{
    PrintListener device(Manner::takesAll);
    bool begun = false;
    transfer.progress = [&begun](std::uint64_t, std::uint64_t) { begun = true; };
    transfer.cancelled = [&begun] { return begun; };
    EXPECT_EQ(failureOf("the job", device.address()),
              "device " + device.address() + ": the job was cancelled before anything of it went out");
    transfer = {};
    transfer.progress = [this](std::uint64_t, std::uint64_t) { emptyUnnamedFiles(); };
    EXPECT_EQ(failureOf("the job", device.address()),
              "the temporary copy of the job became shorter while it was sent; send it again");
    EXPECT_EQ(device.waitForEnding(), Ending::reset);
    EXPECT_EQ(device.received(), "");
}

TEST_F(TcpDestinationTest, BytesThatTheDeviceHasNotAcknowledgedAreInDoubtToo)
{
    // It reads nothing; the systems on both sides take the job all the same.
    PrintListener device(Manner::stalls, 0);
    std::uint64_t looks = 0;
    transfer.cancelled = [&] { return ++looks > 3; };
    EXPECT_THAT(doubtOf("the job", device.address()),
                MatchesRegex("device .* of 7 bytes; look at the device .*"));
}

TEST_F(TcpDestinationTest, ACancellationIsHeededWhileTheDeviceDoesNotClose)
{
    PrintListener device(Manner::neverCloses);
    limits.close = 60s;
    transfer.cancelled = [&] { return device.received() == "the job"; };
    EXPECT_THAT(doubtOf("the job", device.address()), HasSubstr("cancelled after 7 of 7 bytes"));
}

TEST_F(TcpDestinationTest, ATemporaryCopyThatIsDamagedBreaksOffTheJob)
{
    PrintListener device(Manner::takesAll);
    transfer.progress = [this](std::uint64_t done, std::uint64_t) {
        if (done > 0)
            emptyUnnamedFiles();
    };
    EXPECT_EQ(doubtOf(bytesOfEveryValue(largeSize), device.address()),
              "the temporary copy of the job became shorter while it was sent; send it again");
    EXPECT_EQ(device.waitForEnding(), Ending::reset) << "a close would tell it that the job ends here";
}

TEST_F(TcpDestinationTest, AProcessThatIsKilledBreaksOffItsJob)
{
    PrintListener device(Manner::stalls, 5000);
    const pid_t child = ::fork();
    if (child == 0) {
        doubtOf(bytesOfEveryValue(largeSize), device.address());
        ::_exit(0);
    }
    EXPECT_TRUE(device.waitForBytes(5000));
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the job ended before the process";
    EXPECT_EQ(device.waitForEnding(), Ending::reset) << "a close would tell it that the job ends here";
}

TEST_F(TcpDestinationTest, SignalsDoNotDisturbAJob)
{
    static volatile std::sig_atomic_t signals = 0;
    signals = 0;
    struct sigaction counting = {};
    counting.sa_handler = [](int) { signals = signals + 1; };
    struct sigaction before = {};
    ::sigaction(SIGALRM, &counting, &before);
    const itimerval often{{0, 500}, {0, 500}};
    const itimerval never{};
    PrintListener device(Manner::slow);
    const auto bytes = bytesOfEveryValue(500'000);
    ::setitimer(ITIMER_REAL, &often, nullptr);
    const auto line = failureOf(bytes, device.address());
    ::setitimer(ITIMER_REAL, &never, nullptr);
    ::sigaction(SIGALRM, &before, nullptr);
    EXPECT_EQ(line, "");
    EXPECT_GT(signals, 10);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_TRUE(device.received() == bytes);
}

} // namespace
} // namespace quelm::tests
