// What the name service says, and what is read without it.
#include "base/net/name_service.h"

#include <gtest/gtest.h>

#include <string>

#include <netinet/in.h>

namespace {

using quelm::HostAnswer;
using quelm::readNumericAddress;

TEST(NameServiceTest, ANumericAddressIsRead)
{
    const HostAnswer four = readNumericAddress({"127.0.0.2", 9100}, SOCK_STREAM);
    ASSERT_EQ(four.kind, HostAnswer::Kind::found);
    ASSERT_EQ(four.addresses.size(), 1U);
    EXPECT_EQ(four.addresses[0].family(), AF_INET);
    EXPECT_EQ(four.addresses[0].size, sizeof(sockaddr_in));
    EXPECT_EQ(numericText(four.addresses[0]), "127.0.0.2:9100");
    EXPECT_EQ(four.reason, "");
    const HostAnswer six = readNumericAddress({"2001:db8::1", 161}, SOCK_DGRAM);
    ASSERT_EQ(six.addresses.size(), 1U);
    EXPECT_EQ(six.addresses[0].family(), AF_INET6);
    EXPECT_EQ(numericText(six.addresses[0]), "[2001:db8::1]:161");
}

TEST(NameServiceTest, ANameIsNoNumericAddress)
{
    const HostAnswer answer = readNumericAddress({"localhost", 9100}, SOCK_STREAM);
    EXPECT_EQ(answer.kind, HostAnswer::Kind::unknown);
    EXPECT_TRUE(answer.addresses.empty());
    EXPECT_NE(answer.reason, "");
}

TEST(NameServiceTest, ANameIsLookedUp)
{
    const HostAnswer answer = quelm::askNameService({"localhost", 9100}, SOCK_STREAM);
    ASSERT_EQ(answer.kind, HostAnswer::Kind::found) << answer.reason;
    EXPECT_FALSE(answer.addresses.empty());
}

TEST(NameServiceTest, ANameThatCannotBeIsUnknown)
{
    // A label of 64 letters is refused by the lookup itself: nobody else is asked.
    const HostAnswer answer = quelm::askNameService({std::string(64, 'a') + ".invalid", 9100}, SOCK_STREAM);
    EXPECT_EQ(answer.kind, HostAnswer::Kind::unknown);
    EXPECT_TRUE(answer.addresses.empty());
}

TEST(NameServiceTest, NoAddressHasNoText) { EXPECT_EQ(numericText(quelm::SocketAddress()), ""); }

} // namespace
