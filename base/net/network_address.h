// Addresses of devices as users write them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_NET_NETWORK_ADDRESS_H
#define BASE_NET_NETWORK_ADDRESS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// The port on which devices take print jobs as they are.
inline constexpr std::uint16_t rawPrintPort = 9100;

/// A host and a port of it.
struct NetworkAddress {
    std::string host; ///< a name or an IPv4 or IPv6 address, without brackets
    std::uint16_t port = rawPrintPort;

    bool operator==(const NetworkAddress&) const = default;
};

/// Reads "HOST", "HOST:PORT", "[IPV6]", "[IPV6]:PORT" or a bare IPv6 address; blanks around it do not
/// count. Without a port it is `port`. Throws quelm::Error, with a line that shows how to write one, when
/// `text` is no address. Whether there is such a host is not asked.
NetworkAddress parseNetworkAddress(std::string_view text, std::uint16_t port = rawPrintPort);

/// The same without an exception: nothing when `text` is no address.
[[nodiscard]] std::optional<NetworkAddress> networkAddressIn(std::string_view text, std::uint16_t port);

/// The address as `parseNetworkAddress` reads it: "fax.example:9100", "[2001:db8::1]:9100".
std::string toText(const NetworkAddress& address);

} // namespace quelm

#endif
