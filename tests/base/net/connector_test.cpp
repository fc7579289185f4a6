// Connections that stand within bounds, or not at all.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/connector.h"

#include "base/net/look_up.h"
#include "tests/servers/listeners.h"
#include "tests/servers/refused_port.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using Addresses = std::vector<SocketAddress>;
using Clock = std::chrono::steady_clock;
using Errors = std::vector<int>;
using Kind = ConnectResult::Kind;
using servers::FullListener;
using servers::SilentListener;

Addresses at(const std::string& host, int port)
{
    return lookUp({host, static_cast<std::uint16_t>(port)}, SOCK_STREAM, Clock::now() + 10s).addresses;
}

/// Nobody listens there.
Addresses refusing()
{
    static const servers::RefusedPort refused(servers::Transport::tcp);
    return at("127.0.0.1", refused.port());
}

/// A broadcast address of this machine: no TCP connection can be made to it.
Addresses unreachable() { return at("127.255.255.255", 9100); }

Addresses joined(Addresses first, const Addresses& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

ConnectLimits together(std::chrono::milliseconds time) { return {Clock::now() + time, {}}; }
ConnectLimits each(std::chrono::milliseconds time) { return {{}, time}; }

class ConnectorTest : public testing::Test {
protected:
    Addresses listening() const { return at("127.0.0.1", listener.port()); }
    Addresses full() const { return at("127.0.0.1", busy.port()); }
    std::chrono::milliseconds taken() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
    }

    const SilentListener listener;
    const FullListener busy;
    const Clock::time_point start = Clock::now();
};

TEST_F(ConnectorTest, ReachesAnAddressAndAName)
{
    EXPECT_EQ(connectToAny(listening(), together(5s)).kind, Kind::connected);
    EXPECT_EQ(connectToAny(at("localhost", listener.port()), each(5s)).kind, Kind::connected);
    EXPECT_EQ(connectToAny(listening(), {}).kind, Kind::connected);
}

TEST_F(ConnectorTest, TheSocketNeverBlocksAndStaysWithThisProgram)
{
    const auto result = connectToAny(listening(), together(5s));
    ASSERT_TRUE(result.connection.isOpen());
    EXPECT_NE(::fcntl(result.connection.get(), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(::fcntl(result.connection.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(ConnectorTest, ARefusalIsKnownAtOnce)
{
    const auto result = connectToAny(refusing(), together(5s));
    EXPECT_EQ(result.kind, Kind::failed);
    EXPECT_EQ(result.errors, Errors{ECONNREFUSED});
    EXPECT_FALSE(result.connection.isOpen());
    EXPECT_LT(taken(), 2s);
}

TEST_F(ConnectorTest, OneAddressAfterTheOtherIsTried)
{
    const auto result = connectToAny(joined(joined(unreachable(), refusing()), listening()), each(10s));
    EXPECT_EQ(result.kind, Kind::connected);
    EXPECT_EQ(result.errors, (Errors{ENETUNREACH, ECONNREFUSED}));
}

TEST_F(ConnectorTest, TheErrorsOfAllAddressesAreGiven)
{
    const auto result = connectToAny(joined(joined(refusing(), full()), unreachable()), each(100ms));
    EXPECT_EQ(result.kind, Kind::failed);
    EXPECT_EQ(result.errors, (Errors{ECONNREFUSED, ETIMEDOUT, ENETUNREACH}));
}

TEST_F(ConnectorTest, AHostThatDoesNotAnswerIsGivenUpAtTheDeadline)
{
    EXPECT_EQ(connectToAny(full(), together(200ms)).kind, Kind::late);
    EXPECT_GE(taken(), 200ms);
    EXPECT_LT(taken(), 2200ms);
}

TEST_F(ConnectorTest, AnAddressThatDoesNotAnswerIsGivenUpAtItsLimit)
{
    const auto result = connectToAny(full(), each(300ms));
    EXPECT_EQ(result.kind, Kind::failed);
    EXPECT_EQ(result.errors, Errors{ETIMEDOUT});
    EXPECT_GE(taken(), 300ms);
    EXPECT_LT(taken(), 5s);
}

TEST_F(ConnectorTest, OfTwoBoundsTheEarlierOneHolds)
{
    EXPECT_EQ(connectToAny(full(), {Clock::now() + 60s, 100ms}).kind, Kind::failed);
    EXPECT_EQ(connectToAny(full(), {Clock::now() + 100ms, 60s}).kind, Kind::late);
    EXPECT_LT(taken(), 5s);
}

TEST_F(ConnectorTest, OneThatDoesNotAnswerIsPassedOver)
{
    EXPECT_EQ(connectToAny(joined(full(), listening()), each(100ms)).kind, Kind::connected);
}

TEST_F(ConnectorTest, OneThatDoesNotAnswerLeavesTheOthersTheirShareOfTheTime)
{
    const auto result = connectToAny(joined(full(), listening()), together(1s));
    EXPECT_EQ(result.kind, Kind::connected);
    EXPECT_EQ(result.errors, Errors{ETIMEDOUT});
    EXPECT_GE(taken(), 500ms);
    EXPECT_LT(taken(), 1s);
}

TEST_F(ConnectorTest, NothingIsTriedAfterTheDeadline)
{
    const auto result = connectToAny(listening(), together(0ms));
    EXPECT_EQ(result.kind, Kind::late);
    EXPECT_EQ(result.errors, Errors{});
}

TEST_F(ConnectorTest, TheUserNeedNotWait)
{
    int asked = 0;
    EXPECT_EQ(connectToAny(full(), each(60s), [&asked] { return ++asked == 2; }).kind, Kind::cancelled);
    EXPECT_LT(taken(), 5s);
}

} // namespace
} // namespace quelm::tests
