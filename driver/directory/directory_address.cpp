// Takes directory addresses apart.
#include "driver/directory/directory_address.h"

#include "base/texts.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include <arpa/inet.h>
#include <glib.h>
#include <netinet/in.h>

namespace quelm {

namespace {

constexpr int plainPort = 389;
constexpr int tlsPort = 636;
constexpr int tlsCataloguePort = 3269;

/// Takes `prefix` off the front of `text`; letter case does not matter.
bool takePrefix(std::string_view& text, std::string_view prefix)
{
    if (text.size() < prefix.size() || g_ascii_strncasecmp(text.data(), prefix.data(), prefix.size()) != 0)
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// An IPv6 address, with the interface that a link-local one needs ("fe80::1%eth0").
bool isIpv6(std::string_view text)
{
    const std::size_t zone = text.find('%');
    if (zone != std::string_view::npos) {
        const std::string_view interface = text.substr(zone + 1);
        if (interface.empty() || !std::ranges::all_of(interface, [](char character) {
                return g_ascii_isalnum(character) || character == '-' || character == '_' || character == '.';
            }))
            return false;
    }
    in6_addr ignored;
    return inet_pton(AF_INET6, std::string(text.substr(0, zone)).c_str(), &ignored) == 1;
}

/// A host's name or an IPv4 address.
bool isName(std::string_view text)
{
    constexpr std::size_t longestName = 253;
    return !text.empty() && text.size() <= longestName && text.front() != '-' && text.front() != '.' &&
           text.find("..") == std::string_view::npos &&
           g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE &&
           std::ranges::all_of(text, [](char character) {
               return g_ascii_isalnum(character) || character == '-' || character == '.' ||
                      character == '_' || static_cast<unsigned char>(character) >= 0x80;
           });
}

bool readPort(std::string_view text, int& port)
{
    constexpr int highest = 65535;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return error == std::errc() && end == text.data() + text.size() && port >= 1 && port <= highest;
}

/// Splits "host:port" into the host, without brackets, and the port, which stays as it was when
/// the text has none.
bool splitHostAndPort(std::string_view text, std::string& host, int& port)
{
    std::string_view rest;
    if (text.starts_with('[')) {
        const std::size_t end = text.find(']');
        if (end == std::string_view::npos || !isIpv6(text.substr(1, end - 1)))
            return false;
        host = text.substr(1, end - 1);
        rest = text.substr(end + 1);
    } else if (isIpv6(text)) {
        host = text;
    } else {
        const std::size_t colon = std::min(text.find(':'), text.size());
        if (!isName(text.substr(0, colon)))
            return false;
        host = text.substr(0, colon);
        rest = text.substr(colon);
    }
    return rest.empty() || (rest.starts_with(':') && readPort(rest.substr(1), port));
}

} // namespace

std::string DirectoryAddress::shown() const
{
    const bool bracketed = host.find(':') != std::string::npos;
    return (bracketed ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

std::string DirectoryAddress::uri() const { return (tls ? "ldaps://" : "ldap://") + shown(); }

std::optional<DirectoryAddress> parseDirectoryAddress(std::string_view text)
{
    text = trimmed(text);
    const bool secure = takePrefix(text, "ldaps://");
    const bool plain = !secure && takePrefix(text, "ldap://");
    if (secure || plain)
        text = text.substr(0, text.find('/'));
    DirectoryAddress address;
    if (!splitHostAndPort(text, address.host, address.port))
        return std::nullopt;
    address.tls = secure || (!plain && (address.port == tlsPort || address.port == tlsCataloguePort));
    if (address.port == 0)
        address.port = address.tls ? tlsPort : plainPort;
    return address;
}

} // namespace quelm
