// The names that address books of several languages give to the columns of their CSV files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CSV_COLUMN_NAMES_H
#define DRIVER_PHONEBOOK_CSV_COLUMN_NAMES_H

#include "driver/phonebook/csv_header.h"

#include <string>
#include <string_view>

namespace quelm {

/// A column's name without capitals, blanks and marks: "emailaddress" of "E-mail Address". Letters keep
/// their accents.
std::string plainColumnName(std::string_view name);

/// What a column of that plain name holds; `CsvField::none` when the name is not known.
CsvColumn columnByPlainName(const std::string& plain);

} // namespace quelm

#endif
