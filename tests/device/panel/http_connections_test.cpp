// Tests of many connections at once, and of those that stay.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/http_connections.h"

#include "base/net/listening_sockets.h"
#include "tests/servers/job_sender.h"
#include "tests/support/processes.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <atomic>
#include <optional>

namespace quelm::tests {
namespace {

using device::HttpConnections;
using servers::DeviceEnding;
using servers::JobSender;

/// Answers each line with itself; says how many are at it.
class HttpConnectionsTest : public ::testing::Test {
protected:
    void begin(std::size_t most)
    {
        auto sockets = listenOn({"127.0.0.1"}, 0);
        address = sockets[0].address;
        connections.emplace(std::move(sockets[0].socket), most, [this](const FileHandle& socket) {
            ++serving;
            std::array<char, 100> bytes{};
            pollfd waiting{socket.get(), POLLIN, 0};
            ::poll(&waiting, 1, 30'000);
            const auto size = ::recv(socket.get(), bytes.data(), bytes.size(), 0);
            if (size > 0)
                ::send(socket.get(), bytes.data(), static_cast<std::size_t>(size), MSG_NOSIGNAL);
            --serving;
        });
    }
    std::string echoOf(const std::string& line) const
    {
        JobSender sender(address);
        sender.send(line);
        sender.waitForEnding();
        return sender.answer();
    }

    std::string address;
    std::atomic<int> serving = 0;
    std::optional<HttpConnections> connections;
};

TEST_F(HttpConnectionsTest, EachIsServedByItself)
{
    begin(8);
    JobSender silent(address);
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(echoOf(std::to_string(i)), std::to_string(i));
    EXPECT_TRUE(soon([&] { return serving == 1; }));
    silent.send("late");
    silent.waitForEnding();
    EXPECT_EQ(silent.answer(), "late");
}

TEST_F(HttpConnectionsTest, WhoeverSaysNothingMakesRoomForOthers)
{
    begin(4);
    std::vector<JobSender> silent;
    for (int i = 0; i < 30; ++i)
        silent.emplace_back(address);
    EXPECT_EQ(echoOf("hello"), "hello");
    // The oldest went.
    EXPECT_EQ(silent[0].waitForEnding(), DeviceEnding::closed);
    EXPECT_TRUE(soon([&] { return serving <= 4; }));
}

TEST_F(HttpConnectionsTest, AnswersThatTakeLongDoNotBecomeMoreAndMore)
{
    auto sockets = listenOn({"127.0.0.1"}, 0);
    address = sockets[0].address;
    std::atomic<bool> isHeldUp = true;
    std::atomic<int> served = 0;
    std::atomic<int> most = 0;
    connections.emplace(std::move(sockets[0].socket), 2, [&](const FileHandle&) {
        const int now = ++serving;
        for (int before = most; before < now && !most.compare_exchange_weak(before, now);) {
        }
        isHeldUp.wait(true); // its browser has gone by then, and the picture is still being drawn
        --serving;
        ++served;
    });
    std::vector<JobSender> browsers;
    for (int i = 0; i < 30; ++i)
        browsers.emplace_back(address);
    EXPECT_TRUE(soon([&] { return serving == 4; }));
    isHeldUp = false;
    isHeldUp.notify_all();
    EXPECT_TRUE(soon([&] { return served == 30; }));
    connections.reset();
    EXPECT_EQ(most, 4) << "two, and two that were told to end";
}

TEST_F(HttpConnectionsTest, ManyAtOnceAreAllAnswered)
{
    begin(64);
    std::atomic<int> right = 0;
    std::vector<std::jthread> browsers;
    for (int browser = 0; browser < 16; ++browser)
        browsers.emplace_back([&, browser] {
            for (int i = 0; i < 10; ++i) {
                const std::string line = std::to_string(browser) + "." + std::to_string(i);
                right += echoOf(line) == line ? 1 : 0;
            }
        });
    browsers.clear();
    EXPECT_EQ(right, 160);
}

TEST_F(HttpConnectionsTest, TheEndWaitsForNobody)
{
    begin(8);
    JobSender silent(address);
    ASSERT_TRUE(soon([&] { return serving == 1; }));
    connections.reset();
    EXPECT_EQ(serving, 0);
    EXPECT_NE(silent.waitForEnding(), DeviceEnding::open);
}

} // namespace
} // namespace quelm::tests
