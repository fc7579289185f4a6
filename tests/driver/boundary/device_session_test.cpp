// The boundary's questions to the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"

#include "base/error.h"
#include "driver/boundary/host_state.h"
#include "tests/driver/device/snmp_replies.h"
#include "tests/servers/snmpd_server.h"
#include "tests/servers/udp_device.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using servers::SnmpdServer;
using servers::UdpDevice;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto timeout = 300ms;
constexpr int settingsCount = 14; ///< that the dialog of directory settings reads

/// A host that is connected to a device, as the component sees it.
class DeviceSessionTest : public testing::Test {
protected:
    void connect(quelm::DeviceSettings settings)
    {
        state.emplace("/opt/quelm", "ann");
        state->connectDevice(settings);
    }

    void connectTo(const std::string& address)
    {
        quelm::DeviceSettings settings;
        settings.address = address;
        settings.timeout = 5s;
        connect(settings);
    }

    /// To one that is given up soon.
    void connectImpatientlyTo(const std::string& address)
    {
        quelm::DeviceSettings settings;
        settings.address = address;
        settings.timeout = timeout;
        connect(settings);
    }

    static std::optional<std::string> tableEntry(std::string table, int index)
    {
        char untouched[] = "untouched";
        char* value = untouched;
        const bool read = pBiDi->getRecipientData(table.data(), index, &value);
        if (read)
            return value;
        EXPECT_EQ(value, untouched);
        return std::nullopt;
    }
    static std::optional<std::string> directory(int index)
    {
        return tableEntry("ubqSvcMonServiceDetailTableLDAP", index);
    }

    static std::optional<std::string> object(std::string name, int size = 1024)
    {
        std::string buffer(2048, '#');
        const std::string untouched = buffer;
        char* out = buffer.data();
        const bool read = pBiDi->fetchSingleOIDResponse(name.data(), &out, size);
        EXPECT_EQ(out, buffer.data());
        if (!read) {
            EXPECT_EQ(buffer, untouched);
            return std::nullopt;
        }
        const std::size_t end = buffer.find('\0');
        EXPECT_LT(end, static_cast<std::size_t>(size));
        EXPECT_EQ(buffer.find_first_not_of('#', end + 1), std::string::npos) << "written behind the text";
        return buffer.substr(0, end);
    }

    /// All that one press of "More Info..." asks for.
    static int askForAllSettings()
    {
        int read = 0;
        for (int index = 0; index < 2; ++index)
            read += directory(index) ? 1 : 0;
        for (int number = 0; number < settingsCount; ++number)
            read += object("1.3.6.1.2.1.1.1.0") ? 1 : 0;
        return read;
    }

    std::string lastFailure() const { return state->failures.last().device; }

    LogCapture log;
    std::optional<quelm::HostState> state;
};

const std::string description = "1.3.6.1.2.1.1.1.0";

} // namespace

TEST_F(DeviceSessionTest, WithoutADriverNothingIsAnsweredAndNothingTouched)
{
    BaseBiDiSession session;
    std::string name = "ubqSvcMonServiceDetailTableLDAP";
    char untouched[] = "untouched";
    char* value = untouched;
    EXPECT_FALSE(session.getRecipientData(name.data(), 0, &value));
    EXPECT_EQ(value, untouched);
    EXPECT_FALSE(session.fetchSingleOIDResponse(name.data(), &value, sizeof untouched));
    EXPECT_STREQ(untouched, "untouched");
}

TEST_F(DeviceSessionTest, TheSessionIsThereAsLongAsTheHostHasADevice)
{
    EXPECT_EQ(pBiDi, nullptr);
    const UdpDevice device(servers::beingSilent());
    connectTo(device.address());
    EXPECT_NE(pBiDi, nullptr);
    EXPECT_EQ(device.received(), 0) << "nobody has asked yet";
    state.reset();
    EXPECT_EQ(pBiDi, nullptr);
}

TEST_F(DeviceSessionTest, AnAddressThatIsNoneLeavesTheHostWithoutADevice)
{
    EXPECT_THROW(connectTo("fax:0"), quelm::Error);
    EXPECT_EQ(pBiDi, nullptr);
}

TEST_F(DeviceSessionTest, TheDirectorysTableHasAnAddressAndASearchRoot)
{
    servers::SnmpdSettings settings;
    settings.objects = servers::directorySettings("ldap.example:389", "o=Größe");
    const SnmpdServer device(settings);
    connectTo(device.address());
    EXPECT_EQ(directory(0), "ldap.example:389");
    EXPECT_EQ(directory(1), "o=Größe");
    EXPECT_THAT(log.messages, IsEmpty());
}

