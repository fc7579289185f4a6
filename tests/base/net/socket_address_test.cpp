// Addresses in digits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/socket_address.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>

#include <cstring>

namespace quelm::tests {
namespace {

template <class Address>
SocketAddress copyOf(const Address& address)
{
    SocketAddress copy;
    std::memcpy(&copy.storage, &address, sizeof address);
    copy.size = sizeof address;
    return copy;
}

TEST(SocketAddressTest, IsWrittenWithItsPort)
{
    sockaddr_in four{};
    four.sin_family = AF_INET;
    four.sin_port = htons(9100);
    four.sin_addr.s_addr = htonl(0x7f000002);
    EXPECT_EQ(numericText(copyOf(four)), "127.0.0.2:9100");
    EXPECT_EQ(copyOf(four).family(), AF_INET);
}

TEST(SocketAddressTest, OfIpv6StandsInBrackets)
{
    sockaddr_in6 six{};
    six.sin6_family = AF_INET6;
    six.sin6_port = htons(161);
    ASSERT_EQ(::inet_pton(AF_INET6, "2001:db8::1", &six.sin6_addr), 1);
    EXPECT_EQ(numericText(copyOf(six)), "[2001:db8::1]:161");
    EXPECT_EQ(copyOf(six).family(), AF_INET6);
}

TEST(SocketAddressTest, NoAddressHasNoText) { EXPECT_EQ(numericText(SocketAddress()), ""); }

} // namespace
} // namespace quelm::tests
