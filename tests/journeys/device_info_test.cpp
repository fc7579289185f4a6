// The device's directory settings: from the command line, in the component's dialog, and when the
// device says nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/refused_port.h"
#include "tests/servers/slapd_server.h"
#include "tests/servers/snmpd_server.h"
#include "tests/servers/udp_device.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>

namespace journeys {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using servers::SlapdServer;
using servers::SnmpdServer;
using servers::UdpDevice;
using testing::HasSubstr;

constexpr const char* noServer = "127.0.0.1:9";

class DeviceInfoJourney : public Journey {
protected:
    /// A device whose directory stands at `server`.
    static servers::SnmpdSettings deviceWith(const std::string& server,
                                             const std::string& base = "dc=example")
    {
        servers::SnmpdSettings settings;
        settings.objects = servers::directorySettings(server, base);
        return settings;
    }

    /// A configuration file that only its owner can read.
    std::string configured(const std::string& device) const
    {
        const auto config = file("device.conf", "[device]\n" + device);
        ::chmod(config.c_str(), S_IRUSR | S_IWUSR);
        return config;
    }

    Result info(const std::string& address) const
    {
        return driver({"--device-snmp", address, "device", "info"});
    }

    /// Runs a script with a device; what it answers after the last "ok".
    Result scriptWith(const Arguments& options, const std::string& lines) const
    {
        Arguments all = options;
        all.insert(all.end(), {"script", "-"});
        return driver(all, lines);
    }
};

const std::string allSettings = "Host Name and Port: %\n"
                                "Search Directory Root: dc=example\n"
                                "LDAP Server Type: Quelm Fax 7\n"
                                "Login Name: cn=fax\n"
                                "Name: cn\n"
                                "Email Address: mail\n"
                                "Business Phone: telephoneNumber\n"
                                "Business Address: postalAddress\n"
                                "Office: physicalDeliveryOfficeName\n"
                                "City: l\n"
                                "State: st\n"
                                "Zip Code: postalCode\n"
                                "Country: c\n"
                                "Internet Fax: facsimileTelephoneNumber\n";

std::string settingsWith(const std::string& server)
{
    std::string text = allSettings;
    return text.replace(text.find('%'), 1, server);
}

TEST_F(DeviceInfoJourney, AllFourteenSettingsAreShown)
{
    const SlapdServer directory({});
    const SnmpdServer device(deviceWith(directory.address()));
    const auto result = info(device.address());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, settingsWith(directory.address()));
    EXPECT_EQ(result.errors, "");
}

TEST_F(DeviceInfoJourney, TheSettingsAreShownAlthoughTheDirectoryIsNotThere)
{
    const SnmpdServer device(deviceWith(noServer));
    const auto result = info(device.address());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, settingsWith(noServer));
    EXPECT_THAT(result.errors,
                HasSubstr(std::string("quelm-driver: warning: the directory server ") + noServer));
}

TEST_F(DeviceInfoJourney, WhatTheDeviceDoesNotHaveIsEmpty)
{
    const SnmpdServer device({});
    const auto result = info(device.address());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
              "Host Name and Port:\nSearch Directory Root:\nLDAP Server Type: Quelm Fax 7\n"
              "Login Name:\nName:\nEmail Address:\nBusiness Phone:\nBusiness Address:\nOffice:\n"
              "City:\nState:\nZip Code:\nCountry:\nInternet Fax:\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(DeviceInfoJourney, TheConfigurationFileNamesTheDeviceAndItsUser)
{
    auto settings = deviceWith(noServer);
    settings.users = {{"anne", "SHA-256", "authentic7", "AES", "private77"}};
    const SnmpdServer device(settings);
    const std::string asAnne = "snmp=" + device.address() +
                               "\nversion=3\nuser=anne\nauthentication=SHA-256\nprivacy=AES\n"
                               "privacy-passphrase=private77\nauthentication-passphrase=";
    const auto result = driver({"--config", configured(asAnne + "authentic7\n"), "device", "info"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, settingsWith(noServer));
    expectFailure(driver({"--config", configured(asAnne + "not authentic\n"), "device", "info"}), 1,
                  "refuses the SNMP user \"anne\"");
}

TEST_F(DeviceInfoJourney, AFileWithASecretIsRefusedWhenOthersCanReadIt)
{
    const auto config = configured("snmp=127.0.0.1\ncommunity=sesame\n");
    ::chmod(config.c_str(), S_IRUSR | S_IWUSR | S_IRGRP);
    expectFailure(driver({"--config", config, "device", "info"}), 1, "run chmod 600 " + config);
    expectFailure(driver({"--config", config, "attributes", "--to", "Ann=1"}), 1, "run chmod 600 " + config);
}

TEST_F(DeviceInfoJourney, WithoutADeviceBothWaysToNameOneAreTold)
{
    expectFailure(driver(Arguments{"device", "info"}), 2,
                  "--device-snmp HOST[:PORT], or snmp=HOST in [device]");
    expectFailure(driver({"device", "info", "--device-snmp", "fax:0"}), 2,
                  "\"fax:0\" is no address; write HOST or HOST:PORT, such as fax.example:161");
}

TEST_F(DeviceInfoJourney, ASilentDeviceIsToldOnceAndCostsOneTimeout)
{
    const UdpDevice device(servers::beingSilent());
    const auto config = configured("timeout=1\n");
    const auto before = Clock::now();
    const auto result = driver({"--config", config, "--device-snmp", device.address(), "device", "info"});
    EXPECT_LT(Clock::now() - before, 4500ms);
    expectFailure(result, 1, "the device " + device.address() + " did not answer over SNMP within 1 s");
}

TEST_F(DeviceInfoJourney, ADeviceThatIsNotThereIsNotWaitedFor)
{
    const servers::RefusedPort refused(servers::Transport::udp);
    const auto address = refused.address();
    const auto before = Clock::now();
    expectFailure(info(address), 1, "the device " + address + " does not serve SNMP on that port");
    EXPECT_LT(Clock::now() - before, 4500ms);
}

TEST_F(DeviceInfoJourney, ASilentDeviceCostsOneTimeoutForEachUserAction)
{
    const UdpDevice device(servers::beingSilent());
    const auto before = Clock::now();
    const auto result = scriptWith({"--config", configured("timeout=1\n"), "--device-snmp", device.address()},
                                   "call T40InvokeFaxDialog\ncall LDAPMoreInfoCB\nshow \"LDAP HostPort\"\n");
    EXPECT_LT(Clock::now() - before, 9s) << "two actions, with eighteen questions";
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("widget \"LDAP HostPort\" kind TextEntry visible yes sensitive yes "
                                         "operable yes text \"\"\n"));
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 2) << result.errors;
}