TEST_F(DeviceSessionTest, OtherTablesAndEntriesAreNotAskedFor)
{
    const UdpDevice device(servers::beingSilent());
    connectTo(device.address());
    EXPECT_FALSE(directory(-1));
    EXPECT_FALSE(directory(2));
    EXPECT_FALSE(tableEntry("ubqSvcMonServiceDetailTableldap", 0));
    EXPECT_FALSE(tableEntry("", 0));
    EXPECT_EQ(device.received(), 0);
}

TEST_F(DeviceSessionTest, TheObjectsOfTheTableCanBeConfigured)
{
    servers::SnmpdSettings device;
    device.objects = {{"1.3.6.1.4.1.32473.5.1", "other.example"}, {"1.3.6.1.4.1.32473.5.2", "dc=other"}};
    const SnmpdServer server(device);
    quelm::DeviceSettings settings;
    settings.address = server.address();
    settings.directoryServerObject = "1.3.6.1.4.1.32473.5.1";
    settings.directoryBaseObject = "1.3.6.1.4.1.32473.5.2";
    connect(settings);
    EXPECT_EQ(directory(0), "other.example");
    EXPECT_EQ(directory(1), "dc=other");
}

TEST_F(DeviceSessionTest, AnEmptyAddressIsNoneWhileAnEmptySearchRootIsOne)
{
    servers::SnmpdSettings settings;
    settings.objects = servers::directorySettings("", "");
    const SnmpdServer device(settings);
    connectTo(device.address());
    EXPECT_FALSE(directory(0));
    EXPECT_EQ(directory(1), "");
}

TEST_F(DeviceSessionTest, AMissingEntryIsNoTrouble)
{
    servers::SnmpdSettings settings;
    settings.objects = {{servers::directoryServerObject, "ldap.example"}};
    const SnmpdServer device(settings);
    connectTo(device.address());
    EXPECT_EQ(directory(0), "ldap.example");
    EXPECT_FALSE(directory(1));
    EXPECT_THAT(log.messages, IsEmpty());
    EXPECT_EQ(lastFailure(), "");
}

TEST_F(DeviceSessionTest, AnObjectIsCutAtACharacterToFitTheBuffer)
{
    servers::SnmpdSettings settings;
    settings.objects = {{"1.3.6.1.4.1.32473.1.1", "aé€"}, {"1.3.6.1.4.1.32473.1.2", std::string(1500, 'x')}};
    const SnmpdServer device(settings);
    connectTo(device.address());
    EXPECT_EQ(object("1.3.6.1.4.1.32473.1.1", 7), "aé€");
    EXPECT_EQ(object("1.3.6.1.4.1.32473.1.1", 6), "aé");
    EXPECT_EQ(object("1.3.6.1.4.1.32473.1.1", 3), "a");
    EXPECT_EQ(object("1.3.6.1.4.1.32473.1.1", 1), "");
    EXPECT_EQ(object("1.3.6.1.4.1.32473.1.2"), std::string(1023, 'x'));
}

TEST_F(DeviceSessionTest, ImpossibleQuestionsAreNotAsked)
{
    const UdpDevice device(servers::beingSilent());
    connectTo(device.address());
    for (const char* name : {"", "abc", "1", "1.3.99999999999", "1.3.6.1.2.1.1.1.0 "})
        EXPECT_FALSE(object(name)) << name;
    std::string tooLong = "1.3";
    for (int number = 0; number < 300; ++number)
        tooLong += ".6";
    EXPECT_FALSE(object(tooLong));
    EXPECT_FALSE(object(description, 0));
    EXPECT_FALSE(object(description, -5));
    std::string name = description;
    char buffer[] = "untouched";
    char* out = buffer;
    char* none = nullptr;
    EXPECT_FALSE(pBiDi->fetchSingleOIDResponse(nullptr, &out, sizeof buffer));
    EXPECT_FALSE(pBiDi->fetchSingleOIDResponse(name.data(), nullptr, sizeof buffer));
    EXPECT_FALSE(pBiDi->fetchSingleOIDResponse(name.data(), &none, sizeof buffer));
    EXPECT_FALSE(pBiDi->getRecipientData(nullptr, 0, &out));
    std::string table = "ubqSvcMonServiceDetailTableLDAP";
    EXPECT_FALSE(pBiDi->getRecipientData(table.data(), 0, nullptr));
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(device.received(), 0);
    EXPECT_THAT(log.messages, IsEmpty());
}

TEST_F(DeviceSessionTest, AllSettingsOfASilentDeviceCostOneTimeoutAndOneWarning)
{
    const UdpDevice device(servers::beingSilent());
    connectImpatientlyTo(device.address());
    const auto before = Clock::now();
    EXPECT_EQ(askForAllSettings(), 0);
    EXPECT_LT(Clock::now() - before, 10 * timeout) << "sixteen questions, one time-out";
    EXPECT_EQ(device.received(), quelm::DeviceSettings().retries + 1);
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.severities[0], quelm::Severity::warning);
    EXPECT_THAT(log.messages[0], HasSubstr("the device " + device.address() + " did not answer"));
    EXPECT_EQ(lastFailure(), log.messages[0]);
}

