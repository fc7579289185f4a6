// Keeps remarks up to a bound, and puts them in order.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/remarks.h"

#include "base/translation.h"
#include "device/stream/card_digits.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quelm::device {

void Remarks::add(std::uint64_t line, const std::string& text)
{
    if (remarks_.size() < most)
        remarks_.push_back({line, withoutCards(text)});
    else
        ++leftOut_;
}

std::vector<Remark> Remarks::take()
{
    const auto place = [](const Remark& remark) {
        return remark.line == 0 ? std::numeric_limits<std::uint64_t>::max() : remark.line;
    };
    std::ranges::stable_sort(remarks_, {}, place);
    if (leftOut_ > 0)
        remarks_.push_back({0, localizedCount("and %d more", "and %d more", leftOut_, leftOut_)});
    return std::move(remarks_);
}

} // namespace quelm::device
