// One person of an address book, and the entries that become of him.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_PERSON_H
#define DRIVER_PHONEBOOK_PERSON_H

#include "driver/phonebook/contacts.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// What a number or address is for.
enum class Use { work, home, unmarked };

/// A number or address, as its file has it.
struct PersonNumber {
    std::string value;
    Use use = Use::unmarked;
};

/// What address books of all kinds say of a person. Texts are UTF-8; of the numbers of a use the preferred
/// one comes first. Empty ones do not count.
struct Person {
    std::size_t line = 0;
    std::string name;
    std::string organization;
    std::vector<PersonNumber> faxes;
    std::vector<PersonNumber> phones;
    std::vector<PersonNumber> emails;
    std::vector<std::string> categories;
};

/// Whether a fax number is there.
[[nodiscard]] bool hasFax(const Person& person);

/// Adds the entries of a person. His fax number for work, or for no particular use, becomes an entry of his
/// name, the one at home an entry of that name with " - home" behind it; more of a use are numbered: "Ann -
/// 2", "Ann - home 2". Each has the phone number and address of its use. His categories go with the first.
/// Who has no fax number is counted; who has more than a hundred of a use is refused.
void addPerson(Contacts& all, const Person& person);

} // namespace quelm

#endif
