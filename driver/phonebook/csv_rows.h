// Takes CSV text apart into rows that know their lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CSV_ROWS_H
#define DRIVER_PHONEBOOK_CSV_ROWS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// One row. `line` is the line, from 1, on which it begins.
struct CsvRow {
    std::size_t line = 0;
    std::vector<std::string> fields;
    std::string problem; ///< why it cannot be read; empty when it can. Then `fields` are of no use
};

/// The rows of a text: UTF-8 with or without a byte order mark, lines ended by LF or CRLF, fields parted by
/// commas and quoted with '"' where they need it. Blanks around unquoted fields do not count, empty
/// lines are passed over. A row of more than 1 MiB has a problem. Behind a quotation mark that is never
/// closed nothing more can be read.
std::vector<CsvRow> readCsvRows(std::string_view text);

/// One row as a line that ends in LF, quoted where it has to be.
std::string csvLine(const std::vector<std::string>& fields);

} // namespace quelm

#endif
