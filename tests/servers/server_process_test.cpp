// Servers that tests start end with the tests, and say what went wrong.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/server_process.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using servers::runProgram;
using servers::ServerCommand;
using servers::ServerProcess;
using servers::systemProgram;

class ServerProcessTest : public testing::Test {
protected:
    ServerCommand command(std::vector<std::string> arguments) const
    {
        arguments.front() = systemProgram(arguments.front());
        return {std::move(arguments), folder / "output", {"WORD=spoken"}};
    }

    template <class Action>
    static std::string failure(Action action)
    {
        try {
            action();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    }

    TemporaryFolder folder;
};

TEST_F(ServerProcessTest, ServesOnceItIsReadyAndEndsWhenItIsStopped)
{
    int asked = 0;
    ServerProcess server(command({"sleep", "100"}), [&] { return ++asked == 3; });
    EXPECT_EQ(asked, 3);
    EXPECT_TRUE(server.running());
    const pid_t id = server.id();
    server.stop();
    EXPECT_FALSE(server.running());
    EXPECT_EQ(kill(id, 0), -1);
    server.stop(); // does no harm
}

TEST_F(ServerProcessTest, AFrozenOneCanBeStopped)
{
    ServerProcess server(command({"sleep", "100"}), [] { return true; });
    server.freeze();
    EXPECT_TRUE(server.running());
    server.stop();
    EXPECT_FALSE(server.running());
}

TEST_F(ServerProcessTest, OneThatEndsInsteadOfServingSaysWhy)
{
    const std::string reason = failure([&] {
        const ServerProcess server(command({"sh", "-c", "echo no $WORD word >&2; exit 3"}),
                                   [] { return false; });
    });
    EXPECT_NE(reason.find("ended instead of serving:\nno spoken word"), std::string::npos) << reason;
}

TEST_F(ServerProcessTest, DoesNotOutliveTheProcessThatStartedIt)
{
    // What that process leaves behind becomes a child of this one, which so learns of its end.
    ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    EXPECT_EQ(inProcess([&] {
                  const ServerProcess server(command({"sh", "-c", "echo up; exec sleep 100"}),
                                             [&] { return contentOf(folder / "output") == "up\n"; });
                  const pid_t id = server.id();
                  if (write(ends[1], &id, sizeof id) == sizeof id)
                      raise(SIGKILL);
                  return 1;
              }),
              128 + SIGKILL);
    pid_t id = 0;
    ASSERT_EQ(read(ends[0], &id, sizeof id), static_cast<ssize_t>(sizeof id));
    int word = 0;
    ASSERT_EQ(waitpid(id, &word, 0), id);
    EXPECT_TRUE(WIFSIGNALED(word));
    EXPECT_EQ(WTERMSIG(word), SIGKILL);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(ServerProcessTest, AProgramThatFailsSaysWhy)
{
    EXPECT_EQ(failure([&] { runProgram(command({"true"})); }), "");
    const std::string reason = failure([&] { runProgram(command({"sh", "-c", "echo $WORD; exit 1"})); });
    EXPECT_NE(reason.find("sh failed:\nspoken"), std::string::npos) << reason;
    EXPECT_EQ(failure([] { systemProgram("no-such-program"); }),
              "the program \"no-such-program\" is not installed");
}

TEST_F(ServerProcessTest, UnusedPortsAreBelowThoseOfClients)
{
    for (const auto transport : {servers::Transport::tcp, servers::Transport::udp}) {
        const int port = servers::unusedPort(transport);
        EXPECT_GE(port, 20000);
        EXPECT_LE(port, 32000);
    }
}

} // namespace
