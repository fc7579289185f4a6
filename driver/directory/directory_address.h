// The address of a directory server, as a device gives it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_ADDRESS_H
#define DRIVER_DIRECTORY_DIRECTORY_ADDRESS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// Where a directory server listens, and how it is spoken to.
struct DirectoryAddress {
    std::string host; ///< a name, or an IPv4 or IPv6 address without brackets
    std::uint16_t port = 0;
    bool tls = false; ///< TLS from the first byte on

    /// "host:port", with brackets around an IPv6 address: for messages.
    std::string shown() const;
    /// "ldap://host:port" or "ldaps://host:port".
    std::string uri() const;

    bool operator==(const DirectoryAddress&) const = default;
};

/// Reads "host", "host:port", "ldap://host:port" and "ldaps://host:port". A host is a name (UTF-8),
/// an IPv4 address, an IPv6 address in brackets or, without a port, a bare one. Blanks around the
/// text and what follows the host of an "ldap://" text ("/dc=example") say nothing. Without a port
/// it is 389, or 636 under TLS. Ports 636 and 3269, which are set aside for LDAP over TLS, mean TLS
/// unless the text starts with "ldap://". Nothing when the text is no such address.
[[nodiscard]] std::optional<DirectoryAddress> parseDirectoryAddress(std::string_view text);

} // namespace quelm

#endif
