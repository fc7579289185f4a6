// Questions to devices: real ones, and ones that misbehave.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/snmp_session.h"

#include "base/error.h"
#include "tests/driver/device/snmp_replies.h"
#include "tests/servers/refused_port.h"
#include "tests/servers/slapd_server.h"
#include "tests/servers/snmpd_server.h"
#include "tests/servers/udp_device.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using quelm::SnmpAnswer;
using quelm::SnmpSession;
using quelm::SnmpVersion;
using servers::SnmpdServer;
using servers::UdpDevice;
using testing::HasSubstr;
using Kind = SnmpAnswer::Kind;

const quelm::ObjectIdentifier description{1, 3, 6, 1, 2, 1, 1, 1, 0};

quelm::ObjectIdentifier named(const std::string& dotted)
{
    return quelm::parseObjectIdentifier(dotted).value();
}

quelm::DeviceSettings settingsFor(const std::string& address)
{
    quelm::DeviceSettings settings;
    settings.address = address;
    settings.timeout = 5s; // long enough for a busy machine; who waits for it sets its own
    return settings;
}

/// A device that does not answer is given up after this time.
constexpr auto shortTime = 300ms;

quelm::DeviceSettings impatientFor(const std::string& address)
{
    auto settings = settingsFor(address);
    settings.timeout = shortTime;
    return settings;
}

/// Asks once, and says how it went.
SnmpAnswer ask(const quelm::DeviceSettings& settings, const quelm::ObjectIdentifier& object = description)
{
    SnmpSession session(settings);
    return session.get(object);
}

class SnmpSessionTest : public testing::Test {
protected:
    static servers::SnmpdSettings deviceSettings()
    {
        servers::SnmpdSettings settings;
        settings.objects = {{"1.3.6.1.4.1.32473.1.1", "text"},
                            {"1.3.6.1.4.1.32473.1.2", "-5", "integer"},
                            {"1.3.6.1.4.1.32473.1.3", std::string("Gr\xC3\xB6\xC3\x9F\0\0", 8)},
                            {"1.3.6.1.4.1.32473.1.4", ""},
                            {"1.3.6.1.4.1.32473.1.5", std::string(1500, 'x')}};
        return settings;
    }
};

} // namespace

TEST_F(SnmpSessionTest, ObjectsAreReadInVersions1And2c)
{
    const SnmpdServer device(deviceSettings());
    for (const SnmpVersion version : {SnmpVersion::v1, SnmpVersion::v2c}) {
        auto settings = settingsFor(device.address());
        settings.version = version;
        SnmpSession session(settings);
        EXPECT_EQ(session.get(description).text, "Quelm Fax 7");
        EXPECT_EQ(session.get(named("1.3.6.1.4.1.32473.1.1")).text, "text");
        EXPECT_EQ(session.get(named("1.3.6.1.4.1.32473.1.2")).text, "-5");
        EXPECT_EQ(session.get(named("1.3.6.1.4.1.32473.1.3")).text, "Größ");
        EXPECT_EQ(session.get(named("1.3.6.1.4.1.32473.1.4")).kind, Kind::value);
        EXPECT_EQ(session.get(named("1.3.6.1.4.1.32473.1.4")).text, "");
        EXPECT_EQ(session.get(named("1.3.6.1.4.1.32473.1.5")).text, std::string(1500, 'x'));
    }
}

TEST_F(SnmpSessionTest, AMissingObjectIsAnAnswerInBothVersions)
{
    const SnmpdServer device(deviceSettings());
    for (const SnmpVersion version : {SnmpVersion::v1, SnmpVersion::v2c}) {
        auto settings = settingsFor(device.address());
        settings.version = version;
        const auto before = Clock::now();
        const SnmpAnswer answer = ask(settings, named("1.3.6.1.4.1.32473.7.7"));
        EXPECT_LT(Clock::now() - before, 4s) << "an answer is not waited for";
        EXPECT_EQ(answer.kind, Kind::noObject);
        EXPECT_EQ(answer.trouble, "");
    }
}

TEST_F(SnmpSessionTest, ADeviceIsReachedOverIpv6AndByName)
{
    const SnmpdServer device(deviceSettings());
    const std::string port = std::to_string(device.port());
    std::vector<std::string> hosts{"localhost:"};
    if (servers::hasIpv6())
        hosts.emplace_back("[::1]:");
    for (const std::string& host : hosts)
        EXPECT_EQ(ask(settingsFor(host + port)).text, "Quelm Fax 7") << host;
}

