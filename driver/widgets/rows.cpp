// Adding rows to a list's storage.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/rows.h"

#include <cstring>

namespace quelm {

void Rows::add(const char* const* cells)
{
    const std::size_t startsBefore = starts_.size();
    const std::size_t textsBefore = texts_.size();
    try {
        bool ended = cells == nullptr;
        for (std::size_t column = 0; column < columnTotal_; ++column) {
            ended = ended || cells[column] == nullptr;
            const char* text = ended ? "" : cells[column];
            starts_.push_back(texts_.size());
            texts_.insert(texts_.end(), text, text + std::strlen(text) + 1);
        }
    } catch (...) {
        starts_.resize(startsBefore);
        texts_.resize(textsBefore);
        throw;
    }
    ++rowTotal_;
}

void Rows::clear()
{
    rowTotal_ = 0;
    texts_.clear();
    starts_.clear();
}

} // namespace quelm
