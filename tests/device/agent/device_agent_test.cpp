// The agent as drivers and network monitors find it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/device_agent.h"

#include "base/error.h"
#include "device/agent/agent_objects.h"
#include "tests/device/agent/snmp_client.h"
#include "tests/servers/slapd_server.h" // hasIpv6
#include "tests/servers/udp_device.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <map>
#include <random>

namespace {

using quelm::device::AgentSettings;
using quelm::device::DeviceAgent;
using snmp::Client;
using snmp::named;
using snmp::Question;
using snmp::Version;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;
using Texts = std::map<std::string, std::string>;

const std::string settingsRoot = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.";
const snmp::Name description = named("1.3.6.1.2.1.1.1.0");
const snmp::Name upTime = named("1.3.6.1.2.1.1.3.0");
const snmp::Name printerStatus = named("1.3.6.1.2.1.25.3.5.1.1.1");
constexpr int shortly = 300; // milliseconds, for an answer that may be lost

AgentSettings withDirectory()
{
    AgentSettings settings;
    settings.port = 0;
    settings.directory.server = "127.0.0.1:3389";
    settings.directory.base = "dc=example";
    return settings;
}

std::string textOf(const Client& client, const snmp::Name& name)
{
    const auto answer = client.ask(Question::get, name);
    if (!answer || answer->error != 0 || answer->only().type != snmp::text)
        return "no text";
    return answer->only().value;
}

std::string portOf(const DeviceAgent& agent)
{
    const std::string address = agent.addresses().front();
    return address.substr(address.rfind(':') + 1);
}

TEST(DeviceAgentTest, EveryObjectOfTheDirectorySettingsIsAnswered)
{
    const DeviceAgent agent(withDirectory());
    const Client client(agent.addresses().front());
    const Texts expected = {{"114.11", "127.0.0.1:3389"},
                            {"118.1", "dc=example"},
                            {"122.1", ""},
                            {"384.80", "cn"},
                            {"384.81", "mail"},
                            {"384.83", "telephoneNumber"},
                            {"384.84", "postalAddress"},
                            {"384.85", "physicalDeliveryOfficeName"},
                            {"384.86", "l"},
                            {"384.87", "st"},
                            {"384.88", "postalCode"},
                            {"384.89", "c"},
                            {"384.91", "facsimileTelephoneNumber"}};
    for (const auto& [object, text] : expected)
        EXPECT_EQ(textOf(client, named(settingsRoot + object)), text) << object;
}

TEST(DeviceAgentTest, ModelAndNameAreToldInTheirUsualObjects)
{
    AgentSettings settings = withDirectory();
    settings.description = "Fax der Straße";
    settings.name = "Flur";
    const DeviceAgent agent(settings);
    const Client client(agent.addresses().front());
    EXPECT_EQ(textOf(client, description), "Fax der Straße");
    EXPECT_EQ(textOf(client, named("1.3.6.1.2.1.25.3.2.1.3.1")), "Fax der Straße");
    EXPECT_EQ(textOf(client, named("1.3.6.1.2.1.43.5.1.1.16.1")), "Flur");
    EXPECT_NE(textOf(client, named("1.3.6.1.2.1.1.5.0")), "no text");
    EXPECT_EQ(client.ask(Question::get, named("1.3.6.1.2.1.25.3.2.1.5.1"))->only().number(), 2) << "running";
    const auto uptime = client.ask(Question::get, upTime);
    EXPECT_EQ(uptime->only().type, snmp::timeTicks);
    EXPECT_LT(uptime->only().number(), 60'00) << "hundredths of a second since this agent's start";
}

TEST(DeviceAgentTest, TheStateSaysWhetherTheDeviceWorks)
{
    std::atomic<bool> busy = false;
    AgentSettings settings = withDirectory();
    settings.isBusy = [&] { return busy.load(); };
    const DeviceAgent agent(settings);
    const Client client(agent.addresses().front());
    EXPECT_EQ(client.ask(Question::get, printerStatus)->only().number(), 3) << "idle";
    busy = true;
    EXPECT_EQ(client.ask(Question::get, printerStatus)->only().number(), 4) << "printing";
}

TEST(DeviceAgentTest, AWalkFindsEveryObjectOnceInOrderAndEnds)
{
    const DeviceAgent agent(withDirectory());
    const Client client(agent.addresses().front());
    for (const Version version : {Version::one, Version::two}) {
        std::vector<snmp::Name> found;
        snmp::Name at = named("1.3");
        for (;;) {
            const auto answer = client.ask(Question::next, at, "public", version);
            ASSERT_TRUE(answer.has_value());
            if (answer->error != 0 || answer->only().type == snmp::endOfView)
                break;
            at = answer->only().name;
            found.push_back(at);
            ASSERT_LE(found.size(), 100U);
        }
        EXPECT_EQ(found, quelm::device::agentObjects());
    }
    const auto bulk = client.ask(Question::bulk, named("1.3.6.1.4.1.32473"));
    ASSERT_TRUE(bulk.has_value());
    ASSERT_GE(bulk->variables.size(), 14U);
    EXPECT_EQ(bulk->variables.at(0).value, "127.0.0.1:3389");
    EXPECT_EQ(bulk->variables.at(13).type, snmp::endOfView);
}

TEST(DeviceAgentTest, WhatTheDeviceDoesNotHaveIsSaidInTheWayOfTheVersion)
{
    const DeviceAgent agent(withDirectory());
    const Client client(agent.addresses().front());
    constexpr int noSuchName = 2;
    EXPECT_EQ(client.ask(Question::get, named("1.3.6.1.2.1.1.99.0"), "public", Version::one)->error,
              noSuchName);
    const auto answer = client.ask(Question::get, named("1.3.6.1.2.1.1.99.0"));
    EXPECT_EQ(answer->error, 0);
    EXPECT_THAT((std::vector{snmp::noSuchObject, snmp::noSuchInstance}),
                testing::Contains(answer->only().type));
}

TEST(DeviceAgentTest, NothingCanBeChanged)
{
    const DeviceAgent agent(withDirectory());
    const Client client(agent.addresses().front());
    const auto answer = client.ask(Question::set, description);
    ASSERT_TRUE(answer.has_value());
    EXPECT_NE(answer->error, 0);
    EXPECT_EQ(textOf(client, description), "Quelm emulated fax device");
}

TEST(DeviceAgentTest, WhoDoesNotKnowTheCommunityIsNotAnswered)
{
    AgentSettings settings = withDirectory();
    settings.community = "sesame";
    const DeviceAgent agent(settings);
    const Client client(agent.addresses().front());
    for (const char* wrong : {"public", "private", "", "sesam", "sesames"})
        client.send(Client::request(Question::get, upTime, wrong, Version::two));
    // Answers come in the order of the questions.
    const auto first = client.ask(Question::get, description, "sesame");
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->only().name, description) << "a question with a wrong community was answered";
}

TEST(DeviceAgentTest, ItListensOnOnePortOfAllAddresses)
{
    const DeviceAgent agent(withDirectory());
    const std::string port = portOf(agent);
    EXPECT_NE(port, "0");
    if (!servers::hasIpv6()) {
        EXPECT_THAT(agent.addresses(), ElementsAre("127.0.0.1:" + port));
        return;
    }
    EXPECT_THAT(agent.addresses(), ElementsAre("127.0.0.1:" + port, "[::1]:" + port));
    EXPECT_EQ(textOf(Client("[::1]:" + port), description), "Quelm emulated fax device");
}

TEST(DeviceAgentTest, OneAfterTheOtherServesInOneProcess)
{
    for (int round = 1; round <= 20; ++round) {
        AgentSettings settings = withDirectory();
        settings.description = "round " + std::to_string(round);
        const DeviceAgent agent(settings);
        EXPECT_EQ(textOf(Client(agent.addresses().front()), description), settings.description);
    }
}

TEST(DeviceAgentTest, ThePortIsFreeWhenTheAgentHasGone)
{
    AgentSettings settings = withDirectory();
    {
        const DeviceAgent agent(settings);
        settings.port = static_cast<std::uint16_t>(std::stoi(portOf(agent)));
    }
    const DeviceAgent again(settings);
    EXPECT_EQ(textOf(Client(again.addresses().front()), description), "Quelm emulated fax device");
}

TEST(DeviceAgentTest, APortThatSomebodyElseHasIsNamed)
{
    const servers::UdpDevice other(servers::beingSilent());
    AgentSettings settings = withDirectory();
    settings.port = static_cast<std::uint16_t>(other.port());
    try {
        const DeviceAgent agent(settings);
        FAIL() << "it listens where somebody else does";
    } catch (const quelm::Error& error) {
        EXPECT_EQ(error.what(),
                  other.address() +
                      ": cannot listen there: another program has this port; end it, or choose another port");
    }
    settings.port = 0;
    const DeviceAgent agent(settings); // a failed start leaves nothing behind
    EXPECT_EQ(textOf(Client(agent.addresses().front()), description), "Quelm emulated fax device");
}

TEST(DeviceAgentTest, WhatIsNoAddressIsRefused)
{
    AgentSettings settings = withDirectory();
    settings.addresses = {"fax.example"};
    try {
        const DeviceAgent agent(settings);
        FAIL() << "it listens at a name";
    } catch (const quelm::Error& error) {
        EXPECT_THAT(error.what(), StartsWith("\"fax.example\" is no numeric address"));
    }
}

TEST(DeviceAgentTest, RubbishDoesNotDisturbIt)
{
    const DeviceAgent agent(withDirectory());
    const Client client(agent.addresses().front());
    const std::string good = Client::request(Question::next, description, "public", Version::two);
    constexpr unsigned seed = 7;
    std::mt19937 random(seed);
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = good;
        const auto changes = 1 + random() % 4;
        for (unsigned change = 0; change < changes; ++change)
            bytes.at(random() % bytes.size()) = static_cast<char>(random());
        if (round % 5 == 0)
            bytes.resize(random() % bytes.size());
        client.send(bytes);
    }
    client.send(std::string(60000, '\x30'));
    // Whatever it answered to that, it answers others. What comes while its queue is full is lost.
    const Client other(agent.addresses().front());
    std::optional<snmp::Answer> answer;
    for (int attempt = 0; attempt < 100 && !answer; ++attempt)
        answer = other.ask(Question::get, description, "public", Version::two, shortly);
    ASSERT_TRUE(answer.has_value()) << seed;
    EXPECT_EQ(answer->only().value, "Quelm emulated fax device");
}

TEST(DeviceAgentTest, NothingOfTheMachinesIsReadAndNothingIsKept)
{
    const TemporaryFolder folder;
    writeFile(folder / "snmpd.conf", "rocommunity stranger\nsysDescr somebody else\n");
    writeFile(folder / "snmp.conf", "rocommunity stranger\n");
    // In a process of its own, which has not started the library before.
    EXPECT_EQ(inProcess([&] {
                  for (const char* variable : {"HOME", "SNMP_PERSISTENT_DIR", "SNMPCONFPATH"})
                      setenv(variable, (folder / "").c_str(), 1);
                  const std::string before = setlocale(LC_ALL, nullptr);
                  {
                      const DeviceAgent agent(withDirectory());
                      const Client client(agent.addresses().front());
                      client.send(Client::request(Question::get, upTime, "stranger", Version::two));
                      if (textOf(client, description) != "Quelm emulated fax device")
                          return 2;
                  }
                  return before == setlocale(LC_ALL, nullptr) ? 0 : 3;
              }),
              0);
    EXPECT_THAT(folder.names(), ElementsAre("snmp.conf", "snmpd.conf"));
}

} // namespace
