// What a file of contacts says, read but not yet put into a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CONTACTS_H
#define DRIVER_PHONEBOOK_CONTACTS_H

#include "driver/phonebook/entry.h"
#include "driver/phonebook/entry_check.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quelm {

/// One entry or group, acceptable, with the line (from 1) on which its row or card begins.
struct Contact {
    std::size_t line = 0;
    std::variant<PhonebookEntry, PhonebookGroup> content;
};

/// A row or card that cannot be used, and why.
struct Refusal {
    std::size_t line = 0;
    std::string reason;

    friend bool operator==(const Refusal&, const Refusal&) = default;
};

/// The whole file.
struct Contacts {
    std::vector<Contact> contacts; ///< in the file's order
    std::vector<Refusal> refused;
    std::size_t withoutNumber = 0; ///< cards without a fax number, which are passed over
    std::size_t mailboxes = 0;     ///< mailboxes given, which phonebooks do not keep
};

/// Tidies an entry or group, and adds it to `contacts` or, when it is not acceptable, to `refused`. True
/// when it was added.
template <typename Content>
bool addContact(Contacts& all, std::size_t line, Content content)
{
    content = tidied(std::move(content));
    if (auto problem = problemWith(content)) {
        all.refused.push_back({line, std::move(*problem)});
        return false;
    }
    all.contacts.push_back({line, std::move(content)});
    return true;
}

/// The rows of a CSV text, whose first line names the columns: `name` and `number`, and any of
/// `organization`, `phone`, `email`, `mailbox`, `type` (entry or group) and `members` (names parted by
/// commas). Throws Error, with `file` as the name of the text, for a first line that cannot be used.
Contacts readCsvContacts(std::string_view text, const std::string& file);

/// The same with a first line that `readCsvContacts` takes, and all that a phonebook keeps. Ends in LF.
std::string writeCsvContacts(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents);

/// The cards of a vCard text of version 3.0 or 4.0. A card's work fax number, and one that is neither
/// for work nor home, becomes an entry of the card's name, the home fax number one of that name with
/// " - home" behind it; more of a kind are numbered: "Ann - 2", "Ann - home 2". A card of the kind
/// "group" becomes a group.
Contacts readVcards(std::string_view text);

/// True when a text is one of vCards, going by its beginning.
bool isVcardText(std::string_view text);

enum class VcardVersion { v3, v4 };

/// Entries and groups as cards, lines ended by CRLF. An entry "Ann - home" becomes the home fax number of
/// Ann, on her card if there is one with the same organization. `readVcards` reads the same entries and
/// groups from it.
std::string writeVcards(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents,
                        VcardVersion version);

} // namespace quelm

#endif
