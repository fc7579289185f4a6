// What the columns of a CSV file of people hold, by the names that address books give them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CSV_HEADER_H
#define DRIVER_PHONEBOOK_CSV_HEADER_H

#include "driver/phonebook/csv_column_names.h"
#include "driver/phonebook/csv_rows.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

struct CsvHeader {
    std::vector<CsvColumn> columns;   ///< one for each field of a row
    std::vector<std::string> leftOut; ///< names of those that hold nothing that is kept
    /// Every column has one of our own names: then each row has to be complete.
    bool isOurs = false;
    bool isMissing = false; ///< the first row is one of people already

    bool has(CsvField field) const;
};

/// Reads the names of columns. Ours are name, number, organization, phone, email, mailbox, type and members;
/// those of others are known in several languages, whatever their capitals and marks. A first row whose
/// second field is a telephone number, or that is nothing but one, is one of people: our first five columns,
/// or numbers alone. Throws Error "FILE:LINE: ..." for a row that has a problem, names no column that is
/// known, names one that is used twice, or none for a fax number.
CsvHeader readCsvHeader(const CsvRow& row, const std::string& file);

/// For what a number is, going by its label, such as "Home Fax"; `isFax` says whether it is a fax's.
Use useByLabel(std::string_view label);
bool isFaxLabel(std::string_view label);

} // namespace quelm

#endif
