// What a phonebook holds: entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_ENTRY_H
#define DRIVER_PHONEBOOK_ENTRY_H

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// A single entry. Texts are UTF-8; only name and number are always there. A mailbox is no part of it:
/// phonebooks keep none.
struct PhonebookEntry {
    std::string name;
    std::string number; ///< fax number
    std::string organization;
    std::string phone;
    std::string email;

    friend bool operator==(const PhonebookEntry&, const PhonebookEntry&) = default;
};

/// A group names single entries of the same phonebook, in the order in which they are faxed.
struct PhonebookGroup {
    std::string name;
    std::vector<std::string> members;
    /// What the component leaves of a member's name with a comma in it, which no entry has then, or
    /// another's.
    std::string cutName{};

    friend bool operator==(const PhonebookGroup&, const PhonebookGroup&) = default;
};

/// A text without the white space around it, which records do not keep, and with plain line feeds.
std::string tidied(std::string_view text);

/// All texts tidied.
PhonebookEntry tidied(PhonebookEntry entry);
PhonebookGroup tidied(PhonebookGroup group);

} // namespace quelm

#endif
