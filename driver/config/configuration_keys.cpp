// The table of keys, and the reading of their values.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/configuration_keys.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/device/device_address.h"
#include "driver/device/object_identifier.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <initializer_list>
#include <system_error>

namespace quelm {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double shortestTimeout = 0.1;
constexpr double longestTimeout = 600;
constexpr int mostRetries = 10;
constexpr int largestSizeLimit = 1000000;
constexpr int mostKeepDays = 3650;
constexpr std::size_t longestCommunity = 255;
constexpr std::size_t longestUser = 32;       // the user model's own bound
constexpr std::size_t shortestPassphrase = 8; // the same
constexpr const char* knownCommunity = "public";

/// A relative path counts from the folder of the configuration file; from the working folder when that is an
/// open pipe, whose name no user chose.
std::string fromFileFolder(const Configuration& configuration, const std::string& value)
{
    const std::string_view file = configuration.file;
    if (value.front() == '/' || file.starts_with("/dev/") || file.starts_with("/proc/"))
        return value;
    const std::size_t slash = configuration.file.rfind('/');
    return slash == std::string::npos ? value : configuration.file.substr(0, slash + 1) + value;
}

/// A decimal number of all of `value`, blanks at its end aside.
template <class Number>
bool readNumber(const std::string& value, Number least, Number most, Number& number)
{
    const std::size_t size = value.find_last_not_of(" \t") + 1;
    const auto result = std::from_chars(value.data(), value.data() + size, number);
    return result.ec == std::errc() && result.ptr == value.data() + size && number >= least && number <= most;
}

std::string takeSeconds(const std::string& value, std::chrono::milliseconds& setting)
{
    double seconds = 0;
    if (!readNumber(value, shortestTimeout, longestTimeout, seconds))
        return localized("a number of seconds from 0.1 to 600");
    setting = std::chrono::round<std::chrono::milliseconds>(Seconds(seconds));
    return "";
}

/// One of a few words, in either case; the setting holds it as it stands here.
bool takeWord(const std::string& value, std::initializer_list<const char*> words, std::string& setting)
{
    const auto found = std::ranges::find_if(
        words, [&](const char* word) { return g_ascii_strcasecmp(word, value.c_str()) == 0; });
    if (found == words.end())
        return false;
    setting = *found;
    return true;
}

std::string takeObject(const std::string& value, std::string& setting)
{
    if (!parseObjectIdentifier(value))
        return localized("the dotted number of an object, such as 1.3.6.1.2.1.1.1.0,");
    setting = value;
    return "";
}

std::string takeAddress(Configuration& configuration, const std::string& value)
{
    try {
        parseNetworkAddress(value, snmpPort);
    } catch (const Error&) {
        return localized("HOST or HOST:PORT, such as fax.example:161 or [2001:db8::1]:161,");
    }
    configuration.device.address = value;
    return "";
}

std::string takeVersion(Configuration& configuration, const std::string& value)
{
    if (value == "1")
        configuration.device.version = SnmpVersion::v1;
    else if (value == "2c")
        configuration.device.version = SnmpVersion::v2c;
    else if (value == "3")
        configuration.device.version = SnmpVersion::v3;
    else
        return localized("1, 2c or 3");
    return "";
}

constexpr std::array keys{
    ConfigurationKey{"driver", "home",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.home = fromFileFolder(configuration, value);
                         return "";
                     }},
    ConfigurationKey{"driver", "user",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value.find('/') != std::string::npos)
                             return localized("a user name without \"/\"");
                         configuration.user = value;
                         return "";
                     }},
    ConfigurationKey{"driver", "component",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.component = fromFileFolder(configuration, value);
                         return "";
                     }},
    ConfigurationKey{"job", "pdl",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value != "dsc" && value != "pjl")
                             return localized("dsc or pjl");
                         configuration.pdl = value == "dsc" ? Pdl::dsc : Pdl::pjl;
                         return "";
                     }},
    ConfigurationKey{"device", "snmp", takeAddress},
    ConfigurationKey{"device", "version", takeVersion},
    ConfigurationKey{"device", "community",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.device.community = value;
                         return "";
                     }},
    ConfigurationKey{"device", "user",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value.size() > longestUser)
                             return localized("a user's name of at most 32 bytes");
                         configuration.device.user.name = value;
                         return "";
                     }},
    ConfigurationKey{"device", "authentication",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeWord(value, {"MD5", "SHA", "SHA-224", "SHA-256", "SHA-384", "SHA-512"},
                                         configuration.device.user.authentication)
                                    ? ""
                                    : localized("MD5, SHA, SHA-224, SHA-256, SHA-384 or SHA-512");
                     }},
    ConfigurationKey{"device", "authentication-passphrase",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.device.user.authenticationPassphrase = value;
                         return "";
                     }},
    ConfigurationKey{"device", "privacy",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeWord(value, {"DES", "AES"}, configuration.device.user.privacy)
                                    ? ""
                                    : localized("DES or AES");
                     }},
    ConfigurationKey{"device", "privacy-passphrase",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.device.user.privacyPassphrase = value;
                         return "";
                     }},
    ConfigurationKey{"device", "timeout",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeSeconds(value, configuration.device.timeout);
                     }},
    ConfigurationKey{"device", "retries",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return readNumber(value, 0, mostRetries, configuration.device.retries)
                                    ? ""
                                    : localized("a number from 0 to 10");
                     }},
    ConfigurationKey{"device", "directory-server-object",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeObject(value, configuration.device.directoryServerObject);
                     }},
    ConfigurationKey{"device", "directory-base-object",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeObject(value, configuration.device.directoryBaseObject);
                     }},
    ConfigurationKey{"directory", "connect-timeout",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeSeconds(value, configuration.directory.connectTimeout);
                     }},
    ConfigurationKey{"directory", "search-timeout",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeSeconds(value, configuration.directory.searchTimeout);
                     }},
    ConfigurationKey{"directory", "size-limit",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return readNumber(value, 1, largestSizeLimit, configuration.directory.sizeLimit)
                                    ? ""
                                    : localized("a number from 1 to 1000000");
                     }},
    ConfigurationKey{"directory", "start-tls",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value != "true" && value != "false")
                             return localized("true or false");
                         configuration.directory.startTls = value == "true";
                         return "";
                     }},
    ConfigurationKey{"directory", "certificate-authorities",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.directory.certificateAuthorities =
                             fromFileFolder(configuration, value);
                         return "";
                     }},
    ConfigurationKey{"outbox", "keep-days",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return readNumber(value, 0, mostKeepDays, configuration.outboxKeepDays)
                                    ? ""
                                    : localized("a number of days from 0 to 3650");
                     }},
};

