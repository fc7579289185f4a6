// The rows of a list, kept in two blocks of memory that are reused.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_ROWS_H
#define DRIVER_WIDGETS_ROWS_H

#include <cstddef>
#include <vector>

namespace quelm {

/// Rows of texts with a fixed number of columns. The component empties and refills its lists
/// whenever a recipient is added, so a list of 5,000 sees millions of rows: adding one copies its
/// texts behind those of the row before and, once the blocks have grown, allocates nothing.
class Rows {
public:
    explicit Rows(std::size_t columnCount) : columnTotal_(columnCount) {}

    std::size_t columnCount() const { return columnTotal_; }
    std::size_t count() const { return rowTotal_; }

    /// Appends a row. Reads as many entries of `cells` as there are columns, or stops at the first
    /// null entry; missing cells are empty. On an exception the rows are as before.
    void add(const char* const* cells);

    /// Removes all rows; their memory serves the next ones.
    void clear();

    /// The text of a cell, NUL-terminated, valid until the rows change. Both numbers count from 0
    /// and are in range.
    const char* cell(std::size_t row, std::size_t column) const
    {
        return texts_.data() + starts_[row * columnTotal_ + column];
    }

private:
    std::size_t columnTotal_;
    std::size_t rowTotal_ = 0;
    std::vector<char> texts_;         // cells one after the other, each with its terminator
    std::vector<std::size_t> starts_; // where each cell begins in `texts`, row by row
};

} // namespace quelm

#endif
