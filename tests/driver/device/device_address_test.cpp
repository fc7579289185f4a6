// The devices behind their addresses.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/device_address.h"

#include "tests/servers/name_service.h"
#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace {

quelm::NetworkAddress deviceAt(const std::string& text)
{
    return quelm::parseNetworkAddress(text, quelm::snmpPort);
}

quelm::Deadline soon() { return std::chrono::steady_clock::now() + std::chrono::seconds(10); }

TEST(DeviceAddressTest, ANumericAddressIsFoundWithoutANameService)
{
    const auto found = quelm::findDevice(deviceAt("127.0.0.1:1161"), std::chrono::steady_clock::now());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(numericText(found[0]), "127.0.0.1:1161");
    const auto six = quelm::findDevice(deviceAt("::1"), std::chrono::steady_clock::now());
    ASSERT_EQ(six.size(), 1U);
    EXPECT_EQ(numericText(six[0]), "[::1]:161");
}

TEST(DeviceAddressTest, ANameIsLookedUp)
{
    const auto found = quelm::findDevice(deviceAt("localhost"), soon());
    ASSERT_FALSE(found.empty());
    for (const auto& address : found) {
        const auto shown = numericText(address);
        EXPECT_TRUE(shown == "127.0.0.1:161" || shown == "[::1]:161") << shown;
    }
}

TEST(DeviceAddressTest, WithoutTimeANameIsNotWaitedFor)
{
    // A name of labels that are too long is refused by the lookup itself: nobody else is asked.
    const auto address = deviceAt(std::string(64, 'a') + ".invalid");
    const auto past = std::chrono::steady_clock::now() - std::chrono::seconds(1);
    EXPECT_NE(quelm::test::failureLine([&] {
                  quelm::findDevice(address, past);
              }).find("the device " + toText(address)),
              std::string::npos);
}

TEST(DeviceAddressTest, ANameServiceThatIsSilentIsWaitedForUntilTheDeadline)
{
    const servers::SilentNameService silence;
    const auto start = std::chrono::steady_clock::now();
    const auto line = [](const std::string& host, quelm::Deadline deadline) {
        return quelm::test::failureLine([&] { quelm::findDevice(deviceAt(host), deadline); });
    };
    EXPECT_EQ(line("silent.test", start + std::chrono::milliseconds(100)),
              "the device silent.test:161 cannot be looked up: the name service does not answer in time; try "
              "again later, or give its IP address");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(line("later.test", soon()),
              "the device later.test:161 cannot be looked up: the name service does not answer; try again "
              "later, or give its IP address");
    EXPECT_EQ(line("broken.test", soon()),
              "the device broken.test:161 cannot be looked up: Too many open files; give its IP address");
}

TEST(DeviceAddressTest, AnUnknownNameIsToldToBeUnknown)
{
    const auto address = deviceAt(std::string(64, 'a') + ".invalid");
    EXPECT_EQ(quelm::test::failureLine([&] { quelm::findDevice(address, soon()); }),
              "the device " + toText(address) + " is not known to the name service; check its name");
}

} // namespace
