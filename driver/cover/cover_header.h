// The values in the header of a component's cover page, and the header with others in their places.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_COVER_HEADER_H
#define DRIVER_COVER_COVER_HEADER_H

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What stands in a header in place of each "%s", as it stands there: the content of ten strings, then the
/// note's strings, then five numbers.
using CoverValues = std::array<std::string, 16>;

inline constexpr std::size_t noteSlot = 10; ///< the position of the note's strings

/// The published template of a component's header, a format of sprintf, taken apart. No value holds a line
/// end, so that what a header was filled with can be told exactly.
class CoverHeader {
public:
    /// Nothing for a text that is no such format: sixteen "%s", one a line, the first ten of them in
    /// parentheses and the next in brackets, and no other conversion.
    [[nodiscard]] static std::optional<CoverHeader> parse(std::string_view format);

    /// Takes the filled header away from the front of `page` and returns its values. Throws quelm::Error,
    /// naming the first line that is not the header's.
    [[nodiscard]] CoverValues take(std::string_view& page) const;

    /// The header with these values.
    [[nodiscard]] std::string filled(const CoverValues& values) const;

private:
    /// One line, with its line end: all of it, or what stands ahead of and behind a value.
    struct Line {
        std::string start;
        std::string end;
        bool hasValue = false;
    };

    static std::optional<Line> parseLine(std::string_view format);

    std::vector<Line> lines_;
};

/// The first line of `text`, with its line end.
[[nodiscard]] std::string_view firstLine(std::string_view text);

} // namespace quelm

#endif
