// Tests of the addresses of devices.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/network_address.h"

#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace quelm::tests {
namespace {

struct Reading {
    const char* text;
    const char* host;
    std::uint16_t port;
    const char* shown; ///< what `toText` makes of it
};

std::ostream& operator<<(std::ostream& out, const Reading& reading) { return out << reading.text; }

class ReadableAddress : public testing::TestWithParam<Reading> {};

TEST_P(ReadableAddress, IsTakenApart)
{
    const auto [text, host, port, shown] = GetParam();
    EXPECT_EQ(parseNetworkAddress(text), (NetworkAddress{host, port}));
    EXPECT_EQ(toText(parseNetworkAddress(text)), shown);
    EXPECT_EQ(parseNetworkAddress(shown), (NetworkAddress{host, port}));
}

INSTANTIATE_TEST_SUITE_P(
    NetworkAddress, ReadableAddress,
    testing::Values(Reading{"fax.example", "fax.example", 9100, "fax.example:9100"},
                    Reading{"fax.example:1234", "fax.example", 1234, "fax.example:1234"},
                    Reading{"fax_1", "fax_1", 9100, "fax_1:9100"},
                    Reading{"192.0.2.7", "192.0.2.7", 9100, "192.0.2.7:9100"},
                    Reading{"192.0.2.7:1", "192.0.2.7", 1, "192.0.2.7:1"},
                    Reading{"192.0.2.7:65535", "192.0.2.7", 65535, "192.0.2.7:65535"},
                    Reading{"::1", "::1", 9100, "[::1]:9100"}, Reading{"[::1]", "::1", 9100, "[::1]:9100"},
                    Reading{"[::1]:9101", "::1", 9101, "[::1]:9101"},
                    Reading{"2001:db8::9100", "2001:db8::9100", 9100, "[2001:db8::9100]:9100"},
                    Reading{"[fe80::1%eth0]:9100", "fe80::1%eth0", 9100, "[fe80::1%eth0]:9100"},
                    Reading{" fax.example:9101\n", "fax.example", 9101, "fax.example:9101"},
                    Reading{"büro.example", "büro.example", 9100, "büro.example:9100"}));

class UnreadableAddress : public testing::TestWithParam<std::string> {};

TEST_P(UnreadableAddress, IsRefusedWithAnExample)
{
    EXPECT_EQ(test::failureLine([] { parseNetworkAddress(GetParam()); }),
              "\"" + GetParam() +
                  "\" is no address; write HOST or HOST:PORT, such as fax.example:9100 or "
                  "[2001:db8::1]:9100");
}

INSTANTIATE_TEST_SUITE_P(NetworkAddress, UnreadableAddress,
                         testing::Values("", " ", ":", ":9100", "fax:", "fax:0", "fax:65536", "fax:-1",
                                         "fax:91x", "fax: 9100", "fax:9100:9100", "a b", "socket://fax",
                                         "fax/1", "ann@fax", "-fax", "[", "[::1", "[]", "[fax]", "[fax]:1",
                                         "[::1]9100", "[::1]:", "[::1]:x", "[192.0.2.7]", "fe80::1%", "1:2:3",
                                         "fax%eth0", "fax\x7f", std::string(254, 'a')));

TEST(NetworkAddressTest, AnotherPortCanStandInForAMissingOne)
{
    EXPECT_EQ(parseNetworkAddress("fax.example", 161), (NetworkAddress{"fax.example", 161}));
    EXPECT_EQ(parseNetworkAddress("fax.example:7", 161), (NetworkAddress{"fax.example", 7}));
}

} // namespace
} // namespace quelm::tests
