// Where a server listens, and what it says where it cannot.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/listening_sockets.h"

#include "tests/servers/job_sender.h"
#include "tests/servers/listeners.h"
#include "tests/servers/server_process.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quelm {
namespace {

using testing::HasSubstr;

std::vector<std::string> addressesOf(const std::vector<ListeningSocket>& sockets)
{
    std::vector<std::string> addresses;
    for (const auto& socket : sockets)
        addresses.push_back(socket.address);
    return addresses;
}

TEST(ListeningSockets, AFreePortIsTheSameOfAllAddresses)
{
    const auto sockets = listenOn({"127.0.0.1", "127.0.0.2", "::1"}, 0);
    ASSERT_GE(sockets.size(), 2U);
    const auto port = sockets[0].address.substr(sockets[0].address.rfind(':'));
    EXPECT_NE(port, ":0");
    for (const auto& socket : sockets) {
        EXPECT_TRUE(socket.address.ends_with(port)) << socket.address;
        EXPECT_NO_THROW(servers::JobSender{socket.address});
    }
}

TEST(ListeningSockets, APortIsListenedOnAsSoonAsTheFormerDeviceIsGone)
{
    const auto port = static_cast<std::uint16_t>(servers::unusedPort(servers::Transport::tcp));
    for (int run = 0; run < 2; ++run) {
        const auto sockets = listenOn({"127.0.0.1"}, port);
        ASSERT_EQ(addressesOf(sockets), std::vector{"127.0.0.1:" + std::to_string(port)});
        servers::JobSender sender(sockets.front().address); // leaves a connection behind
    }
}

TEST(ListeningSockets, AnAddressThatIsNamedTwiceCountsOnce)
{
    EXPECT_EQ(listenOn({"127.0.0.1", "127.0.0.1"}, 0).size(), 1U);
}

TEST(ListeningSockets, APortThatIsTakenIsNamedWithWhatToDo)
{
    const servers::SilentListener other;
    EXPECT_EQ(test::failureLine([&] {
                  static_cast<void>(listenOn({"127.0.0.1"}, static_cast<std::uint16_t>(other.port())));
              }),
              other.address() + ": cannot listen there: another program has this port; end it, or choose "
                                "another port");
}

TEST(ListeningSockets, DatagramsAreReceivedOnAPortOfTheirOwn)
{
    const auto sockets = receiveOn({"127.0.0.1", "::1"}, 0);
    ASSERT_FALSE(sockets.empty());
    const auto& address = sockets.front().address;
    const auto port = static_cast<std::uint16_t>(std::stoi(address.substr(address.rfind(':') + 1)));
    EXPECT_EQ(test::failureLine([&] { static_cast<void>(receiveOn({"127.0.0.1"}, port)); }),
              address +
                  ": cannot listen there: another program has this port; end it, or choose another port")
        << "two servers do not share it";
    EXPECT_EQ(addressesOf(listenOn({"127.0.0.1"}, port)), std::vector{address})
        << "connections have other ports";
}

TEST(ListeningSockets, WhatIsNoAddressOfThisComputerIsRefused)
{
    for (const auto* text : {"", "nowhere", "fax.example", "127.0.0.1:9100", "[::1]"})
        EXPECT_THAT(test::failureLine([&] { static_cast<void>(listenOn({text}, 0)); }),
                    HasSubstr("is no numeric address; write one such as 127.0.0.1 or ::1"));
    EXPECT_EQ(
        test::failureLine([] { static_cast<void>(listenOn({"192.0.2.1"}, 9100)); }),
        "192.0.2.1:9100: cannot listen there: this computer has no such address; choose one that it has");
}

TEST(ListeningSockets, APortOfTheSystemTakesAnAdministrator)
{
    if (contentOf("/proc/sys/net/ipv4/ip_unprivileged_port_start") != "1024\n")
        return; // this computer lets everybody have such ports
    EXPECT_EQ(inProcess([] {
                  becomeOrdinaryUser();
                  const auto line =
                      test::failureLine([] { static_cast<void>(listenOn({"127.0.0.1"}, 515)); });
                  return line == "127.0.0.1:515: cannot listen there: ports below 1024 take an "
                                 "administrator's rights; choose another port"
                             ? 0
                             : 1;
              }),
              0);
}

} // namespace
} // namespace quelm
