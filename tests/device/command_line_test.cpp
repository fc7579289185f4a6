// What the device's command line becomes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/command_line.h"

#include "base/error.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace quelm::device {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

DeviceCommandLine parsed(const std::vector<const char*>& arguments)
{
    std::vector<const char*> argv{"quelm-device"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    return parseDeviceCommandLine(static_cast<int>(argv.size()), argv.data());
}

std::string refusal(const std::vector<const char*>& arguments)
{
    return test::failureLine<UsageError>([&] { parsed(arguments); });
}

TEST(DeviceCommandLine, ReadTakesAJob)
{
    const auto line = parsed({"read", "job.ps"});
    EXPECT_EQ(line.command, DeviceCommand::read);
    EXPECT_EQ(line.read.job, "job.ps");
    EXPECT_FALSE(line.read.asJson);
    EXPECT_TRUE(line.read.render);
    const auto other = parsed({"read", "--json", "-", "--no-render"});
    EXPECT_EQ(other.read.job, "-");
    EXPECT_TRUE(other.read.asJson);
    EXPECT_FALSE(other.read.render);
    EXPECT_EQ(refusal({"read"}), "JOB is missing; see quelm-device read --help");
    EXPECT_THAT(refusal({"read", "a", "b"}), HasSubstr("\"b\" is one word too many"));
}

TEST(DeviceCommandLine, ServeKeepsToLoopbackUnlessItIsToldOtherwise)
{
    const auto line = parsed({"serve", "--state", "/s"});
    EXPECT_EQ(line.command, DeviceCommand::serve);
    EXPECT_EQ(line.serve.state, "/s");
    EXPECT_EQ(line.serve.port, 9100);
    EXPECT_THAT(line.serve.addresses, ElementsAre());
    EXPECT_EQ(line.serve.exchange, "");
    EXPECT_EQ(line.serve.lines, 1);
    EXPECT_FALSE(line.serve.realTime || line.serve.untilIdle || line.serve.withDirectory);
    EXPECT_EQ(line.serve.panel, 8631);
    EXPECT_EQ(line.serve.snmp, 1161);
    EXPECT_EQ(line.serve.identity, "");
    EXPECT_EQ(refusal({"serve"}), "--state is missing; see quelm-device serve --help");
}

TEST(DeviceCommandLine, ServeTakesAllItsOptions)
{
    const auto serve = parsed({"serve",       "--state",   "/s",
                               "--port",      "0",         "--address",
                               "10.0.0.1",    "--address", "::1",
                               "--exchange",  "x.conf",    "--lines",
                               "4",           "--panel",   "0",
                               "--snmp",      "65535",     "--real-time",
                               "--identity",  "+1 555",    "--with-directory",
                               "--until-idle"})
                           .serve;
    EXPECT_EQ(serve.port, 0);
    EXPECT_THAT(serve.addresses, ElementsAre("10.0.0.1", "::1"));
    EXPECT_EQ(serve.exchange, "x.conf");
    EXPECT_EQ(serve.lines, 4);
    EXPECT_EQ(serve.panel, 0);
    EXPECT_EQ(serve.snmp, 65535);
    EXPECT_TRUE(serve.realTime && serve.untilIdle && serve.withDirectory);
    EXPECT_EQ(serve.identity, "+1 555");
}

TEST(DeviceCommandLine, ServiceThatIsNotWantedIsNoPort)
{
    const auto serve = parsed({"serve", "--state", "/s", "--no-panel", "--no-snmp"}).serve;
    EXPECT_EQ(serve.panel, std::nullopt);
    EXPECT_EQ(serve.snmp, std::nullopt);
    EXPECT_THAT(refusal({"serve", "--state", "/s", "--no-panel", "--panel", "1"}),
                StartsWith("--panel stands beside --no-panel"));
}

TEST(DeviceCommandLine, RefusesWhatIsNoNumberOrOutOfItsBounds)
{
    for (const auto* port : {"", "x", "-1", "65536", "1 ", "0x1", "99999999999999999999"}) {
        EXPECT_THAT(refusal({"serve", "--state", "/s", "--port", port}),
                    HasSubstr("is no number from 0 to 65535"))
            << port;
    }
    EXPECT_THAT(refusal({"serve", "--state", "/s", "--lines", "0"}),
                HasSubstr("--lines: \"0\" is no number from 1 to 32"));
    EXPECT_EQ(parsed({"serve", "--state", "/s", "--lines", "32"}).serve.lines, 32);
    EXPECT_THAT(refusal({"serve", "--state", "/s", "--lines", "33"}),
                HasSubstr("--lines: \"33\" is no number from 1 to 32"));
    EXPECT_THAT(refusal({"serve", "--state", ""}), HasSubstr("--state: is empty"));
}

TEST(DeviceCommandLine, AnIdentityIsWhatAStationCanSay)
{
    for (const auto* identity : {"", "ACME", "123456789012345678901"}) {
        EXPECT_THAT(refusal({"serve", "--state", "/s", "--identity", identity}),
                    HasSubstr("is no station identity"))
            << identity;
    }
    EXPECT_EQ(parsed({"serve", "--state", "/s", "--identity", "12345678901234567890"}).serve.identity,
              "12345678901234567890");
}

TEST(DeviceCommandLine, HelpAndVersionStandAloneAndACommandIsNeeded)
{
    EXPECT_THAT(parsed({"--help"}).information, HasSubstr("serve"));
    EXPECT_THAT(parsed({"serve", "--help"}).information, HasSubstr("--until-idle"));
    EXPECT_THAT(parsed({"--version"}).information, StartsWith("quelm-device "));
    EXPECT_EQ(refusal({}), "the command is missing: one of read|serve; see quelm-device --help");
}

} // namespace
} // namespace quelm::device
