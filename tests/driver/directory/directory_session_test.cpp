// Servers that come, go, hang and refuse.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_session.h"

#include "tests/driver/directory/directory_fixture.h"
#include "tests/servers/refused_port.h"

#include <sys/time.h>

#include <csignal>
#include <utility>

namespace {

using servers::Cut;
using servers::FullListener;
using servers::person;
using servers::ServingListener;
using servers::SilentListener;
using servers::SlapdServer;
using std::chrono::milliseconds;

class DirectorySessionTest : public DirectoryTest {};

TEST_F(DirectorySessionTest, AServerThatIsNotThereIsNotReached)
{
    const servers::RefusedPort refused(servers::Transport::tcp);
    const std::string address = refused.address();
    EXPECT_FALSE(open(address));
    EXPECT_EQ(trouble(),
              named(address) +
                  " refuses connections; check that it runs, and the address that the device gives");
    EXPECT_EQ(log.messages, (Names{trouble()}));
    EXPECT_FALSE(session.bindAnonymousSession());
    EXPECT_FALSE(search());
    EXPECT_EQ(code(), 81);
    EXPECT_EQ(count(), 0);
}

TEST_F(DirectorySessionTest, ATextThatIsNoAddressIsRefused)
{
    EXPECT_FALSE(open("http://ldap.example"));
    EXPECT_EQ(trouble(),
              "\"http://ldap.example\" is no address of a directory server; check the address that "
              "the device gives");
    EXPECT_FALSE(search());
}

TEST_F(DirectorySessionTest, AHangingConnectionIsGivenUpInTime)
{
    const FullListener full;
    settings.connectTimeout = shortTime;
    EXPECT_LT(timeOf([&] { EXPECT_FALSE(open(full.address())); }), muchLonger);
    EXPECT_EQ(trouble(), named(full.address()) +
                             " did not answer in time; check that it runs, and the address "
                             "that the device gives");
}

TEST_F(DirectorySessionTest, AServerThatNeverAnswersIsGivenUpInTime)
{
    const SilentListener silent;
    settings.connectTimeout = shortTime;
    settings.searchTimeout = shortTime;
    EXPECT_TRUE(open(silent.address())); // a connection there is
    EXPECT_LT(timeOf([&] { EXPECT_FALSE(session.bindAnonymousSession()); }), muchLonger);
    EXPECT_LT(timeOf([&] { EXPECT_FALSE(search()); }), muchLonger);
    EXPECT_EQ(code(), 85);
}

TEST_F(DirectorySessionTest, ASearchThatIsNotAnsweredTimesOut)
{
    const SilentListener silent;
    ASSERT_TRUE(open(silent.address()));
    settings.searchTimeout = shortTime;
    const milliseconds took = timeOf([&] { EXPECT_FALSE(search()); });
    EXPECT_GE(took, shortTime);
    EXPECT_LT(took, muchLonger);
    EXPECT_EQ(code(), 85);
    EXPECT_EQ(trouble(), named(silent.address()) +
                             " did not answer a search within 300 ms; search for a longer "
                             "name, or raise the search timeout");
}

TEST_F(DirectorySessionTest, AFrozenServerIsGivenUpInTimeAndUsedAgainLater)
{
    SlapdServer server(serving(servers::persons(500)));
    ASSERT_TRUE(connect(server.address()));
    server.process().freeze();
    settings.searchTimeout = shortTime;
    EXPECT_LT(timeOf([&] { EXPECT_FALSE(search()); }), muchLonger);
    EXPECT_EQ(code(), 85);
    server.process().thaw();
    settings.searchTimeout = std::chrono::seconds(10);
    EXPECT_EQ(found().size(), 500U);
    EXPECT_EQ(trouble(), "");
}

TEST_F(DirectorySessionTest, AServerThatComesBackIsFoundAtTheNextSearch)
{
    SlapdServer server(serving({person("Smith")}));
    ASSERT_TRUE(connect(server.address()));
    ASSERT_EQ(found(), (Names{"Smith"}));
    server.process().kill();
    EXPECT_FALSE(search());
    EXPECT_EQ(code(), 81);
    EXPECT_FALSE(search());
    server.start();
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(code(), 0);
    EXPECT_EQ(trouble(), "");
}

TEST_F(DirectorySessionTest, ARestartBetweenTwoSearchesIsNotNoticed)
{
    SlapdServer server(serving({person("Smith")}));
    ASSERT_TRUE(connect(server.address()));
    for (int restart = 0; restart < 3; ++restart) {
        if (restart % 2 == 0)
            server.process().kill();
        server.start();
        EXPECT_EQ(found(), (Names{"Smith"}));
    }
    EXPECT_EQ(log.messages.size(), 0U);
}

TEST_F(DirectorySessionTest, AServerThatIsDownAtFirstIsFoundAtTheFirstSearchAfterItsStart)
{
    SlapdServer server(serving({person("Smith")}));
    server.process().stop();
    EXPECT_FALSE(connect(server.address()));
    server.start();
    EXPECT_EQ(found(), (Names{"Smith"}));
}

TEST_F(DirectorySessionTest, OpeningAgainMakesANewConnection)
{
    const SlapdServer server(serving({person("Smith")}));
    const ServingListener proxy(servers::cuttingProxy(server.port(), 1U << 30U, Cut::close));
    ASSERT_TRUE(connect(proxy.address()));
    ASSERT_TRUE(connect(proxy.address())); // the proxy serves one at a time, so the first is closed
    EXPECT_EQ(proxy.connections(), 2);
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(proxy.connections(), 2); // searches share one
}

TEST_F(DirectorySessionTest, ARefusedBindFailsTheNextSearch)
{
    auto slapd = serving({person("Smith")});
    slapd.anonymousBind = false;
    const SlapdServer server(slapd);
    EXPECT_TRUE(open(server.address()));
    EXPECT_FALSE(session.bindAnonymousSession());
    EXPECT_FALSE(search());
    EXPECT_EQ(code(), 48);
    EXPECT_EQ(trouble(),
              named(server.address()) +
                  " refuses to be used without a login (anonymous bind disallowed); let it be searched "
                  "anonymously");
}

TEST_F(DirectorySessionTest, ASearchWithoutABindIsPossible)
{
    const SlapdServer server(serving({person("Smith")}));
    ASSERT_TRUE(open(server.address()));
    EXPECT_EQ(found(), (Names{"Smith"}));
}

TEST_F(DirectorySessionTest, AServerThatRequiresALoginForSearchesFailsThem)
{
    auto slapd = serving({person("Smith")});
    slapd.configuration = "require authc";
    const SlapdServer server(slapd);
    connect(server.address());
    EXPECT_FALSE(search());
    EXPECT_EQ(count(), 0);
    EXPECT_NE(trouble(), "");
}

TEST_F(DirectorySessionTest, Ipv6AddressesAreReached)
{
    const SlapdServer server(serving({person("Smith")}));
    const bool reached = connect("[::1]:" + std::to_string(server.port()));
    EXPECT_EQ(reached, servers::hasIpv6()) << trouble();
    EXPECT_EQ(found() == Names{"Smith"}, reached);
}

TEST_F(DirectorySessionTest, AnotherAddressClosesTheConnection)
{
    const SlapdServer first(serving({person("First")}));
    const SlapdServer second(serving({person("Second")}));
    ASSERT_TRUE(connect(first.address()));
    std::string address = second.address();
    session.setServerIP(address.data());
    EXPECT_EQ(found(), (Names{"Second"}));
}

/// Interrupts this process every millisecond.
class Interruptions {
public:
    Interruptions()
    {
        struct sigaction counting = {};
        counting.sa_handler = [](int) {}; // without SA_RESTART: every wait is interrupted
        sigaction(SIGALRM, &counting, &before_);
        const itimerval everyMillisecond{{0, 1000}, {0, 1000}};
        setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
    }
    ~Interruptions()
    {
        const itimerval never{};
        setitimer(ITIMER_REAL, &never, nullptr);
        sigaction(SIGALRM, &before_, nullptr);
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;

private:
    struct sigaction before_ = {};
};

TEST_F(DirectorySessionTest, SignalsDoNotEndASearch)
{
    const SlapdServer server(serving(servers::persons(1000)));
    const SilentListener silent;
    const Interruptions interruptions;
    ASSERT_TRUE(connect(server.address())) << trouble();
    EXPECT_EQ(found().size(), 1000U);
    ASSERT_TRUE(open(silent.address()));
    settings.searchTimeout = shortTime;
    EXPECT_GE(timeOf([&] { EXPECT_FALSE(search()); }), shortTime);
    EXPECT_EQ(code(), 85);
}

TEST_F(DirectorySessionTest, SignalsDoNotEndConnecting)
{
    const FullListener full;
    const Interruptions interruptions;
    settings.connectTimeout = shortTime;
    EXPECT_GE(timeOf([&] { EXPECT_FALSE(open(full.address())); }), shortTime);
}

TEST_F(DirectorySessionTest, ManySessionsLeaveNoDescriptorsBehind)
{
    const SlapdServer server(serving({person("Smith")}));
    const auto descriptors = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    ASSERT_TRUE(connect(server.address()));
    const auto before = descriptors();
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(connect(server.address()));
        ASSERT_TRUE(search());
        open("127.0.0.1:1");
        LDAPSession other;
    }
    ASSERT_TRUE(connect(server.address()));
    EXPECT_EQ(descriptors(), before);
}

} // namespace