TEST_F(SnmpSessionTest, ANameWithSeveralAddressesIsTriedUntilOneAnswers)
{
    // Serves 127.0.0.1 alone, while "localhost" may stand for ::1 first.
    const UdpDevice device(replies::answering({}));
    EXPECT_EQ(ask(settingsFor("localhost:" + std::to_string(device.port()))).text, "value");
}

TEST_F(SnmpSessionTest, TheCommunityIsUsed)
{
    auto device = deviceSettings();
    device.community = "sesame";
    const SnmpdServer server(device);
    auto settings = settingsFor(server.address());
    settings.community = "sesame";
    EXPECT_EQ(ask(settings).text, "Quelm Fax 7");
}

TEST_F(SnmpSessionTest, AWrongCommunityIsSilence)
{
    auto device = deviceSettings();
    device.community = "sesame";
    const SnmpdServer server(device);
    const SnmpAnswer answer = ask(impatientFor(server.address()));
    EXPECT_EQ(answer.kind, Kind::deviceFailed);
    EXPECT_EQ(answer.trouble, "the device " + server.address() +
                                  " did not answer over SNMP within 0.3 s; check its address, that it is "
                                  "switched on, and the community");
}

TEST_F(SnmpSessionTest, ASilentDeviceCostsTheTimeoutWithAllRepetitions)
{
    for (const int retries : {0, 1, 2, 5}) {
        const UdpDevice device(servers::beingSilent());
        auto settings = impatientFor(device.address());
        settings.retries = retries;
        const auto before = Clock::now();
        EXPECT_EQ(ask(settings).kind, Kind::deviceFailed);
        const auto took = Clock::now() - before;
        EXPECT_GE(took, shortTime - 20ms);
        EXPECT_LT(took, shortTime + 2s);
        EXPECT_EQ(device.received(), retries + 1);
    }
}

TEST_F(SnmpSessionTest, ALostRequestIsRepeated)
{
    const SnmpdServer device(deviceSettings());
    for (const int lost : {1, 2}) {
        const UdpDevice relay(servers::losing(lost, device.port()));
        auto settings = settingsFor(relay.address());
        settings.timeout = 3s;
        EXPECT_EQ(ask(settings).text, "Quelm Fax 7");
        EXPECT_EQ(relay.received(), lost + 1);
    }
}

TEST_F(SnmpSessionTest, ARefusedPortIsNoticedAtOnce)
{
    const servers::RefusedPort refused(servers::Transport::udp);
    const auto address = refused.address();
    const auto before = Clock::now();
    const SnmpAnswer answer = ask(settingsFor(address));
    EXPECT_LT(Clock::now() - before, 4s);
    EXPECT_EQ(answer.kind, Kind::deviceFailed);
    EXPECT_EQ(answer.trouble, "the device " + address +
                                  " does not serve SNMP on that port; switch SNMP on at the device, or check "
                                  "the port");
}

TEST_F(SnmpSessionTest, AnUnknownHostIsNoticedAtOnce)
{
    const std::string name = std::string(64, 'a') + ".invalid"; // no name service is asked for it
    const auto before = Clock::now();
    const SnmpAnswer answer = ask(settingsFor(name));
    EXPECT_LT(Clock::now() - before, 4s);
    EXPECT_EQ(answer.kind, Kind::deviceFailed);
    EXPECT_EQ(answer.trouble, "the device " + name + ":161 is not known to the name service; check its name");
}

TEST_F(SnmpSessionTest, AnAddressThatIsNoneIsRefusedFromTheStart)
{
    EXPECT_THROW(SnmpSession(settingsFor("a b")), quelm::Error);
}

TEST_F(SnmpSessionTest, RubbishIsNoAnswer)
{
    std::mt19937 random{7};
    std::string noise(500, '\0');
    for (char& byte : noise)
        byte = static_cast<char>(random());
    for (const std::string& rubbish : {std::string(), std::string("hello"), std::string(3, '\0'), noise,
                                       std::string("\x30\x84\x7f\xff\xff\xff\x02\x01\x01", 9),
                                       std::string("\x30\x80"), std::string("\x30\x03\x02\x01\x03")}) {
        const UdpDevice device(servers::answeringWith(rubbish));
        const auto before = Clock::now();
        const SnmpAnswer answer = ask(impatientFor(device.address()));
        EXPECT_EQ(answer.kind, Kind::deviceFailed);
        EXPECT_THAT(answer.trouble, HasSubstr("did not answer over SNMP"));
        EXPECT_LT(Clock::now() - before, shortTime + 2s);
    }
}

