// Keeps the start of the current line, and judges each line at its end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/page_tally.h"

#include <algorithm>
#include <cstddef>

namespace quelm {
namespace {

/// More than a page's comment or the last line is.
constexpr std::size_t keptOfLine = 64;

} // namespace

void PageTally::append(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t size = std::min(bytes.find('\n'), bytes.size());
        line_ += bytes.substr(0, std::min(size, keptOfLine - std::min(keptOfLine, line_.size())));
        if (size == bytes.size())
            return;
        endLine();
        bytes.remove_prefix(size + 1);
    }
}

void PageTally::endLine()
{
    if (line_.empty())
        return;
    const std::string next = std::to_string(pages_ + 1);
    if (line_ == "%%Page: " + next + " " + next)
        ++pages_;
    ended_ = line_ == endOfFile;
    line_.clear();
}

} // namespace quelm
