// Reads a format before it is believed, and formats one conversion at a time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/number_format.h"

#include "host/calls.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the longest run of characters that `belongs` accepts off the front.
template <typename Predicate>
std::string_view takeWhile(std::string_view& text, Predicate belongs)
{
    const auto end = std::find_if_not(text.begin(), text.end(), belongs);
    const std::string_view taken = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(taken.size());
    return taken;
}

/// True for a width or precision that leaves room for a message; none at all is one.
bool isModest(std::string_view digits)
{
    constexpr std::size_t most = 3; // digits
    static_assert(host::textBufferSize > 999);
    return digits.size() <= most;
}

/// A conversion of an integer, such as "%05d", without the "1$" that names its argument.
struct Conversion {
    std::string format;
    bool namesArgument = false;

    std::string of(int number) const
    {
        const bool isSigned = format.ends_with('d') || format.ends_with('i');
        char text[host::textBufferSize];
        const int size =
            isSigned ? std::snprintf(text, sizeof text, format.c_str(), number)
                     : std::snprintf(text, sizeof text, format.c_str(), static_cast<unsigned>(number));
        return {text, static_cast<std::size_t>(std::max(size, 0))};
    }
};

/// Takes a conversion off the front of `text`, behind its "%". Nothing when it wants anything but one int.
std::optional<Conversion> takeConversion(std::string_view& text)
{
    Conversion conversion;
    if (text.starts_with("1$")) {
        conversion.namesArgument = true;
        text.remove_prefix(2);
    }
    const auto flags =
        takeWhile(text, [](char c) { return std::string_view("-+ #0'").find(c) != std::string_view::npos; });
    const auto width = takeWhile(text, isDigit);
    const bool hasPrecision = text.starts_with('.');
    if (hasPrecision)
        text.remove_prefix(1);
    const auto precision = hasPrecision ? takeWhile(text, isDigit) : std::string_view();
    if (!isModest(width) || !isModest(precision) || text.empty() ||
        std::string_view("diouxX").find(text.front()) == std::string_view::npos)
        return std::nullopt;
    conversion.format.append("%").append(flags).append(width);
    if (hasPrecision)
        conversion.format.append(".").append(precision);
    conversion.format += text.front();
    text.remove_prefix(1);
    return conversion;
}

} // namespace

std::string withNumber(const std::string& format, int number)
{
    std::string out;
    int named = 0;   // conversions that name their argument; all of them may name the same one
    int unnamed = 0; // each takes an argument of its own
    std::string_view rest = format;
    while (!rest.empty()) {
        out.append(takeWhile(rest, [](char c) { return c != '%'; }));
        if (rest.empty())
            break;
        rest.remove_prefix(1);
        if (rest.starts_with('%')) {
            out += '%';
            rest.remove_prefix(1);
            continue;
        }
        const auto conversion = takeConversion(rest);
        if (!conversion)
            return format;
        ++(conversion->namesArgument ? named : unnamed);
        out += conversion->of(number);
    }
    const bool asksForOne = unnamed == 0 || (unnamed == 1 && named == 0);
    return asksForOne ? out : format;
}