/// What is missing or too much beside one method of version 3.
std::string methodMismatch(const std::string& method, const char* methodKey, const std::string& passphrase,
                           const char* passphraseKey)
{
    if (method.empty() && passphrase.empty())
        return "";
    if (method.empty())
        return localized("has %s at [device] without %s; write both or neither", passphraseKey, methodKey);
    if (passphrase.empty())
        return localized("has %s at [device] without %s; write both or neither", methodKey, passphraseKey);
    if (passphrase.size() < shortestPassphrase)
        return localized("has fewer than 8 characters at [device] %s; devices take none so short",
                         passphraseKey);
    return "";
}

} // namespace

std::span<const ConfigurationKey> configurationKeys() { return keys; }

std::string deviceMismatch(const DeviceSettings& device)
{
    const SnmpUser& user = device.user;
    const bool hasUser = !user.name.empty() || !user.authentication.empty() || !user.privacy.empty() ||
                         !user.authenticationPassphrase.empty() || !user.privacyPassphrase.empty();
    if (device.community.size() > longestCommunity)
        return localized("has a community of more than 255 bytes at [device]; write the device's");
    if (device.version != SnmpVersion::v3)
        return hasUser ? localized("has a user, authentication or privacy at [device], which only version 3 "
                                   "has; add version=3")
                       : "";
    if (user.name.empty())
        return localized("has version=3 at [device] without a user; add user=NAME");
    if (device.community != knownCommunity)
        return localized("has a community at [device], which version 3 does not have; remove it, or write "
                         "version=2c");
    std::string mismatch = methodMismatch(user.authentication, "authentication",
                                          user.authenticationPassphrase, "authentication-passphrase");
    if (mismatch.empty())
        mismatch = methodMismatch(user.privacy, "privacy", user.privacyPassphrase, "privacy-passphrase");
    if (mismatch.empty() && user.authentication.empty() && !user.privacy.empty())
        mismatch = localized("has privacy at [device] without authentication, which SNMP does not have; add "
                             "authentication and authentication-passphrase");
    return mismatch;
}

bool holdsSecret(const DeviceSettings& device)
{
    return device.community != knownCommunity || !device.user.authenticationPassphrase.empty() ||
           !device.user.privacyPassphrase.empty();
}

} // namespace quelm
