// Adding rows to a list's storage.
#include "driver/widgets/rows.h"

#include <cstring>

namespace quelm {

void Rows::add(const char* const* cells)
{
    const std::size_t startsBefore = starts.size();
    const std::size_t textsBefore = texts.size();
    try {
        bool ended = cells == nullptr;
        for (std::size_t column = 0; column < columnTotal; ++column) {
            ended = ended || cells[column] == nullptr;
            const char* text = ended ? "" : cells[column];
            starts.push_back(texts.size());
            texts.insert(texts.end(), text, text + std::strlen(text) + 1);
        }
    } catch (...) {
        starts.resize(startsBefore);
        texts.resize(textsBefore);
        throw;
    }
    ++rowTotal;
}

void Rows::clear()
{
    rowTotal = 0;
    texts.clear();
    starts.clear();
}

} // namespace quelm
