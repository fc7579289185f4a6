// The table of keys, and the reading of their values.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/configuration_keys.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/device/device_address.h"
#include "driver/device/object_identifier.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <optional>
#include <system_error>

namespace quelm {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double shortestTimeout = 0.1;
constexpr double longestTimeout = 600;
constexpr int mostRetries = 10;
constexpr int largestSizeLimit = 1000000;
constexpr int mostKeepDays = 3650;
constexpr std::uint16_t printPort = 631;
constexpr std::size_t longestUser = 32; // the user model's own bound
// The fields of the dialogs, in characters.
constexpr std::size_t longestPrefix = 4;
constexpr std::size_t longestName = 31;
constexpr std::size_t longestNumber = 46;
constexpr std::size_t longestText = 59;

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

bool isAddress(const std::string& value, std::uint16_t port)
{
    try {
        parseNetworkAddress(value, port);
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::string takeAddress(Configuration& configuration, const std::string& value)
{
    if (!isAddress(value, snmpPort))
        return localized("HOST or HOST:PORT, such as fax.example:161 or [2001:db8::1]:161,");
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

std::string takePdl(const std::string& value, std::optional<Pdl>& setting)
{
    if (value != "dsc" && value != "pjl")
        return localized("dsc or pjl");
    setting = value == "dsc" ? Pdl::dsc : Pdl::pjl;
    return "";
}

/// A line that fits a field of a dialog, whose room is counted in characters.
std::string takeField(const std::string& value, std::size_t longest, std::string& setting)
{
    const auto characters = static_cast<std::size_t>(g_utf8_strlen(value.c_str(), -1));
    if (characters > longest || hasControlCharacter(value))
        return localizedCount("one line of at most %d character", "one line of at most %d characters",
                              longest, longest);
    setting = value;
    return "";
}

/// Where the faxes of the last destination go, which is one place.
std::string takePlace(Configuration& configuration, NamedDestination::Kind kind, const std::string& place)
{
    auto& destination = configuration.destinations.back();
    if (destination.kind != NamedDestination::Kind::none)
        // Translators: stands where a value's form is named: 'has "x" at [destination y] file, where ... is
        // expected'.
        return localized("nothing beside the other place of this destination");
    destination.kind = kind;
    destination.place = place;
    return "";
}

std::string takeQueue(Configuration& configuration, const std::string& value)
{
    const auto at = value.rfind('@');
    const std::string queue = value.substr(0, at);
    const std::string server = at == std::string::npos ? "" : value.substr(at + 1);
    const bool isName = !queue.empty() && queue.find_first_of(" \t/#?") == std::string::npos;
    if (!isName || hasControlCharacter(queue) || (at != std::string::npos && !isAddress(server, printPort)))
        return localized("NAME or NAME@HOST, such as fax or fax@print.example:631,");
    auto expected = takePlace(configuration, NamedDestination::Kind::queue, queue);
    if (expected.empty())
        configuration.destinations.back().server = server;
    return expected;
}

constexpr std::array keys{
    ConfigurationKey{"driver", "home", KeyKind::path, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.home = fromFileFolder(configuration.file, value);
                         return "";
                     }},
    ConfigurationKey{"driver", "user", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value.find('/') != std::string::npos)
                             return localized("a user name without \"/\"");
                         configuration.user = value;
                         return "";
                     }},
    ConfigurationKey{"driver", "component", KeyKind::path, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.component = fromFileFolder(configuration.file, value);
                         return "";
                     }},
    ConfigurationKey{"job", "pdl", KeyKind::text, "dsc",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takePdl(value, configuration.pdl);
                     }},
    ConfigurationKey{"job", "destination", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.destination = value;
                         return "";
                     }},
    ConfigurationKey{"job", "resolution", KeyKind::text, "standard",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeWord(value, {"standard", "fine", "superfine"}, configuration.resolution)
                                    ? ""
                                    : localized("standard, fine or superfine");
                     }},
    ConfigurationKey{"job", "prefix", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value.size() > longestPrefix ||
                             value.find_first_not_of("0123456789*#,") != std::string::npos)
                             return localized("at most four digits, \"*\", \"#\" or \",\"");
                         configuration.dialingPrefix = value;
                         return "";
                     }},
    ConfigurationKey{"sender", "name", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) {
                         return takeField(value, longestName, configuration.sender.name);
                     }},
    ConfigurationKey{"sender", "number", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) {
                         return takeField(value, longestNumber, configuration.sender.number);
                     }},
    ConfigurationKey{"sender", "organization", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) {
                         return takeField(value, longestText, configuration.sender.organization);
                     }},
    ConfigurationKey{"sender", "phone", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) {
                         return takeField(value, longestNumber, configuration.sender.phone);
                     }},
    ConfigurationKey{"sender", "email", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) {
                         return takeField(value, longestText, configuration.sender.email);
                     }},
    ConfigurationKey{"phonebook", "shared", KeyKind::path, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.sharedPhonebook =
                             std::filesystem::absolute(fromFileFolder(configuration.file, value)).string();
                         return "";
                     }},
    ConfigurationKey{destinationGroup, "device", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (!isAddress(value, rawPrintPort))
                             return localized(
                                 "HOST or HOST:PORT, such as fax.example or [2001:db8::1]:9100,");
                         return takePlace(configuration, NamedDestination::Kind::device, value);
                     }},
    ConfigurationKey{destinationGroup, "queue", KeyKind::text, "", takeQueue},
    ConfigurationKey{destinationGroup, "file", KeyKind::path, "",
                     [](Configuration& configuration, const std::string& value) {
                         const auto path = fromFileFolder(configuration.file, value);
                         return takePlace(configuration, NamedDestination::Kind::file,
                                          std::filesystem::absolute(path).lexically_normal().string());
                     }},
    ConfigurationKey{destinationGroup, "pdl", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) {
                         return takePdl(value, configuration.destinations.back().pdl);
                     }},
    ConfigurationKey{"device", "snmp", KeyKind::text, "", takeAddress},
    ConfigurationKey{"device", "version", KeyKind::text, "2c", takeVersion},
    ConfigurationKey{"device", "community", KeyKind::secret, "public",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.device.community = value;
                         return "";
                     }},
    ConfigurationKey{"device", "user", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value.size() > longestUser)
                             return localized("a user's name of at most 32 bytes");
                         configuration.device.user.name = value;
                         return "";
                     }},
    ConfigurationKey{"device", "authentication", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeWord(value, {"MD5", "SHA", "SHA-224", "SHA-256", "SHA-384", "SHA-512"},
                                         configuration.device.user.authentication)
                                    ? ""
                                    : localized("MD5, SHA, SHA-224, SHA-256, SHA-384 or SHA-512");
                     }},
    ConfigurationKey{"device", "authentication-passphrase", KeyKind::secret, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.device.user.authenticationPassphrase = value;
                         return "";
                     }},
    ConfigurationKey{"device", "privacy", KeyKind::text, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeWord(value, {"DES", "AES"}, configuration.device.user.privacy)
                                    ? ""
                                    : localized("DES or AES");
                     }},
    ConfigurationKey{"device", "privacy-passphrase", KeyKind::secret, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.device.user.privacyPassphrase = value;
                         return "";
                     }},
    ConfigurationKey{"device", "timeout", KeyKind::text, "3",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeSeconds(value, configuration.device.timeout);
                     }},
    ConfigurationKey{"device", "retries", KeyKind::text, "2",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return readNumber(value, 0, mostRetries, configuration.device.retries)
                                    ? ""
                                    : localized("a number from 0 to 10");
                     }},
    ConfigurationKey{"device", "directory-server-object", KeyKind::text,
                     "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.114.11",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeObject(value, configuration.device.directoryServerObject);
                     }},
    ConfigurationKey{"device", "directory-base-object", KeyKind::text,
                     "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.118.1",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeObject(value, configuration.device.directoryBaseObject);
                     }},
    ConfigurationKey{"directory", "connect-timeout", KeyKind::text, "5",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeSeconds(value, configuration.directory.connectTimeout);
                     }},
    ConfigurationKey{"directory", "search-timeout", KeyKind::text, "15",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return takeSeconds(value, configuration.directory.searchTimeout);
                     }},
    ConfigurationKey{"directory", "size-limit", KeyKind::text, "1000",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return readNumber(value, 1, largestSizeLimit, configuration.directory.sizeLimit)
                                    ? ""
                                    : localized("a number from 1 to 1000000");
                     }},
    ConfigurationKey{"directory", "start-tls", KeyKind::text, "false",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         if (value != "true" && value != "false")
                             return localized("true or false");
                         configuration.directory.startTls = value == "true";
                         return "";
                     }},
    ConfigurationKey{"directory", "certificate-authorities", KeyKind::path, "",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         configuration.directory.certificateAuthorities =
                             fromFileFolder(configuration.file, value);
                         return "";
                     }},
    ConfigurationKey{"outbox", "keep-days", KeyKind::text, "30",
                     [](Configuration& configuration, const std::string& value) -> std::string {
                         return readNumber(value, 0, mostKeepDays, configuration.outboxKeepDays)
                                    ? ""
                                    : localized("a number of days from 0 to 3650");
                     }},
};

} // namespace

std::span<const ConfigurationKey> configurationKeys() { return keys; }

bool isGroup(std::string_view keysGroup, std::string_view group)
{
    return keysGroup == destinationGroup ? group.starts_with(destinationBeginning) : keysGroup == group;
}

std::string fromFileFolder(const std::string& file, const std::string& value)
{
    if (value.front() == '/' || file.starts_with("/dev/") || file.starts_with("/proc/"))
        return value;
    const std::size_t slash = file.rfind('/');
    return slash == std::string::npos ? value : file.substr(0, slash + 1) + value;
}

} // namespace quelm
