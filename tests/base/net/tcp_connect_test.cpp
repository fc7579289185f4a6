// Connections that are there by a deadline, or not at all.
#include "base/net/tcp_connect.h"

#include "tests/servers/listeners.h"
#include "tests/servers/name_service.h"
#include "tests/servers/server_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using quelm::ConnectError;
using quelm::ConnectProblem;
using quelm::connectTcp;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

class TcpConnectTest : public testing::Test {
protected:
    /// Why there is no connection, or nothing when there is.
    std::optional<ConnectProblem> failure(const std::string& host, int port,
                                          milliseconds limit = std::chrono::seconds(5))
    {
        const auto start = Clock::now();
        std::optional<ConnectProblem> result;
        try {
            close(connectTcp({host, static_cast<std::uint16_t>(port)}, start + limit));
        } catch (const ConnectError& error) {
            result = error.problem;
            reason = error.what();
        }
        took = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
        return result;
    }

    servers::SilentListener listener;
    std::string reason;
    milliseconds took{0};
};

TEST_F(TcpConnectTest, ReachesAnAddressAndAName)
{
    EXPECT_EQ(failure("127.0.0.1", listener.port()), std::nullopt);
    EXPECT_EQ(failure("localhost", listener.port()), std::nullopt);
}

TEST_F(TcpConnectTest, TheSocketNeverBlocksAndStaysWithThisProgram)
{
    const int connected = connectTcp({"127.0.0.1", static_cast<std::uint16_t>(listener.port())},
                                     Clock::now() + std::chrono::seconds(5));
    EXPECT_NE(fcntl(connected, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(fcntl(connected, F_GETFD) & FD_CLOEXEC, 0);
    close(connected);
}

TEST_F(TcpConnectTest, ARefusalIsKnownAtOnce)
{
    const int port = servers::unusedPort(servers::Transport::tcp);
    EXPECT_EQ(failure("127.0.0.1", port), ConnectProblem::refused);
    EXPECT_EQ(reason, "Connection refused");
    EXPECT_LT(took, std::chrono::seconds(2));
}

TEST_F(TcpConnectTest, AHostThatDoesNotAnswerIsGivenUpAtTheDeadline)
{
    const servers::FullListener full;
    EXPECT_EQ(failure("127.0.0.1", full.port(), milliseconds(200)), ConnectProblem::timedOut);
    EXPECT_GE(took, milliseconds(200));
    EXPECT_LT(took, milliseconds(2200));
}

TEST_F(TcpConnectTest, NothingIsTriedAfterTheDeadline)
{
    EXPECT_EQ(failure("127.0.0.1", listener.port(), milliseconds(0)), ConnectProblem::timedOut);
}

TEST_F(TcpConnectTest, AnUnknownNameSaysSo)
{
    // The top-level name that is set aside for names which do not exist.
    const auto problem = failure("no-such-host.invalid", 389);
    EXPECT_TRUE(problem == ConnectProblem::unknownName || problem == ConnectProblem::nameServiceSilent)
        << reason;
    EXPECT_LT(took, std::chrono::seconds(7));
}

TEST_F(TcpConnectTest, ANameServiceThatIsNotThereIsNoUnknownName)
{
    EXPECT_EQ(failure("later.test", 389), ConnectProblem::nameServiceSilent);
    EXPECT_EQ(failure("unknown.test", 389), ConnectProblem::unknownName);
    EXPECT_EQ(failure("nodata.test", 389), ConnectProblem::unknownName);
}

TEST_F(TcpConnectTest, ANameServiceThatIsSilentIsWaitedForUntilTheDeadline)
{
    const servers::SilentNameService silence;
    EXPECT_EQ(failure("silent.test", 389, milliseconds(100)), ConnectProblem::nameServiceSilent);
    EXPECT_LT(took, std::chrono::seconds(5));
}

} // namespace
