// What a file of contacts says, read but not yet put into a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CONTACTS_H
#define DRIVER_PHONEBOOK_CONTACTS_H

#include "driver/phonebook/entry.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quelm {

/// One entry or group as the file has it, tidied but not checked, with the line (from 1) on which its row,
/// card or record begins. Entries of the same line belong to one person.
struct Contact {
    std::size_t line = 0;
    std::variant<PhonebookEntry, PhonebookGroup> content;
    /// What stands behind the person's own name in the entry's, in bytes: of " - home".
    std::size_t markSize = 0;
    std::vector<std::string> categories{}; ///< the file's words for what the entry belongs to
    bool hasMailbox = false;               ///< which phonebooks do not keep
};

/// A row, card or record that cannot be used, and why.
struct Refusal {
    std::size_t line = 0;
    std::string reason;
    bool mendable = false; ///< it could be taken under another name

    friend bool operator==(const Refusal&, const Refusal&) = default;
};

/// The whole file.
struct Contacts {
    std::vector<Contact> contacts; ///< in the file's order
    std::vector<Refusal> refused;
    std::size_t withoutNumber = 0;  ///< people without a fax number, who are passed over
    std::size_t extensions = 0;     ///< numbers whose extension is dialled behind a pause
    std::vector<std::string> notes; ///< sentences about the file as a whole, for the user
};

/// How the user wants a file to be read.
struct ReadingOptions {
    std::string charset;           ///< empty: told by the file, or guessed
    std::optional<char> separator; ///< of a CSV file; nothing: told by the file, or guessed
};

/// Tidies an entry or group, and adds it.
template <typename Content>
void addContact(Contacts& all, std::size_t line, Content content)
{
    all.contacts.push_back({line, tidied(std::move(content))});
}

/// The rows of a CSV text in UTF-8, of our own or another program's: `readCsvPeople` says what its first line
/// may be. Throws Error, with `file` as the name of the text, for a first line that cannot be used.
Contacts readCsvContacts(std::string_view text, const std::string& file,
                         std::optional<char> separator = std::nullopt);

/// The same with a first line that `readCsvContacts` takes, and all that a phonebook keeps. Ends in LF.
std::string writeCsvContacts(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents);

/// The records of an LDIF text in UTF-8: people with a fax number, and groups whose members are told by their
/// distinguished names.
Contacts readLdif(std::string_view text);

/// True when a text is LDIF, going by its first line that is no comment.
bool isLdifText(std::string_view text);

/// Entries and groups as records of LDIF, which `readLdif` reads the same from.
std::string writeLdif(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents);

/// The cards of a vCard text of version 2.1, 3.0 or 4.0. A card's work fax number, and one that is neither
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
