// What a sender's connection brings, and how it ends.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/sender_connection.h"

#include "base/net/listening_sockets.h"
#include "tests/device/port/sample_jobs.h"
#include "tests/servers/job_sender.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

#include <optional>

namespace quelm::device {
namespace {

using servers::DeviceEnding;
using Event = SenderConnection::Event;

class SenderConnectionTest : public testing::Test {
protected:
    SenderConnectionTest() : listening(listenOn({"127.0.0.1"}, 0)), sender(listening.front().address)
    {
        wait(listening.front().socket.get());
        connection.emplace(FileHandle(::accept4(listening.front().socket.get(), nullptr, nullptr,
                                                SOCK_NONBLOCK | SOCK_CLOEXEC)),
                           "127.0.0.1", folder.path(), 1'000'000);
    }

    static void wait(int socket)
    {
        pollfd one{socket, POLLIN, 0};
        ::poll(&one, 1, 10'000);
    }
    /// Reads on until something comes of it.
    Event next()
    {
        auto event = Event::none;
        while (event == Event::none) {
            wait(connection->descriptor());
            event = connection->read();
        }
        return event;
    }

    TemporaryFolder folder;
    std::vector<ListeningSocket> listening;
    servers::JobSender sender;
    std::optional<SenderConnection> connection;
};

TEST_F(SenderConnectionTest, ReadingWithoutBytesIsNothing)
{
    EXPECT_EQ(connection->read(), Event::none);
    EXPECT_FALSE(connection->isWithinJob());
}

TEST_F(SenderConnectionTest, AJobOfTheConnectionIsThereAtItsEnd)
{
    sender.send(test::dscJob());
    sender.end();
    EXPECT_EQ(next(), Event::job);
    EXPECT_TRUE(connection->isWithinJob());
    const auto job = connection->takeJob();
    EXPECT_TRUE(connection->isWaiting());
    EXPECT_EQ(contentOf(job->file()), test::dscJob());
}

TEST_F(SenderConnectionTest, AnotherJobBehindAJobIsOneTooMany)
{
    sender.send(test::pjlJob("1") + test::pjlJob("2"));
    EXPECT_EQ(next(), Event::broken);
    EXPECT_TRUE(connection->problem().starts_with("something follows it on its connection"));
}

TEST_F(SenderConnectionTest, ACompleteJobIsThereOnceItsConnectionEnds)
{
    sender.send(test::pjlJob());
    wait(connection->descriptor());
    while (!connection->hasWholeJob())
        ASSERT_EQ(connection->read(), Event::none);
    EXPECT_GT(connection->rate(), 0);
    const auto heard = connection->lastHeard();
    sender.send("\r\n");
    wait(connection->descriptor());
    EXPECT_EQ(connection->read(), Event::none);
    EXPECT_EQ(connection->lastHeard(), heard) << "blanks are nothing of the job";
    sender.end();
    EXPECT_EQ(next(), Event::job);
    EXPECT_EQ(contentOf(connection->takeJob()->file()), test::pjlJob());
}

TEST_F(SenderConnectionTest, ItsEndWithoutAWordIsAReset)
{
    connection.reset();
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::reset);
}

TEST_F(SenderConnectionTest, ItEndsInOrderWhenItIsToldTo)
{
    connection->closeInOrder();
    connection.reset();
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::closed);
}

TEST_F(SenderConnectionTest, ItEndsInOrderTowardsASenderThatHasEnded)
{
    sender.end();
    EXPECT_EQ(next(), Event::end);
    connection->closeInOrder();
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::closed);
}

TEST_F(SenderConnectionTest, WhatWasNotReadIsNotAcknowledged)
{
    sender.send("%!");
    wait(connection->descriptor());
    connection->closeInOrder();
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::reset);
}

TEST_F(SenderConnectionTest, ASenderThatBreaksOffIsToldOfWithinAJobAlone)
{
    sender.send("%!PS");
    wait(connection->descriptor());
    ASSERT_EQ(connection->read(), Event::none);
    sender.breakOff();
    EXPECT_EQ(next(), Event::broken);
    EXPECT_EQ(connection->problem(), "the sender broke off after 4 bytes of it");
}

TEST_F(SenderConnectionTest, AConnectionThatBrokeBeforeAJobHasNoProblem)
{
    sender.breakOff();
    EXPECT_EQ(next(), Event::broken);
    EXPECT_EQ(connection->problem(), "");
}

} // namespace
} // namespace quelm::device
