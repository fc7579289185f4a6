// Cuts and logs warnings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/warnings.h"

#include "base/log.h"
#include "base/translation.h"

namespace quelm {

std::vector<std::string> bounded(std::vector<std::string> lines, std::size_t most)
{
    if (lines.size() <= most)
        return lines;
    const auto leftOut = lines.size() - most;
    lines.resize(most);
    lines.push_back(localizedCount("there is %d more warning like this",
                                   "there are %d more warnings like this", leftOut, leftOut));
    return lines;
}

void logWarnings(const std::vector<std::string>& lines)
{
    for (const auto& line : bounded(lines))
        log(Severity::warning, line);
}

} // namespace quelm
