// Checks a component's cover page, and has its values printed as they were typed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/cover_page.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cover/cover_header.h"
#include "driver/cover/printed_values.h"
#include "driver/cover/refusals.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace quelm {
namespace {

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
    refuseLine(firstLine(rest));
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
            refuseLine(line);
        page.remove_prefix(std::min(size + 1, page.size()));
    }
}

bool isNumber(std::string_view text)
{
    constexpr std::size_t longest = 8;
    return !text.empty() && text.size() <= longest &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

void checkValues(const CoverValues& values)
{
    for (std::size_t slot = 0; slot < values.size(); ++slot) {
        const std::string& value = values.at(slot);
        if (slot > noteSlot ? !isNumber(value) : !isPlainText(value))
            refuseValue(value);
    }
}

/// The header with `setup` where the page's own begins: within the page, which may be taken out of the job.
std::string withSetup(std::string header, std::string_view setup)
{
    constexpr std::string_view mark = "%%BeginPageSetup\n";
    const auto at = header.find(mark);
    return header.insert(at == std::string::npos ? 0 : at + mark.size(), setup);
}

std::string withLineEnd(std::string text)
{
    if (!text.ends_with('\n'))
        text += '\n';
    return text;
}

} // namespace

CoverPage makeCoverPage(std::string_view written, const CoverPageTemplate& expected)
{
    const auto header = CoverHeader::parse(expected.header);
    if (!header) {
        checkLines(written);
        return {withLineEnd(std::string(written)), {}};
    }
    std::string_view rest = written;
    const CoverValues values = header->take(rest);
    checkTrailer(rest, expected.trailer);
    checkValues(values);
    PrintedValues printed = printedValues(values);
    const std::string page =
        withSetup(header->filled(printed.values), printed.ahead) + std::string(expected.trailer);
    return {withLineEnd(page) + printed.behind, std::move(printed.cut)};
}

} // namespace quelm
