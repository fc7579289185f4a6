// Compares a cover page with the texts that it is made of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/cover_page_check.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/jobs/job_texts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quelm {
namespace {

constexpr std::size_t slotCount = 16;
constexpr std::size_t noteSlot = 10; // the ten ahead of it are strings, the five behind it numbers

[[noreturn]] void failAt(std::string_view line)
{
    constexpr std::size_t longest = 120;
    throw Error(
        localized("the fax cannot be written: its cover page holds a line that does not belong there: "
                  "\"%s\"",
                  shownText(line.substr(0, line.find_first_of("\r\n")), longest)));
}

[[noreturn]] void failValue(std::string_view value)
{
    throw Error(
        localized("the fax cannot be written: a text on its cover page holds a control character, or a "
                  "parenthesis or backslash that cuts it off: \"%s\"; change that text",
                  shownText(value)));
}

/// The first line of `text`, with its line end.
std::string_view firstLine(std::string_view text)
{
    const auto end = text.find('\n');
    return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

/// One line of the header: all of it, or what stands ahead of and behind a value.
struct HeaderLine {
    std::string start;
    std::string end;
    bool hasValue = false;
};

/// Takes a line of a format apart; nothing for one that formats something else than one text.
std::optional<HeaderLine> headerLine(std::string_view format)
{
    HeaderLine line;
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

/// Nothing when the text is no header with the values that a cover page has.
std::optional<std::vector<HeaderLine>> headerLines(std::string_view format)
{
    std::vector<HeaderLine> lines;
    std::size_t values = 0;
    while (!format.empty()) {
        const auto line = headerLine(firstLine(format));
        if (!line)
            return std::nullopt;
        values += line->hasValue ? 1 : 0;
        lines.push_back(*line);
        format.remove_prefix(firstLine(format).size());
    }
    return values == slotCount ? std::optional(lines) : std::nullopt;
}

/// Whether a text leaves a PostScript reader where it found him: inside of a string, which it does not end,
/// or outside, with nothing but strings and blanks in it.
bool staysInPlace(std::string_view text, bool insideString)
{
    const int outermost = insideString ? 1 : 0;
    int depth = outermost; // in parentheses
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (character == '(') {
            ++depth;
        } else if (depth == 0) {
            if (character != ' ')
                return false;
        } else if (character == ')') {
            --depth;
            if (depth < outermost)
                return false;
        } else if (character == '\\') {
            ++at; // takes the next one with it
            if (at == text.size())
                return false;
        }
    }
    return depth == outermost;
}

bool isNumber(std::string_view text)
{
    constexpr std::size_t longest = 8;
    return !text.empty() && text.size() <= longest &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool fits(std::string_view value, std::size_t slot)
{
    if (!isPlainText(value))
        return false;
    if (slot > noteSlot)
        return isNumber(value);
    return staysInPlace(value, slot != noteSlot);
}

/// Checks the filled header at the front of `page`, and returns what stands behind it.
std::string_view checkHeader(std::string_view page, const std::vector<HeaderLine>& lines)
{
    std::size_t slot = 0;
    for (const auto& [start, end, hasValue] : lines) {
        const std::string_view line = firstLine(page);
        if (!hasValue) {
            if (line != start)
                failAt(line);
        } else {
            if (line.size() < start.size() + end.size() || !line.starts_with(start))
                failAt(line);
            if (!line.ends_with(end))
                failValue(line.substr(start.size()));
            const auto value = line.substr(start.size(), line.size() - start.size() - end.size());
            if (!fits(value, slot))
                failValue(value);
            ++slot;
        }
        page.remove_prefix(line.size());
    }
    return page;
}

void checkTrailer(std::string_view rest, std::string_view trailer)
{
    if (rest == trailer)
        return;
    while (!rest.empty() && firstLine(rest) == firstLine(trailer)) {
        rest.remove_prefix(firstLine(rest).size());
        trailer.remove_prefix(firstLine(trailer).size());
    }
    if (rest.empty())
        throw Error(localized("the fax cannot be written: the component did not write its cover page"));
    failAt(firstLine(rest));
}

/// Refuses the lines of a page, however they end, that a device or a print system would act on.
void checkLines(std::string_view page)
{
    static constexpr std::array<std::string_view, 5> commands{"%%OID_ATT_", "%%QLM", "@PJL", "%%EOF", "\x04"};
    static constexpr std::string_view blanks(" \t\f\v\0", 5);
    while (!page.empty()) {
        const auto size = std::min(page.find_first_of("\r\n\f"), page.size());
        const auto line = page.substr(0, size);
        const auto content = line.substr(std::min(line.find_first_not_of(blanks), line.size()));
        if (std::ranges::any_of(commands, [&](auto command) { return content.starts_with(command); }))
            failAt(line);
        page.remove_prefix(std::min(size + 1, page.size()));
    }
}

} // namespace

void checkCoverPage(std::string_view page, const CoverPageTemplate& expected)
{
    if (const auto lines = headerLines(expected.header))
        checkTrailer(checkHeader(page, *lines), expected.trailer);
    else
        checkLines(page);
}

} // namespace quelm
