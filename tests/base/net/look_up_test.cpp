// Tests of looking up hosts, with a name service in between that can be told to fail.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/look_up.h"

#include "tests/servers/name_service.h"

#include <gtest/gtest.h>
#include <netinet/in.h>

#include <chrono>
#include <string>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using Kind = HostAnswer::Kind;

Deadline in(std::chrono::milliseconds time) { return std::chrono::steady_clock::now() + time; }

HostAnswer answerFor(const std::string& host, std::uint16_t port = 9100)
{
    return lookUp({host, port}, SOCK_STREAM, in(10s));
}

/// Nobody can be asked within this.
Deadline past() { return in(-1s); }

TEST(LookUp, ANumericAddressIsReadWithoutANameService)
{
    const auto four = lookUp({"127.0.0.2", 9101}, SOCK_STREAM, past());
    ASSERT_EQ(four.kind, Kind::found);
    ASSERT_EQ(four.addresses.size(), 1U);
    EXPECT_EQ(four.addresses[0].family(), AF_INET);
    EXPECT_EQ(four.addresses[0].size, sizeof(sockaddr_in));
    EXPECT_EQ(numericText(four.addresses[0]), "127.0.0.2:9101");
    EXPECT_EQ(four.reason, "");
    const auto six = lookUp({"2001:db8::1", 161}, SOCK_DGRAM, past());
    ASSERT_EQ(six.addresses.size(), 1U);
    EXPECT_EQ(six.addresses[0].family(), AF_INET6);
    EXPECT_EQ(numericText(six.addresses[0]), "[2001:db8::1]:161");
    const auto own = answerFor("::1", 9102);
    ASSERT_EQ(own.addresses.size(), 1U);
    EXPECT_EQ(numericText(own.addresses[0]), "[::1]:9102");
}

TEST(LookUp, ANameIsNoNumericAddress)
{
    const servers::SilentNameService silence;
    const auto answer = lookUp({"silent.test", 9100}, SOCK_STREAM, past());
    EXPECT_EQ(answer.kind, Kind::late);
    EXPECT_TRUE(answer.addresses.empty());
}

TEST(LookUp, FindsNames)
{
    const auto answer = answerFor("localhost", 9103);
    ASSERT_EQ(answer.kind, Kind::found) << answer.reason;
    ASSERT_FALSE(answer.addresses.empty());
    for (const auto& address : answer.addresses) {
        const auto shown = numericText(address);
        EXPECT_TRUE(shown == "127.0.0.1:9103" || shown == "[::1]:9103") << shown;
    }
}

TEST(LookUp, ANameThatCannotBeIsUnknown)
{
    // A label of 64 letters is refused by the look-up itself: nobody else is asked.
    const auto answer = answerFor(std::string(64, 'a') + ".invalid");
    EXPECT_EQ(answer.kind, Kind::unknown);
    EXPECT_TRUE(answer.addresses.empty());
}

TEST(LookUp, ANameThatIsSetAsideForNobodyIsNotFound)
{
    const auto start = std::chrono::steady_clock::now();
    const auto answer = answerFor("no-such-host.invalid");
    EXPECT_TRUE(answer.kind == Kind::unknown || answer.kind == Kind::unavailable) << answer.reason;
    EXPECT_LT(std::chrono::steady_clock::now() - start, 12s);
}

TEST(LookUp, EachFailureIsOfItsKindAndHasTheSystemsWords)
{
    EXPECT_EQ(answerFor("unknown.test").kind, Kind::unknown);
    EXPECT_EQ(answerFor("nodata.test").kind, Kind::unknown);
    EXPECT_NE(answerFor("unknown.test").reason, "");
    EXPECT_EQ(answerFor("later.test").kind, Kind::unavailable);
    EXPECT_EQ(answerFor("broken.test").kind, Kind::failed);
    EXPECT_EQ(answerFor("broken.test").reason, "Too many open files");
    EXPECT_EQ(answerFor("failed.test").kind, Kind::failed);
    EXPECT_EQ(answerFor("failed.test").reason, "Non-recoverable failure in name resolution");
}

TEST(LookUp, ANameServiceThatIsSilentIsWaitedForUntilTheDeadline)
{
    const servers::SilentNameService silence;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(lookUp({"silent.test"}, SOCK_STREAM, start + 100ms).kind, Kind::late);
    const auto taken = std::chrono::steady_clock::now() - start;
    EXPECT_GE(taken, 100ms);
    EXPECT_LT(taken, 5s);
}

TEST(LookUp, TheUserNeedNotWaitForTheNameService)
{
    const servers::SilentNameService silence;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(lookUp({"silent.test"}, SOCK_STREAM, start + 60s, [] { return true; }).kind, Kind::cancelled);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

} // namespace
} // namespace quelm::tests