TEST_F(SnmpSessionTest, ADeviceThatSendsWithoutEndCostsNoMoreThanTheTimeout)
{
    for (const SnmpVersion version : {SnmpVersion::v2c, SnmpVersion::v3}) {
        const UdpDevice device(servers::floodingWith("rubbish"));
        auto settings = impatientFor(device.address());
        settings.version = version;
        settings.user.name = "ann";
        const auto before = Clock::now();
        EXPECT_EQ(ask(settings).kind, Kind::deviceFailed);
        EXPECT_LT(Clock::now() - before, shortTime + 2s);
    }
}

TEST_F(SnmpSessionTest, TheAnswerToAnotherRequestIsNotTaken)
{
    std::string earlier;
    const UdpDevice device([&](const std::string& request, const servers::Reply& reply) {
        if (earlier.empty())
            replies::answering({})(request, [&](const std::string& answer) {
                earlier = answer;
                return true;
            });
        reply(earlier);
    });
    SnmpSession session(impatientFor(device.address()));
    EXPECT_EQ(session.get(description).text, "value");
    EXPECT_EQ(session.get(description).kind, Kind::deviceFailed);
}

/// Communities that are not "public", however alike.
const std::string otherCommunities[] = {"",        "private", "publi",
                                        "public2", "Public",  std::string("public\0", 7)};

TEST_F(SnmpSessionTest, AnAnswerWithAnotherCommunityIsNotTakenAndTheRightOneIsWaitedFor)
{
    for (const SnmpVersion version : {SnmpVersion::v1, SnmpVersion::v2c}) {
        const UdpDevice device([](const std::string& request, const servers::Reply& reply) {
            for (const std::string& community : otherCommunities) {
                replies::answering({.value = replies::element(0x04, "forged"), .community = community})(
                    request, reply);
                replies::answering({.errorStatus = 2, .community = community})(request, reply);
                replies::answering({.withVariables = false, .community = community})(request, reply);
            }
            replies::answering({})(request, reply);
        });
        auto settings = settingsFor(device.address());
        settings.version = version;
        const SnmpAnswer answer = ask(settings);
        EXPECT_EQ(answer.kind, Kind::value);
        EXPECT_EQ(answer.text, "value");
        EXPECT_EQ(device.received(), 1) << "the request need not be repeated";
    }
}

TEST_F(SnmpSessionTest, AnswersWithAnotherCommunityAloneAreSilence)
{
    const UdpDevice device(replies::answering({.community = "private"}));
    auto settings = impatientFor(device.address());
    settings.retries = 2;
    const auto before = Clock::now();
    const SnmpAnswer answer = ask(settings);
    EXPECT_EQ(answer.kind, Kind::deviceFailed);
    EXPECT_THAT(answer.trouble, HasSubstr("did not answer over SNMP"));
    EXPECT_GE(Clock::now() - before, shortTime - 20ms);
    EXPECT_LT(Clock::now() - before, shortTime + 2s);
    EXPECT_EQ(device.received(), 3);
}

TEST_F(SnmpSessionTest, AnErrorStatusIsToldWithItsObject)
{
    constexpr char generalError = 5;
    const UdpDevice device(replies::answering({.errorStatus = generalError}));
    const SnmpAnswer answer = ask(settingsFor(device.address()));
    EXPECT_EQ(answer.kind, Kind::objectRefused);
    EXPECT_THAT(answer.trouble, HasSubstr("the device " + device.address() +
                                          " does not tell the object 1.3.6.1.2.1.1.1.0: (genError)"));
}

TEST_F(SnmpSessionTest, ADeviceWithoutRightsForUsFailsAsAWhole)
{
    constexpr char authorizationError = 16;
    const UdpDevice device(replies::answering({.errorStatus = authorizationError}));
    EXPECT_EQ(ask(settingsFor(device.address())).kind, Kind::deviceFailed);
}

