// Tests of how heads of requests are read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/request_head.h"

#include "tests/device/panel/socket_pair.h"

#include <gtest/gtest.h>

#include <thread>

namespace quelm::tests {
namespace {

using namespace device;
using std::chrono::milliseconds;
using Kind = RequestHead::Kind;

constexpr milliseconds longTime = std::chrono::seconds(30);

TEST(RequestHeadTest, AHeadIsWholeAtItsEmptyLineAndABodyIsNoPartOfIt)
{
    for (const std::string head : {"GET / HTTP/1.1\r\nHost: x\r\n\r\n", "GET / HTTP/1.1\nHost: x\n\n"}) {
        const SocketPair pair;
        pair.send(head + "body\r\n\r\n");
        const auto read = readHead(pair.server, longTime);
        EXPECT_EQ(read.kind, Kind::whole);
        EXPECT_EQ(read.bytes, head);
    }
}

TEST(RequestHeadTest, AHeadMayComeByteByByte)
{
    const SocketPair pair;
    const std::string head = "HEAD /jobs HTTP/1.1\r\nHost: localhost\r\n\r\n";
    std::jthread browser([&] {
        for (const char byte : head)
            pair.send(std::string_view(&byte, 1));
    });
    EXPECT_EQ(readHead(pair.server, longTime).bytes, head);
}

TEST(RequestHeadTest, OneThatIsTooLongOrEndlessIsNotKept)
{
    const SocketPair pair;
    std::jthread browser([&] {
        for (int i = 0; i < 100; ++i)
            pair.send("X-Header: " + std::string(1000, 'x') + "\r\n");
    });
    const auto read = readHead(pair.server, longTime);
    EXPECT_EQ(read.kind, Kind::tooLong);
    EXPECT_TRUE(read.bytes.empty());
    ::shutdown(pair.server.get(), SHUT_RDWR);
}

TEST(RequestHeadTest, OneThatEndsEarlyOrDoesNotComeIsNone)
{
    const SocketPair ended;
    ended.send("GET / HTTP/1.1\r\n");
    ended.endSending();
    EXPECT_EQ(readHead(ended.server, longTime).kind, Kind::none);
    const SocketPair silent;
    silent.send("GET");
    EXPECT_EQ(readHead(silent.server, milliseconds(20)).kind, Kind::none);
}

TEST(RequestHeadTest, OneThatComesInDripsIsNotWaitedForAnyLonger)
{
    const SocketPair pair;
    pair.send("GET / HTTP/1.1\r\n");
    const std::jthread browser([&](const std::stop_token& stop) {
        for (; !stop.stop_requested(); ::poll(nullptr, 0, 1))
            pair.send("x");
    });
    EXPECT_EQ(readHead(pair.server, milliseconds(50)).kind, Kind::none) << "and not one that is too long";
}

TEST(RequestHeadTest, PartsOfAnswersAndBodiesAreNotAskedFor)
{
    EXPECT_EQ(
        plainHead(
            "GET / HTTP/1.1\r\nrAnGe: bytes=1-2\r\nHost: x\r\nExpect: 100-continue\r\nRanges: 1\r\n\r\n"),
        "GET / HTTP/1.1\r\nHost: x\r\nRanges: 1\r\n\r\n");
    EXPECT_EQ(plainHead(""), "");
    EXPECT_EQ(plainHead("Range"), "Range");
}

} // namespace
} // namespace quelm::tests
