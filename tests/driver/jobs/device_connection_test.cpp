// Tests of finding devices and connecting to them, and of what users read when that fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/device_connection.h"

#include "tests/servers/listeners.h"
#include "tests/servers/name_service.h"
#include "tests/servers/print_listener.h"
#include "tests/servers/refused_port.h"
#include "tests/support/failure_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using servers::FullListener;
using servers::Manner;
using servers::PrintListener;

std::vector<SocketAddress> at(const std::string& host, int port)
{
    return lookUpDevice({host, static_cast<std::uint16_t>(port)}, "device", 10s, {});
}

/// Nobody listens there.
std::vector<SocketAddress> refusing()
{
    static const servers::RefusedPort refused(servers::Transport::tcp);
    return at("127.0.0.1", refused.port());
}

/// A broadcast address of this machine: no TCP connection can be made to it.
std::vector<SocketAddress> unreachable() { return at("127.255.255.255", 9100); }

std::vector<SocketAddress> joined(std::vector<SocketAddress> first, const std::vector<SocketAddress>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::string failureOf(const std::vector<SocketAddress>& addresses, std::chrono::milliseconds limit = 10s)
{
    return test::failureLine([&] { connectToDevice(addresses, "device", limit, {}); });
}

constexpr const char* refused =
    "device: refuses the connection; check the port, and whether the device is ready for jobs";

TEST(DeviceConnection, IsMadeAndDoesNotBlock)
{
    PrintListener device(Manner::takesAll);
    const auto connection = connectToDevice(at("127.0.0.1", device.port()), "device", 10s, {});
    ASSERT_TRUE(connection.isOpen());
    EXPECT_NE(::fcntl(connection.get(), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(::fcntl(connection.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(DeviceConnection, OneAddressAfterTheOtherIsTried)
{
    PrintListener device(Manner::takesAll);
    const auto addresses = joined(joined(unreachable(), refusing()), at("127.0.0.1", device.port()));
    EXPECT_TRUE(connectToDevice(addresses, "device", 10s, {}).isOpen());
}

TEST(DeviceConnection, ADeviceThatDoesNotAnswerIsPassedOver)
{
    FullListener busy;
    PrintListener device(Manner::takesAll);
    const auto addresses = joined(at("127.0.0.1", busy.port()), at("127.0.0.1", device.port()));
    EXPECT_TRUE(connectToDevice(addresses, "device", 100ms, {}).isOpen());
}

TEST(DeviceConnection, EachFailureIsOneLine)
{
    EXPECT_EQ(failureOf(refusing()), refused);
    EXPECT_EQ(failureOf(unreachable()),
              "device: cannot be reached (Network is unreachable); check the address and the network");
}

TEST(DeviceConnection, AFullDeviceIsWaitedForWithinTheLimit)
{
    FullListener busy;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(failureOf(at("127.0.0.1", busy.port()), 300ms),
              "device: does not answer within 300 ms; check the address, and whether the device is switched "
              "on");
    const auto taken = std::chrono::steady_clock::now() - start;
    EXPECT_GE(taken, 300ms);
    EXPECT_LT(taken, 5s);
}

TEST(DeviceConnection, TheReasonThatSaysMostOfTheDeviceIsTold)
{
    FullListener busy;
    const auto silent = at("127.0.0.1", busy.port());
    EXPECT_EQ(failureOf(joined(refusing(), unreachable())), refused);
    EXPECT_EQ(failureOf(joined(unreachable(), refusing())), refused);
    EXPECT_EQ(failureOf(joined(joined(unreachable(), refusing()), silent), 100ms), refused);
    EXPECT_NE(failureOf(joined(silent, unreachable()), 100ms).find("does not answer within 100 ms"),
              std::string::npos);
}

TEST(DeviceConnection, TheUserNeedNotWaitForADevice)
{
    FullListener busy;
    const Cancellation cancelled = [] { return true; };
    EXPECT_EQ(
        test::failureLine([&] { connectToDevice(at("127.0.0.1", busy.port()), "device", 60s, cancelled); }),
        "device: the job was cancelled before anything of it went out");
}

std::string failureOf(const std::string& host)
{
    return test::failureLine([&] { lookUpDevice({host}, "device", 10s, {}); });
}

TEST(DeviceConnection, ANameThatIsNotFoundSaysWhatToDo)
{
    const std::string noHost = "device: there is no host of that name; check the name";
    EXPECT_EQ(failureOf("unknown.test"), noHost);
    EXPECT_EQ(failureOf("nodata.test"), noHost);
    EXPECT_EQ(failureOf("later.test"), "device: the name service does not answer; try again later, or give "
                                       "the device's IP address");
    EXPECT_EQ(failureOf("broken.test"), "device: the name cannot be looked up: Too many open files");
    EXPECT_EQ(failureOf("failed.test"),
              "device: the name cannot be looked up: Non-recoverable failure in name resolution");
}

TEST(DeviceConnection, ANameServiceThatIsSilentIsWaitedForWithinTheLimit)
{
    const servers::SilentNameService silence;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(test::failureLine([] { lookUpDevice({"silent.test"}, "device", 100ms, {}); }),
              "device: the name service does not answer within 100 ms; try again later, or give the device's "
              "IP address");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST(DeviceConnection, TheUserNeedNotWaitForTheNameService)
{
    const servers::SilentNameService silence;
    const Cancellation cancelled = [] { return true; };
    EXPECT_EQ(test::failureLine([&] { lookUpDevice({"silent.test"}, "device", 60s, cancelled); }),
              "device: the job was cancelled before anything of it went out");
}

} // namespace
} // namespace quelm::tests