TEST_F(DeviceSessionTest, ADeviceThatIsSilentAboutOneObjectTellsTheOthers)
{
    SnmpdServer server({});
    // The contact, 1.3.6.1.2.1.1.4.0, as it is asked for.
    const UdpDevice device(
        servers::silentAbout(std::string("\x2b\x06\x01\x02\x01\x01\x04\x00", 8), server.port()));
    connectImpatientlyTo(device.address());
    state->guard.run("LDAPMoreInfoCB", [this] {
        EXPECT_EQ(object(description), "Quelm Fax 7");
        EXPECT_FALSE(object("1.3.6.1.2.1.1.4.0"));
        EXPECT_EQ(lastFailure(), "");
        EXPECT_EQ(object(description), "Quelm Fax 7");
    });
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_THAT(log.messages[0], HasSubstr("the device " + device.address() + " did not answer"));
}

TEST_F(DeviceSessionTest, ADeviceThatIsSilentTwiceInARowIsNotAskedAgain)
{
    SnmpdServer device({});
    connectImpatientlyTo(device.address());
    state->guard.run("LDAPMoreInfoCB", [this, &device] {
        EXPECT_TRUE(object(description));
        device.process().freeze();
        EXPECT_FALSE(object(description));
        EXPECT_FALSE(object(description));
        EXPECT_NE(lastFailure(), "");
        device.process().thaw();
        EXPECT_FALSE(object(description));
    });
    EXPECT_EQ(log.messages.size(), 2U);
}

TEST_F(DeviceSessionTest, TheNextUserActionFindsADeviceThatCameBack)
{
    SnmpdServer device({});
    connectImpatientlyTo(device.address());
    device.process().freeze();
    state->guard.run("T40InvokeFaxDialog", [] { EXPECT_FALSE(object(description)); });
    EXPECT_NE(lastFailure(), "");
    device.process().thaw();
    EXPECT_FALSE(object(description)) << "no new action has begun";
    state->guard.run("LDAPMoreInfoCB", [] { EXPECT_EQ(object(description), "Quelm Fax 7"); });
    EXPECT_EQ(lastFailure(), "");
    EXPECT_EQ(log.messages.size(), 1U);
}

TEST_F(DeviceSessionTest, ACallWithinACallIsTheSameUserAction)
{
    const UdpDevice device(servers::beingSilent());
    connectImpatientlyTo(device.address());
    state->guard.run("Outer", [&] {
        EXPECT_FALSE(object(description));
        state->guard.run("Inner", [] { EXPECT_FALSE(object(description)); });
    });
    EXPECT_EQ(log.messages.size(), 1U);
    state->guard.run("Next", [] { EXPECT_FALSE(object(description)); });
    EXPECT_EQ(log.messages.size(), 2U);
}

TEST_F(DeviceSessionTest, AMissingObjectDoesNotKeepFromAskingForTheNext)
{
    SnmpdServer device({});
    connectTo(device.address());
    EXPECT_FALSE(object("1.3.6.1.4.1.32473.7.7"));
    EXPECT_EQ(object(description), "Quelm Fax 7");
    EXPECT_THAT(log.messages, IsEmpty());
}

TEST_F(DeviceSessionTest, AnObjectThatIsRefusedIsWarnedOfAndTheNextOneAskedFor)
{
    constexpr char generalError = 5;
    const UdpDevice device(replies::answering({.errorStatus = generalError}));
    connectTo(device.address());
    EXPECT_FALSE(object(description));
    EXPECT_FALSE(object("1.3.6.1.2.1.1.5.0"));
    EXPECT_EQ(device.received(), 2);
    ASSERT_EQ(log.messages.size(), 2U);
    EXPECT_THAT(log.messages[1], HasSubstr("does not tell the object 1.3.6.1.2.1.1.5.0"));
    EXPECT_EQ(lastFailure(), "") << "the device itself answers";
}

TEST_F(DeviceSessionTest, AnUnknownHostIsWarnedOfOnce)
{
    connectTo(std::string(64, 'a') + ".invalid");
    EXPECT_EQ(askForAllSettings(), 0);
    EXPECT_EQ(log.messages.size(), 1U);
}

TEST_F(DeviceSessionTest, ATextOfTheTableStaysUntilTheNextQuestion)
{
    servers::SnmpdSettings settings;
    settings.objects = servers::directorySettings("ldap.example:389", "o=example");
    const SnmpdServer device(settings);
    connectTo(device.address());
    std::string table = "ubqSvcMonServiceDetailTableLDAP";
    char* value = nullptr;
    ASSERT_TRUE(pBiDi->getRecipientData(table.data(), 0, &value));
    table = "gone";
    EXPECT_STREQ(value, "ldap.example:389");
}
