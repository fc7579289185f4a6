// Tests of the names by which a browser may have called the pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/host_check.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

using device::isOwnHost;

TEST(HostCheck, LoopbackMayBeWrittenInEveryWay)
{
    for (const char* host : {"127.0.0.1", "127.0.0.1:8631", "127.9.8.7:1", "localhost", "localhost:8631",
                             "LocalHost:8631", "[::1]", "[::1]:8631", "[0:0::1]:5", "localhost:"})
        EXPECT_TRUE(isOwnHost(host, "127.0.0.1")) << host;
}

TEST(HostCheck, ANameOfOthersIsNotOurs)
{
    for (const char* host : {"",
                             "attacker.example",
                             "attacker.example:8631",
                             "127.0.0.1.attacker.example",
                             "localhost.attacker.example",
                             "attackerlocalhost",
                             "10.0.0.1",
                             "[::2]",
                             "[::1",
                             "[::1]x",
                             "127.0.0.1:8631:1",
                             "127.0.0.1:x",
                             "127.1",
                             "2130706433",
                             "0.0.0.0",
                             "localhost@attacker.example",
                             "::1",
                             "[]",
                             ":8631",
                             "localhost."})
        EXPECT_FALSE(isOwnHost(host, "127.0.0.1")) << host;
}

TEST(HostCheck, TheAddressThatIsServedIsOurs)
{
    EXPECT_TRUE(isOwnHost("192.0.2.7:8631", "192.0.2.7"));
    EXPECT_FALSE(isOwnHost("192.0.2.8:8631", "192.0.2.7"));
    EXPECT_TRUE(isOwnHost("[2001:db8::7]:8631", "2001:db8::7"));
    EXPECT_TRUE(isOwnHost("[2001:DB8:0::7]", "2001:db8::7"));
    EXPECT_FALSE(isOwnHost("[2001:db8::8]", "2001:db8::7"));
}

TEST(HostCheck, WhereAllAddressesAreServedAnyNumericOneIsOurs)
{
    EXPECT_TRUE(isOwnHost("192.0.2.7:8631", "0.0.0.0"));
    EXPECT_TRUE(isOwnHost("[2001:db8::7]", "::"));
    EXPECT_FALSE(isOwnHost("attacker.example", "0.0.0.0"));
    EXPECT_FALSE(isOwnHost("attacker.example", "::"));
}

} // namespace
} // namespace quelm::tests