TEST_F(SnmpSessionTest, NoSuchNameIsAMissingObject)
{
    constexpr char noSuchName = 2;
    const UdpDevice device(replies::answering({.errorStatus = noSuchName}));
    auto settings = settingsFor(device.address());
    settings.version = SnmpVersion::v1;
    EXPECT_EQ(ask(settings).kind, Kind::noObject);
}

TEST_F(SnmpSessionTest, AnAnswerAboutSomethingElseIsNone)
{
    for (const auto& answer :
         {replies::Answer{.object = "\x2b\x06\x01"}, replies::Answer{.withVariables = false}}) {
        const UdpDevice device(replies::answering(answer));
        const SnmpAnswer got = ask(settingsFor(device.address()));
        EXPECT_EQ(got.kind, Kind::deviceFailed);
        EXPECT_THAT(got.trouble, HasSubstr("does not answer what it was asked"));
    }
}

TEST_F(SnmpSessionTest, ValuesThatNoTextCanShowAreMissing)
{
    const std::string opaqueFloat = replies::element(0x44, std::string("\x9f\x78\x04\x3f\x80\0\0", 7));
    for (const std::string& value : {opaqueFloat, replies::element(0x05, "")}) {
        const UdpDevice device(replies::answering({.value = value}));
        EXPECT_EQ(ask(settingsFor(device.address())).kind, Kind::noObject);
    }
    const UdpDevice other(
        replies::answering({.value = replies::element(0x40, std::string("\x0a\0\0\x07", 4))}));
    EXPECT_EQ(ask(settingsFor(other.address())).text, "10.0.0.7");
}

TEST_F(SnmpSessionTest, ADeviceIsAskedHoweverManyFilesAreOpen)
{
    const SnmpdServer device(deviceSettings());
    EXPECT_EQ(inProcess([&] {
                  constexpr rlim_t enough = 2000;
                  constexpr int beyondSmallSets = 1500;
                  rlimit limit{};
                  getrlimit(RLIMIT_NOFILE, &limit);
                  limit.rlim_cur = std::min(enough, limit.rlim_max);
                  setrlimit(RLIMIT_NOFILE, &limit);
                  int last = 0;
                  while (last >= 0 && last < beyondSmallSets)
                      last = open("/dev/null", O_RDONLY | O_CLOEXEC);
                  if (last < 0)
                      return 1;
                  return ask(settingsFor(device.address())).text == "Quelm Fax 7" ? 0 : 2;
              }),
              0);
}

TEST_F(SnmpSessionTest, ADeviceThatComesBackIsAskedAgain)
{
    SnmpdServer device(deviceSettings());
    SnmpSession session(impatientFor(device.address()));
    device.process().freeze();
    EXPECT_EQ(session.get(description).kind, Kind::deviceFailed);
    device.process().thaw();
    EXPECT_EQ(session.get(description).text, "Quelm Fax 7");
    device.process().stop();
    EXPECT_EQ(session.get(description).kind, Kind::deviceFailed);
    device.start();
    EXPECT_EQ(session.get(description).text, "Quelm Fax 7");
}

namespace {

/// A device with users of version 3.
class SnmpUserTest : public testing::Test {
protected:
    static servers::SnmpdSettings withUsers(const std::vector<servers::DeviceUser>& users)
    {
        servers::SnmpdSettings settings;
        settings.users = users;
        return settings;
    }

    static quelm::DeviceSettings asUser(const std::string& address, const quelm::SnmpUser& user)
    {
        auto settings = settingsFor(address);
        settings.version = SnmpVersion::v3;
        settings.user = user;
        return settings;
    }
};

const servers::DeviceUser anne{"anne", "SHA-256", "authentic7", "AES", "private77"};
const quelm::SnmpUser anneHere{"anne", "SHA-256", "authentic7", "AES", "private77"};

} // namespace

TEST_F(SnmpUserTest, AllMethodsAreSpoken)
{
    std::vector<servers::DeviceUser> users{{"plain"}};
    for (const std::string method : {"MD5", "SHA", "SHA-224", "SHA-256", "SHA-384", "SHA-512"}) {
        users.push_back({"signs" + method, method, "authentic7"});
        for (const std::string privacy : {"DES", "AES"})
            users.push_back({"hides" + method + privacy, method, "authentic7", privacy, "private77"});
    }
    const SnmpdServer device(withUsers(users));
    for (const auto& user : users) {
        const SnmpAnswer answer =
            ask(asUser(device.address(), {user.name, user.authentication, user.authenticationPassphrase,
                                          user.privacy, user.privacyPassphrase}));
        EXPECT_EQ(answer.text, "Quelm Fax 7") << user.name << ": " << answer.trouble;
    }
}

