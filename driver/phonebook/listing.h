// A phonebook's content as text for people and for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_LISTING_H
#define DRIVER_PHONEBOOK_LISTING_H

#include "driver/phonebook/phonebook.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quelm {

/// One line for each entry and group, in the phonebook's order: the name, padded to the longest, two
/// blanks and the fax number; a group's name in brackets and its members, parted by ", ".
/// A record that cannot be read is marked, with the reason, in the number's place.
std::string listText(const std::vector<Phonebook::Item>& items);

/// The fields of an entry or the members of a group, one a line: "name: Ann". `items` tell which members
/// are missing.
std::string showText(const Phonebook::Item& item, const std::vector<Phonebook::Item>& items);

/// The item that a user means: "[NAME]" is a group, NAME the entry of that name or, when there is none,
/// the group. An unreadable record is found by the name in its key. Null when there is none.
const Phonebook::Item* findItem(const std::vector<Phonebook::Item>& items, std::string_view name);

/// The entry "Ann", the group "Team", the unreadable record "Bob": the subject of a sentence.
std::string described(const PhonebookEntry& entry);
std::string described(const PhonebookGroup& group);
std::string described(const Phonebook::Item& item);

/// How much there is that can be read: "12 entries, 1 group".
std::string countText(const std::vector<Phonebook::Item>& items);

/// What to tell the user about each unreadable record.
std::vector<std::string> unreadableRecords(const std::vector<Phonebook::Item>& items,
                                           const std::string& path);

/// The readable items alone.
std::vector<std::variant<PhonebookEntry, PhonebookGroup>>
readableItems(const std::vector<Phonebook::Item>& items);

} // namespace quelm

#endif
