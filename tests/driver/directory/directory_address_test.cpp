// How directory addresses are read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_address.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using quelm::DirectoryAddress;
using quelm::parseDirectoryAddress;

struct Reading {
    const char* text;
    DirectoryAddress address;
};

void PrintTo(const Reading& reading, std::ostream* out) { *out << reading.text; }

class DirectoryAddressTest : public testing::TestWithParam<Reading> {};

TEST_P(DirectoryAddressTest, IsReadAsItIsMeant)
{
    const auto address = parseDirectoryAddress(GetParam().text);
    ASSERT_TRUE(address);
    EXPECT_EQ(address->host, GetParam().address.host);
    EXPECT_EQ(address->port, GetParam().address.port);
    EXPECT_EQ(address->tls, GetParam().address.tls);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, DirectoryAddressTest,
    testing::Values(Reading{"ldap.example", {"ldap.example", 389, false}},
                    Reading{"ldap.example:1389", {"ldap.example", 1389, false}},
                    Reading{"  ldap.example:1389 \r\n", {"ldap.example", 1389, false}},
                    Reading{"LDAP_1", {"LDAP_1", 389, false}}, //
                    Reading{"verzeichnis.b\u00FCro.example", {"verzeichnis.b\u00FCro.example", 389, false}},
                    Reading{"192.0.2.7", {"192.0.2.7", 389, false}},
                    Reading{"192.0.2.7:65535", {"192.0.2.7", 65535, false}},
                    Reading{"::1", {"::1", 389, false}}, //
                    Reading{"2001:db8::7:389", {"2001:db8::7:389", 389, false}},
                    Reading{"[2001:db8::7]", {"2001:db8::7", 389, false}},
                    Reading{"[2001:db8::7]:1389", {"2001:db8::7", 1389, false}},
                    Reading{"[fe80::1%eth0]:389", {"fe80::1%eth0", 389, false}},
                    Reading{"ldap://ldap.example", {"ldap.example", 389, false}},
                    Reading{"ldap://ldap.example/", {"ldap.example", 389, false}},
                    Reading{"LDAP://ldap.example:390/dc=example??sub", {"ldap.example", 390, false}},
                    Reading{"ldap://[::1]:390/", {"::1", 390, false}},
                    Reading{"ldaps://ldap.example", {"ldap.example", 636, true}},
                    Reading{"ldaps://ldap.example:1636", {"ldap.example", 1636, true}},
                    Reading{"ldaps://[::1]", {"::1", 636, true}},
                    // The ports that are set aside for TLS, unless the text says otherwise.
                    Reading{"ldap.example:636", {"ldap.example", 636, true}},
                    Reading{"ldap.example:3269", {"ldap.example", 3269, true}},
                    Reading{"ldap://ldap.example:636", {"ldap.example", 636, false}}));

TEST(DirectoryAddressTextTest, ATextThatIsNoAddressIsRefused)
{
    const std::string texts[] = {"",
                                 "   ",
                                 ":",
                                 ":389",
                                 "ldap://",
                                 "ldaps://:636",
                                 "host:",
                                 "host:0",
                                 "host:65536",
                                 "host:99999999999999999999",
                                 "host:-1",
                                 "host:+389",
                                 "host:389x",
                                 "host: 389",
                                 "host name",
                                 "host:1:2",
                                 "host/path",
                                 "http://host",
                                 "ldapi://%2Ftmp",
                                 "[::1",
                                 "[::1]x",
                                 "[::1]389",
                                 "[]:389",
                                 "[host]:389",
                                 "::1%",
                                 "fe80::1%e/0",
                                 "1:2:3:4:5:6:7:8:9",
                                 "a..b",
                                 ".a",
                                 "-a",
                                 "host\nname",
                                 "\xFFhost",
                                 "user@host",
                                 std::string(254, 'a'),
                                 std::string(100000, ':'),
                                 std::string("host\0:389", 9)};
    for (const std::string& text : texts)
        EXPECT_EQ(parseDirectoryAddress(text), std::nullopt) << text.substr(0, 40);
}

TEST(DirectoryAddressTextTest, AnIpv6AddressIsShownInBrackets)
{
    const DirectoryAddress address{"::1", 636, true};
    EXPECT_EQ(address.shown(), "[::1]:636");
    EXPECT_EQ(address.uri(), "ldaps://[::1]:636");
    EXPECT_EQ((DirectoryAddress{"ldap.example", 389, false}.uri()), "ldap://ldap.example:389");
}

} // namespace