TEST_F(SnmpUserTest, AMissingObjectIsAnAnswer)
{
    const SnmpdServer device(withUsers({anne}));
    EXPECT_EQ(ask(asUser(device.address(), anneHere), named("1.3.6.1.4.1.32473.7.7")).kind, Kind::noObject);
}

TEST_F(SnmpUserTest, WhatIsWrongWithTheUserIsTold)
{
    const SnmpdServer device(withUsers({anne, {"plain"}}));
    const auto trouble = [&](const quelm::SnmpUser& user) {
        const auto before = Clock::now();
        const SnmpAnswer answer = ask(asUser(device.address(), user));
        EXPECT_LT(Clock::now() - before, 4s) << "an answer is not waited for";
        EXPECT_EQ(answer.kind, Kind::deviceFailed);
        return answer.trouble;
    };
    EXPECT_THAT(trouble({"eve"}), HasSubstr("does not know the SNMP user \"eve\"; check the user's name"));
    EXPECT_THAT(trouble({"anne", "SHA-256", "wrong passphrase"}),
                HasSubstr("refuses the SNMP user \"anne\"; check authentication and"));
    EXPECT_THAT(trouble({"anne", "MD5", "authentic7"}), HasSubstr("refuses the SNMP user \"anne\""));
    EXPECT_THAT(trouble({"plain", "SHA", "authentic7"}),
                HasSubstr("does not offer that authentication or privacy to the SNMP user \"plain\""));
}

TEST_F(SnmpUserTest, AWrongPrivacyPassphraseIsSilenceAndSaysWhatToCheck)
{
    const SnmpdServer device(withUsers({anne}));
    auto settings = asUser(device.address(), anneHere);
    settings.user.privacyPassphrase = "wrong passphrase";
    settings.timeout = shortTime;
    const SnmpAnswer answer = ask(settings);
    EXPECT_EQ(answer.kind, Kind::deviceFailed);
    EXPECT_THAT(answer.trouble, HasSubstr("and the user's passphrases"));
}

TEST_F(SnmpUserTest, ACorrectedPassphraseIsUsedAtOnce)
{
    const SnmpdServer device(withUsers({anne}));
    auto settings = asUser(device.address(), anneHere);
    settings.user.authenticationPassphrase = "wrong passphrase";
    EXPECT_EQ(ask(settings).kind, Kind::deviceFailed);
    EXPECT_EQ(ask(asUser(device.address(), anneHere)).text, "Quelm Fax 7");
}

TEST_F(SnmpUserTest, ADeviceThatWasRestartedIsAskedOnWithoutAFailure)
{
    SnmpdServer device(withUsers({anne}));
    SnmpSession session(asUser(device.address(), anneHere));
    EXPECT_EQ(session.get(description).text, "Quelm Fax 7");
    device.process().stop();
    device.start();
    const auto before = Clock::now();
    EXPECT_EQ(session.get(description).text, "Quelm Fax 7");
    EXPECT_LT(Clock::now() - before, 2s) << "it tells its new time, which is not waited for";
}

TEST_F(SnmpUserTest, ADeviceThatWasExchangedIsAskedOnWithoutAFailure)
{
    SnmpdServer device(withUsers({anne}));
    SnmpSession session(asUser(device.address(), anneHere));
    EXPECT_EQ(session.get(description).text, "Quelm Fax 7");
    device.process().stop();
    auto other = withUsers({anne});
    other.description = "Quelm Fax 8";
    device.startAnother(other);
    EXPECT_EQ(session.get(description).text, "Quelm Fax 8");
}

TEST_F(SnmpUserTest, ASilentDeviceCostsOneTimeout)
{
    const UdpDevice device(servers::beingSilent());
    auto settings = asUser(device.address(), anneHere);
    settings.timeout = shortTime;
    const auto before = Clock::now();
    EXPECT_EQ(ask(settings).kind, Kind::deviceFailed);
    EXPECT_LT(Clock::now() - before, shortTime + 2s);
    EXPECT_EQ(device.received(), settings.retries + 1);
}
