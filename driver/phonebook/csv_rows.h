// Takes CSV text apart into rows that know their lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CSV_ROWS_H
#define DRIVER_PHONEBOOK_CSV_ROWS_H

#include <cstddef>
#include <optional>
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

/// How a text parts its fields.
struct CsvDialect {
    char separator = ',';
    bool isNamed = false; ///< its first line says so, "sep=;", and is no row
};

/// The separator that `text` names in a line "sep=;" ahead of all else, or, without one, which of comma,
/// semicolon and tab stands most often in its first line that is not blank, outside of quotes; a comma when
/// none does.
CsvDialect dialectOf(std::string_view text);

/// The separator that a user names: itself, one character of ASCII, or "comma", "semicolon" or "tab". Nothing
/// for another text, a letter, a digit, a blank or a quotation mark.
std::optional<char> separatorNamed(std::string_view name);

/// The rows of a text: UTF-8 with or without a byte order mark, lines ended by LF, CRLF or, throughout, CR,
/// fields parted by the separator and quoted with '"' where they need it. Blanks around unquoted fields do
/// not count, empty lines are passed over. A row of more than 1 MiB has a problem, as has one that is not
/// UTF-8. Behind a quotation mark that is never closed nothing more can be read.
std::vector<CsvRow> readCsvRows(std::string_view text, const CsvDialect& dialect = {});

/// One row as a line that ends in LF, quoted where it has to be.
std::string csvLine(const std::vector<std::string>& fields);

} // namespace quelm

#endif
