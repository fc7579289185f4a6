// Takes headers of cover pages apart, and fills them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/cover_header.h"

#include "driver/cover/refusals.h"

namespace quelm {
namespace {

/// Whether the value at `slot` stands between what makes it a string, or the note's list of them.
bool isEnclosed(std::string_view start, std::string_view end, std::size_t slot)
{
    if (slot > noteSlot)
        return true;
    return slot == noteSlot ? start.ends_with('[') && end.starts_with(']')
                            : start.ends_with('(') && end.starts_with(')');
}

} // namespace

std::string_view firstLine(std::string_view text)
{
    const auto end = text.find('\n');
    return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

std::optional<CoverHeader::Line> CoverHeader::parseLine(std::string_view format)
{
    Line line;
    for (std::size_t at = 0; at < format.size(); ++at) {
        std::string& part = line.hasValue ? line.end : line.start;
        if (format[at] != '%') {
            part += format[at];
            continue;
        }
        const char kind = ++at < format.size() ? format[at] : '\0';
        if (kind == '%')
            part += '%';
        else if (kind == 's' && !line.hasValue)
            line.hasValue = true;
        else
            return std::nullopt;
    }
    return line;
}

std::optional<CoverHeader> CoverHeader::parse(std::string_view format)
{
    CoverHeader header;
    std::size_t slot = 0;
    while (!format.empty()) {
        const auto line = parseLine(firstLine(format));
        if (!line || (line->hasValue && !isEnclosed(line->start, line->end, slot)))
            return std::nullopt;
        slot += line->hasValue ? 1 : 0;
        header.lines_.push_back(*line);
        format.remove_prefix(firstLine(format).size());
    }
    return slot == std::tuple_size_v<CoverValues> ? std::optional(header) : std::nullopt;
}

CoverValues CoverHeader::take(std::string_view& page) const
{
    CoverValues values;
    std::size_t slot = 0;
    for (const auto& [start, end, hasValue] : lines_) {
        const std::string_view line = firstLine(page);
        if (hasValue ? line.size() < start.size() + end.size() || !line.starts_with(start) : line != start)
            refuseLine(line);
        if (hasValue) {
            if (!line.ends_with(end))
                refuseValue(line.substr(start.size()));
            values.at(slot++) = line.substr(start.size(), line.size() - start.size() - end.size());
        }
        page.remove_prefix(line.size());
    }
    return values;
}

std::string CoverHeader::filled(const CoverValues& values) const
{
    std::string text;
    std::size_t slot = 0;
    for (const auto& [start, end, hasValue] : lines_) {
        text += start;
        if (hasValue)
            text += values.at(slot++) + end;
    }
    return text;
}

} // namespace quelm
