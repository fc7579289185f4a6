// Looks at the lines of a job's header as they come.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/card_line.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/jobs/attribute_lines.h"

#include <cstddef>

namespace quelm {
namespace {

constexpr std::string_view dscStart = "%%OID_ATT_CREDIT_CARD \"";
constexpr std::string_view pjlStart = "@PJL COMMENT OID_ATT_CREDIT_CARD \"";
constexpr std::string_view lineRest = "\";\r\n";

constexpr std::string_view dscHead = "%!PS-Adobe-";
constexpr std::string_view pjlHead = "\x1B%-12345X@PJL";
constexpr std::string_view dscEnd = "%%EndComments";
constexpr std::string_view pjlEnd = "@PJL ENTER LANGUAGE";

/// Longer lines than a card's may be stand in a header: titles.
constexpr std::size_t longestLine = 4096;

} // namespace

std::string cardLine(Pdl pdl, std::string_view number)
{
    if (!isDialText(number))
        throw Error(localized("the number of the credit card holds something that a device does not take; "
                              "write it with digits, blanks and \"-\""));
    return std::string(pdl == Pdl::dsc ? dscStart : pjlStart).append(number).append(lineRest);
}

void CardLineCut::write(std::string_view bytes)
{
    while (!bytes.empty() && inHeader_) {
        const auto end = bytes.find('\n');
        const auto part = bytes.substr(0, end == std::string_view::npos ? end : end + 1);
        bytes.remove_prefix(part.size());
        if (isPassing_) {
            pass(part);
            isPassing_ = end == std::string_view::npos;
            continue;
        }
        line_ += part;
        if (end != std::string_view::npos) {
            takeLine();
        } else if (line_.size() > longestLine) {
            pass(line_);
            line_.clear();
            isPassing_ = true;
            isFirst_ = false;
        }
    }
    if (!bytes.empty())
        pass(bytes);
}

void CardLineCut::finish()
{
    pass(line_);
    line_.clear();
}

void CardLineCut::takeLine()
{
    const std::string_view line = line_;
    if (isFirst_)
        inHeader_ = line.starts_with(dscHead) || line.starts_with(pjlHead);
    else if (line.starts_with(dscEnd) || line.starts_with(pjlEnd))
        inHeader_ = false;
    isFirst_ = false;
    if (inHeader_ && !position_ && (line.starts_with(dscStart) || line.starts_with(pjlStart)) &&
        line.ends_with(lineRest)) {
        position_ = size_;
        size_ += line.size();
        lineSize_ = line.size();
        card_.write(line);
    } else {
        pass(line);
    }
    line_.clear();
}

void CardLineCut::pass(std::string_view bytes)
{
    if (bytes.empty())
        return;
    size_ += bytes.size();
    kept_.write(bytes);
}

} // namespace quelm
