// Decides what of a file of contacts goes into a phonebook, and under which names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_SETTLED_CONTACTS_H
#define DRIVER_PHONEBOOK_SETTLED_CONTACTS_H

#include "driver/phonebook/contacts.h"
#include "driver/phonebook/phonebook.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

struct SettlingOptions {
    bool rename = false;        ///< names that are not allowed, or that two people have, are changed
    bool categoryGroups = true; ///< categories become groups
};

/// An entry or group that goes in under another name than the file's.
struct Renaming {
    std::size_t line = 0;
    std::string from;
    std::string to;

    friend bool operator==(const Renaming&, const Renaming&) = default;
};

/// What can be saved: all of it is acceptable, and no two of the same name contradict each other.
struct SettledContacts {
    std::vector<Contact> contacts;          ///< in the file's order
    std::vector<PhonebookGroup> categories; ///< groups made of categories, to be added to those of that name
    std::vector<Refusal> refused;           ///< by line, those of the reading included
    std::vector<Renaming> renamed;          ///< by line
    std::size_t mailboxes = 0;              ///< given with what can be saved
};

/// Checks all that was read. The contacts of one line stand or fall together, and so does a group with a
/// member that is refused. A name that was given with another number or other members before is refused: two
/// people may be meant. With `rename` both go in: names are mended, and numbered where one of the file has
/// that name, or, for a changed name only, one of `present` (the phonebook's items) with another number or
/// other members.
SettledContacts settle(Contacts all, const std::vector<Phonebook::Item>& present,
                       const SettlingOptions& options);

} // namespace quelm

#endif
