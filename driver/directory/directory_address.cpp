// Takes directory addresses apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_address.h"

#include "base/net/network_address.h"
#include "base/texts.h"

#include <glib.h>

#include <cstdint>

namespace quelm {

namespace {

constexpr std::uint16_t plainPort = 389;
constexpr std::uint16_t tlsPort = 636;
constexpr std::uint16_t tlsCataloguePort = 3269;

/// Takes `prefix` off the front of `text`; letter case does not matter.
bool takePrefix(std::string_view& text, std::string_view prefix)
{
    if (text.size() < prefix.size() || g_ascii_strncasecmp(text.data(), prefix.data(), prefix.size()) != 0)
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

} // namespace

std::string DirectoryAddress::shown() const { return toText({host, port}); }

std::string DirectoryAddress::uri() const { return (tls ? "ldaps://" : "ldap://") + shown(); }

std::optional<DirectoryAddress> parseDirectoryAddress(std::string_view text)
{
    text = trimmed(text);
    const bool secure = takePrefix(text, "ldaps://");
    const bool plain = !secure && takePrefix(text, "ldap://");
    if (secure || plain)
        text = text.substr(0, text.find('/'));
    DirectoryAddress address;
    const auto server = networkAddressIn(text, 0);
    if (!server)
        return std::nullopt;
    address.host = server->host;
    address.port = server->port;
    address.tls = secure || (!plain && (address.port == tlsPort || address.port == tlsCataloguePort));
    if (address.port == 0)
        address.port = address.tls ? tlsPort : plainPort;
    return address;
}

} // namespace quelm
