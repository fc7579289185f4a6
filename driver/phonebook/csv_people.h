// The people and groups of a CSV file, for phonebooks and for the recipients of a job alike.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CSV_PEOPLE_H
#define DRIVER_PHONEBOOK_CSV_PEOPLE_H

#include "driver/phonebook/csv_header.h"
#include "driver/phonebook/person.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quelm {

/// What one row says: a person, whose texts may hold anything but are UTF-8, or a group.
struct CsvPerson {
    Person person;
    std::string mailbox;
};
struct CsvGroup {
    std::size_t line = 0;
    PhonebookGroup group;
};

struct CsvPeople {
    CsvHeader header;
    std::vector<std::variant<CsvPerson, CsvGroup>> rows;
    std::vector<Refusal> refused;   ///< rows that cannot be read, by line
    std::vector<std::string> notes; ///< sentences about the file as a whole, for the user
};

/// Reads a text in UTF-8, whose separator is told or guessed where `separator` says none. Its first line is
/// one for `readCsvHeader`. In files of others a row may lack its last fields. Throws Error for a first line
/// that cannot be used; `file` is the name of the text in messages.
CsvPeople readCsvPeople(std::string_view text, const std::string& file, std::optional<char> separator);

} // namespace quelm

#endif
