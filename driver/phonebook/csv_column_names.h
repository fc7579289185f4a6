// The names that address books of several languages give to the columns of their CSV files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CSV_COLUMN_NAMES_H
#define DRIVER_PHONEBOOK_CSV_COLUMN_NAMES_H

#include "driver/phonebook/person.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quelm {

enum class CsvField {
    none, ///< nothing that is kept
    name,
    givenName,
    middleName,
    familyName,
    organization,
    fax,
    phone,
    email,
    categories,
    mailbox,
    type,        ///< entry or group
    members,     ///< of a group
    numberLabel, ///< what the number with the same index is for
    number,      ///< that number
};

struct CsvColumn {
    CsvField field = CsvField::none;
    Use use = Use::unmarked;
    std::size_t index = 0; ///< of `numberLabel` and `number`: 1 for "Phone 1 - Value"
};

/// A column's name without capitals, blanks and marks: "emailaddress" of "E-mail Address". Letters keep
/// their accents.
std::string plainColumnName(std::string_view name);

/// What a column of that plain name holds; `CsvField::none` when the name is not known.
CsvColumn columnByPlainName(const std::string& plain);

} // namespace quelm

#endif
