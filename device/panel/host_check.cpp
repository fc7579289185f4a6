// Compares Host headers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/host_check.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace quelm::device {
namespace {

/// The host without its port and brackets; nothing when it is malformed.
std::optional<std::string> withoutPort(std::string_view host)
{
    std::size_t end = host.find(':');
    std::string_view name = host.substr(0, end);
    if (host.starts_with('[')) {
        const auto bracket = host.find(']');
        if (bracket == std::string_view::npos)
            return std::nullopt;
        name = host.substr(1, bracket - 1);
        end = bracket + 1;
    }
    const std::string_view port = end < host.size() ? host.substr(end) : std::string_view();
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    if (!port.empty() && (port.front() != ':' || !std::ranges::all_of(port.substr(1), isDigit)))
        return std::nullopt;
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

struct NumericHost {
    int family = 0;
    std::array<unsigned char, 16> bytes{};
    bool operator==(const NumericHost&) const = default;
};

std::optional<NumericHost> numeric(const std::string& host)
{
    NumericHost address;
    for (const int family : {AF_INET, AF_INET6}) {
        if (inet_pton(family, host.c_str(), address.bytes.data()) == 1) {
            address.family = family;
            return address;
        }
    }
    return std::nullopt;
}

bool isLoopback(const NumericHost& address)
{
    if (address.family == AF_INET)
        return address.bytes[0] == 127;
    return address == numeric("::1");
}

} // namespace

bool isOwnHost(const std::string& host, const std::string& bound)
{
    const auto name = withoutPort(host);
    if (!name)
        return false;
    if (*name == "localhost")
        return true;
    const auto address = numeric(*name);
    if (!address)
        return false;
    const auto own = numeric(bound);
    const bool isAnyOfOurs =
        own && std::ranges::all_of(own->bytes, [](unsigned char byte) { return byte == 0; });
    return isLoopback(*address) || isAnyOfOurs || address == own;
}

} // namespace quelm::device