TEST_F(DeviceInfoJourney, AJobIsWrittenAlthoughTheDeviceIsSilent)
{
    const UdpDevice device(servers::beingSilent());
    const auto result = driver({"--config", configured("timeout=0.5\n"), "--device-snmp", device.address(),
                                "attributes", "--to", "Ann=5551234"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("5551234"));
    EXPECT_THAT(result.errors, HasSubstr("warning: the device " + device.address() + " did not answer"));
}

TEST_F(DeviceInfoJourney, MoreInfoOpensTheDialogWithTheDevicesSettings)
{
    const SlapdServer directory({});
    const SnmpdServer device(deviceWith(directory.address()));
    const auto result = scriptWith({"--device-snmp", device.address()}, R"(call T40InvokeFaxDialog
show "LDAP PB Status"
press "LDAP More Info Button"
windows
show "LDAP Server Type"
show "Login Name"
show "LDAP Search Directory Root"
show "LDAP HostPort"
show "LDAP Secondary HostPort"
show "Email"
show "LDAP Fax"
press "LDAP Info Close"
windows
)");
    EXPECT_EQ(result.errors, "");
    const auto field = [](const std::string& name, const std::string& text) {
        return "widget \"" + name + "\" kind TextEntry visible yes sensitive yes operable yes text \"" +
               text + "\"\n";
    };
    EXPECT_EQ(
        result.output,
        "ok\n"
        "widget \"LDAP PB Status\" kind TextEntry visible yes sensitive no operable no text \"Enabled\"\n"
        "ok\n"
        "windows 2\n"
        "window \"Lan Fax Window\" title \"Quelm LAN Fax Setup\"\n"
        "window \"LDAP Info Dialog\" title \"LDAP Information\"\n" +
            field("LDAP Server Type", "Quelm Fax 7") + field("Login Name", "cn=fax") +
            field("LDAP Search Directory Root", "dc=example") + field("LDAP HostPort", directory.address()) +
            field("LDAP Secondary HostPort", "") + field("Email", "mail") +
            field("LDAP Fax", "facsimileTelephoneNumber") +
            "ok\n"
            "windows 1\n"
            "window \"Lan Fax Window\" title \"Quelm LAN Fax Setup\"\n");
}

TEST_F(DeviceInfoJourney, ADeviceWithoutASearchRootMakesTheDirectoryUnavailable)
{
    servers::SnmpdSettings settings;
    settings.objects = {{servers::directoryServerObject, noServer}};
    const SnmpdServer device(settings);
    const auto result = scriptWith({"--device-snmp", device.address()}, R"(call T40InvokeFaxDialog
show "LDAP PB Status"
show "LDAP More Info Button"
press "AddPBFaxRcpt"
choose "Current PB Type" 1
show "Current PB Type"
press "LanFaxRcptPB Cancel Button"
press "LanFax OK Button"
call T40InvokeFaxDialog
press "AddPBFaxRcpt"
show "Current PB Type"
show "LDAP PB Type"
)");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "") << "a directory that is not set up is nobody's fault";
    EXPECT_THAT(result.output, HasSubstr("widget \"LDAP PB Status\" kind TextEntry visible yes sensitive no "
                                         "operable no text \"Unavailable\"\n"));
    EXPECT_THAT(result.output, HasSubstr("widget \"LDAP More Info Button\" kind Button visible no"));
    EXPECT_THAT(result.output, HasSubstr("value 1 items"));
    EXPECT_THAT(result.output, HasSubstr("value 0 items \"Personal Phonebook\" \"Shared Phonebook\" \"Shared "
                                         "LDAP Phonebook\"\n"))
        << "back at the personal phonebook, whatever was chosen before";
    EXPECT_THAT(result.output,
                HasSubstr("widget \"LDAP PB Type\" kind ComboBoxItem visible yes sensitive no"));
}

} // namespace
} // namespace journeys
