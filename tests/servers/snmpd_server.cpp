// Writes snmpd's configuration and runs it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/snmpd_server.h"

#include "tests/servers/slapd_server.h" // hasIpv6

#include <array>
#include <filesystem>
#include <sstream>
#include <string_view>

namespace servers {

namespace {

const std::string settingsRoot = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.";

/// Bytes as snmpd's configuration takes any of them.
std::string hexadecimal(const std::string& bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "0x";
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += digits[code >> 4U];
        text += digits[code & 0xFU];
    }
    return text;
}

std::string valueOf(const DeviceObject& object)
{
    if (object.type != "octet_str")
        return object.value;
    return object.value.empty() ? "\"\"" : hexadecimal(object.value);
}

std::string userLines(const DeviceUser& user)
{
    std::string made = "createUser " + user.name;
    std::string level = "noauth";
    if (!user.authentication.empty()) {
        made += " " + user.authentication + " " + user.authenticationPassphrase;
        level = "auth";
    }
    if (!user.privacy.empty()) {
        made += " " + user.privacy + " " + user.privacyPassphrase;
        level = "priv";
    }
    return made + "\nrouser " + user.name + " " + level + "\n";
}

} // namespace

std::vector<DeviceObject> directorySettings(const std::string& server, const std::string& base)
{
    return {{directoryServerObject, server},
            {directoryBaseObject, base},
            {settingsRoot + "122.1", "cn=fax"},
            {settingsRoot + "384.80", "cn"},
            {settingsRoot + "384.81", "mail"},
            {settingsRoot + "384.83", "telephoneNumber"},
            {settingsRoot + "384.84", "postalAddress"},
            {settingsRoot + "384.85", "physicalDeliveryOfficeName"},
            {settingsRoot + "384.86", "l"},
            {settingsRoot + "384.87", "st"},
            {settingsRoot + "384.88", "postalCode"},
            {settingsRoot + "384.89", "c"},
            {settingsRoot + "384.91", "facsimileTelephoneNumber"}};
}

SnmpdServer::SnmpdServer(SnmpdSettings given) : settings_(std::move(given))
{
    // Somebody else may take the port between its choice and the server's start.
    for (int attemptsLeft = 3;; --attemptsLeft) {
        number_ = unusedPort(Transport::udp);
        try {
            start();
            return;
        } catch (const std::runtime_error&) {
            if (attemptsLeft == 1)
                throw;
        }
    }
}

void SnmpdServer::configure() const
{
    std::ostringstream lines;
    lines << "agentaddress udp:127.0.0.1:" << number_;
    if (hasIpv6())
        lines << ",udp6:[::1]:" << number_;
    lines << "\nrocommunity " << settings_.community << " 127.0.0.1\n";
    if (hasIpv6())
        lines << "rocommunity6 " << settings_.community << " ::1\n";
    lines << "sysDescr " << settings_.description << "\n";
    for (const DeviceUser& user : settings_.users)
        lines << userLines(user);
    for (const DeviceObject& object : settings_.objects)
        lines << "override " << object.name << " " << object.type << " " << valueOf(object) << "\n";
    writeFile(folder_ / "snmpd.conf", lines.str());
}

void SnmpdServer::start()
{
    server_.reset();
    configure();
    const std::string output = folder_ / ("output" + std::to_string(incarnation_));
    std::filesystem::remove(output);
    ServerCommand command;
    command.arguments = {systemProgram("snmpd"), "-f", "-Le", "-I", "-smux"};
    command.outputFile = output;
    const std::string state = folder_ / ("state" + std::to_string(incarnation_));
    // Its configuration and its state are here alone (told to read one file only, it would forget its
    // state), and it gets no descriptions of objects, which it would only read and complain about.
    command.environment = {"HOME=" + folder_.path().string(),
                           "SNMPCONFPATH=" + folder_.path().string() + ":" + state,
                           "SNMP_PERSISTENT_DIR=" + state, "MIBS=", "MIBDIRS=" + folder_ / "none"};
    // It says its version when its sockets are open.
    server_ = std::make_unique<ServerProcess>(
        command, [&] { return contentOf(output).find("NET-SNMP version") != std::string::npos; });
}

void SnmpdServer::startAnother(SnmpdSettings other)
{
    settings_ = std::move(other);
    ++incarnation_;
    start();
}

} // namespace servers
