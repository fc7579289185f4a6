// Tests of looking up hosts, with a name service in between that can be told to fail.
#include "base/net/host_lookup.h"

#include "tests/servers/name_service.h"
#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;

std::vector<SocketAddress> lookUp(const std::string& host, std::uint16_t port = 9100)
{
    return lookUpHost({host, port}, "device", 10s, {});
}

std::string failureOf(const std::string& host)
{
    return test::failureLine([&] { lookUp(host); });
}

TEST(HostLookup, FindsNumericAddresses)
{
    const auto v4 = lookUp("127.0.0.1", 9101);
    ASSERT_EQ(v4.size(), 1U);
    EXPECT_EQ(numericText(v4[0]), "127.0.0.1:9101");
    const auto v6 = lookUp("::1", 9102);
    ASSERT_EQ(v6.size(), 1U);
    EXPECT_EQ(numericText(v6[0]), "[::1]:9102");
}

TEST(HostLookup, FindsNames)
{
    const auto found = lookUp("localhost", 9103);
    ASSERT_GE(found.size(), 1U);
    for (const auto& address : found) {
        const auto shown = numericText(address);
        EXPECT_TRUE(shown == "127.0.0.1:9103" || shown == "[::1]:9103") << shown;
    }
}

TEST(HostLookup, EachFailureIsOneLine)
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

TEST(HostLookup, ANameServiceThatIsSilentIsWaitedForWithinTheLimit)
{
    const servers::SilentNameService silence;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(test::failureLine([] { lookUpHost({"silent.test"}, "device", 100ms, {}); }),
              "device: the name service does not answer within 100 ms; try again later, or give the device's "
              "IP address");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST(HostLookup, TheUserNeedNotWaitForTheNameService)
{
    const servers::SilentNameService silence;
    const Cancellation cancelled = [] { return true; };
    EXPECT_EQ(test::failureLine([&] { lookUpHost({"silent.test"}, "device", 60s, cancelled); }),
              "device: the job was cancelled before anything of it went out");
}

} // namespace
} // namespace quelm::tests
