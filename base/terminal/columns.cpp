// Pads texts by the width of their characters.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/columns.h"

#include "base/texts.h"

#include <glib.h>

#include <algorithm>

namespace quelm {
namespace {

/// The cells as they are shown, without the empty ones at the end.
std::vector<std::string> shownCells(const std::vector<std::string>& row)
{
    std::vector<std::string> cells;
    cells.reserve(row.size());
    for (const auto& cell : row)
        cells.push_back(oneLine(cell));
    while (!cells.empty() && cells.back().empty())
        cells.pop_back();
    for (auto& cell : cells)
        cell = cell.empty() ? "-" : cell;
    return cells;
}

} // namespace

std::size_t widthOf(const std::string& text)
{
    std::size_t width = 0;
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const auto character = g_utf8_get_char(at);
        if (g_unichar_iszerowidth(character) == FALSE)
            width += g_unichar_iswide(character) != FALSE ? 2 : 1;
    }
    return width;
}

std::string alignedColumns(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::vector<std::string>> lines;
    std::vector<std::size_t> widest;
    for (const auto& row : rows) {
        lines.push_back(shownCells(row));
        const auto& cells = lines.back();
        widest.resize(std::max(widest.size(), cells.size()));
        for (std::size_t i = 0; i < cells.size(); ++i)
            widest[i] = std::max(widest[i], widthOf(cells[i]));
    }
    std::string text;
    for (const auto& cells : lines) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            text += cells[i];
            if (i + 1 < cells.size())
                text.append(widest[i] - widthOf(cells[i]) + 2, ' ');
        }
        text += '\n';
    }
    return text;
}

} // namespace quelm
