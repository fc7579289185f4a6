// Addresses of devices as users write them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/network_address.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <arpa/inet.h>
#include <glib.h>
#include <netinet/in.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace quelm {
namespace {

/// The longest name that the domain name system has room for.
constexpr std::size_t longestHost = 253;

/// An IPv6 address. One that holds on one network only names the interface: fe80::1%eth0.
bool isIpv6(std::string_view host)
{
    const auto percent = host.find('%');
    if (percent != std::string_view::npos) {
        const auto mayName = [](char byte) {
            return g_ascii_isalnum(byte) || std::string_view("-_.").find(byte) != std::string_view::npos;
        };
        const auto interface = host.substr(percent + 1);
        if (interface.empty() || !std::ranges::all_of(interface, mayName))
            return false;
    }
    in6_addr ignored{};
    return ::inet_pton(AF_INET6, std::string(host.substr(0, percent)).c_str(), &ignored) == 1;
}

/// A host's name, of any script, or an IPv4 address.
bool isName(std::string_view host)
{
    const auto mayStand = [](char byte) {
        return g_ascii_isalnum(byte) || std::string_view("-._").find(byte) != std::string_view::npos ||
               static_cast<unsigned char>(byte) >= 0x80;
    };
    return !host.empty() && host.size() <= longestHost && host.front() != '-' && host.front() != '.' &&
           host.find("..") == std::string_view::npos && isUtf8(host) && std::ranges::all_of(host, mayStand);
}

std::optional<std::uint16_t> portOf(std::string_view digits)
{
    std::uint16_t port = 0;
    const auto* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, port);
    if (result.ec != std::errc() || result.ptr != end || port == 0)
        return std::nullopt;
    return port;
}

} // namespace

std::optional<NetworkAddress> networkAddressIn(std::string_view text, std::uint16_t port)
{
    text = trimmed(text);
    std::string_view host = text;
    std::optional<std::string_view> digits;
    bool mustBeIpv6 = false;
    if (text.starts_with('[')) {
        const auto end = text.find(']');
        if (end == std::string_view::npos)
            return std::nullopt;
        host = text.substr(1, end - 1);
        mustBeIpv6 = true;
        const auto rest = text.substr(end + 1);
        if (rest.starts_with(':'))
            digits = rest.substr(1);
        else if (!rest.empty())
            return std::nullopt;
    } else if (const auto colons = std::ranges::count(text, ':'); colons == 1) {
        host = text.substr(0, text.find(':'));
        digits = text.substr(host.size() + 1);
    } else {
        mustBeIpv6 = colons > 1;
    }
    const auto given = digits ? portOf(*digits) : std::optional(port);
    if (!given || !(mustBeIpv6 ? isIpv6(host) : isName(host)))
        return std::nullopt;
    return NetworkAddress{std::string(host), *given};
}

NetworkAddress parseNetworkAddress(std::string_view text, std::uint16_t port)
{
    if (auto address = networkAddressIn(text, port))
        return *std::move(address);
    throw Error(localized("\"%s\" is no address; write HOST or HOST:PORT, such as fax.example:%d or "
                          "[2001:db8::1]:%d",
                          text, port, port));
}

std::string toText(const NetworkAddress& address)
{
    const bool brackets = address.host.find(':') != std::string::npos;
    return (brackets ? "[" + address.host + "]" : address.host) + ":" + std::to_string(address.port);
}

} // namespace quelm
