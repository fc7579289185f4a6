// Tests of looking up hosts, with a name service in between that can be told to fail.
#include "driver/jobs/host_lookup.h"

#include "tests/driver/jobs/job_support.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <netdb.h>
#include <netinet/in.h>

#include <cerrno>
#include <future>
#include <map>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;

/// Names that the tests' name service does not answer before this is done.
std::promise<void>* unanswered = nullptr;

const std::map<std::string_view, int>& failures()
{
    static const std::map<std::string_view, int> all{{"unknown.test", EAI_NONAME},
                                                     {"nodata.test", EAI_NODATA},
                                                     {"later.test", EAI_AGAIN},
                                                     {"broken.test", EAI_SYSTEM},
                                                     {"failed.test", EAI_FAIL}};
    return all;
}

} // namespace
} // namespace quelm::tests

/// Stands ahead of the C library's for the whole test program, and hands on what it does not know.
extern "C" int getaddrinfo(const char* host, const char* service, const addrinfo* wanted, addrinfo** found)
{
    using namespace quelm::tests;
    const std::string_view name = host != nullptr ? host : "";
    if (name == "silent.test")
        unanswered->get_future().wait();
    if (const auto failure = failures().find(name); failure != failures().end()) {
        errno = EMFILE;
        return failure->second;
    }
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name == "silent.test" ? "127.0.0.1" : host, service, wanted, found);
}

namespace quelm::tests {
namespace {

std::vector<SocketAddress> lookUp(const std::string& host, std::uint16_t port = 9100)
{
    return lookUpHost({host, port}, "device", 10s, {});
}

std::string failureOf(const std::string& host)
{
    return errorLine([&] { lookUp(host); });
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
    std::promise<void> answer;
    unanswered = &answer;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(errorLine([] { lookUpHost({"silent.test"}, "device", 100ms, {}); }),
              "device: the name service does not answer within 100 ms; try again later, or give the device's "
              "IP address");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    answer.set_value();
}

TEST(HostLookup, TheUserNeedNotWaitForTheNameService)
{
    std::promise<void> answer;
    unanswered = &answer;
    const Transfer cancelled{{}, [] { return true; }};
    EXPECT_EQ(errorLine([&] { lookUpHost({"silent.test"}, "device", 60s, cancelled); }),
              "device: the job was cancelled before anything of it went out");
    answer.set_value();
}

} // namespace
} // namespace quelm::tests
