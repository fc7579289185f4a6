// Reads and writes dotted numbers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/object_identifier.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace quelm {

namespace {

constexpr std::size_t mostNumbers = 128;
constexpr std::uint32_t numbersPerRoot = 40;

/// The first two numbers travel as one: first * 40 + second.
bool rootsFit(const ObjectIdentifier& numbers)
{
    const std::uint32_t root = numbers[0];
    if (root < 2)
        return numbers[1] < numbersPerRoot;
    return root == 2 && numbers[1] <= std::numeric_limits<std::uint32_t>::max() - 2 * numbersPerRoot;
}

} // namespace

std::optional<ObjectIdentifier> parseObjectIdentifier(std::string_view dotted)
{
    if (dotted.starts_with('.'))
        dotted.remove_prefix(1);
    ObjectIdentifier numbers;
    for (bool more = true; more;) {
        const std::string_view part = dotted.substr(0, dotted.find('.'));
        more = part.size() < dotted.size();
        dotted.remove_prefix(std::min(part.size() + 1, dotted.size()));
        const char* const end = part.data() + part.size();
        std::uint32_t& number = numbers.emplace_back();
        const auto result = std::from_chars(part.data(), end, number);
        if (part.empty() || result.ec != std::errc() || result.ptr != end || numbers.size() > mostNumbers)
            return std::nullopt;
    }
    if (numbers.size() < 2 || !rootsFit(numbers))
        return std::nullopt;
    return numbers;
}

std::string dotted(const ObjectIdentifier& numbers)
{
    std::string text;
    for (const std::uint32_t number : numbers)
        text += (text.empty() ? "" : ".") + std::to_string(number);
    return text;
}

} // namespace quelm
