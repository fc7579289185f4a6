// What a user does with a phonebook, for the command line and the phonebook program alike.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_ACTIONS_H
#define DRIVER_PHONEBOOK_ACTIONS_H

#include "driver/phonebook/entry.h"
#include "driver/phonebook/phonebook.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What an action did, in one sentence for the user, and what he should know besides.
struct Outcome {
    std::string done; ///< text to print; several lines for a list, each ended by LF
    std::vector<std::string> warnings;
    /// Of a change: what it is, for other programs.
    /// @{
    std::string action = {}; ///< "added", "replaced" or "removed"
    std::string kind = {};   ///< "entry", "group" or "unreadable"
    std::string name = {};
    /// @}
};

/// Whether something is done, or only looked at whether it could be, and said what it would be.
enum class Doing { really, dryRun };

enum class FileFormat { csv, vcard3, vcard4, ldif };

/// The format of a file by its name's ending, .csv, .ldif or .vcf (vCard 4.0). Nothing for another one.
std::optional<FileFormat> formatByName(std::string_view file);

// Each opens the phonebook for as long as it takes. All throw Error and leave it as it was when they cannot
// do what they say.

/// The whole phonebook, as columns or as CSV.
Outcome listPhonebook(const PhonebookPlace& place, bool csv);

/// All records of the phonebook, and the one that `showItem` shows, for those who write them in another form.
std::vector<Phonebook::Item> phonebookItems(const PhonebookPlace& place);
Phonebook::Item phonebookItem(const PhonebookPlace& place, const std::string& name);

/// One entry or group, found as `findItem` does.
Outcome showItem(const PhonebookPlace& place, const std::string& name);

/// Adds an entry or group; one of that name has to be there or not according to `replace`. A group's
/// members have to be entries of the phonebook.
Outcome addEntry(const PhonebookPlace& place, PhonebookEntry entry, bool replace,
                 Doing doing = Doing::really);
Outcome addGroup(const PhonebookPlace& place, PhonebookGroup group, bool replace,
                 Doing doing = Doing::really);

/// Removes an entry, group or unreadable record, found as `findItem` does, and warns of groups that lose a
/// member.
Outcome removeItem(const PhonebookPlace& place, const std::string& name, Doing doing = Doing::really);

/// The readable part of the phonebook in a format.
Outcome exportText(const PhonebookPlace& place, FileFormat format);

/// What an export holds.
struct ExportCount {
    std::size_t entries = 0;
    std::size_t groups = 0;
    std::vector<std::string> warnings; ///< of what is left out
};

/// Writes that to a file, which appears whole or not at all; with `Doing::dryRun` only looks at whether the
/// phonebook can be read. `count`, when it is not null, is filled.
Outcome exportFile(const PhonebookPlace& place, const std::string& file, FileFormat format,
                   Doing doing = Doing::really, ExportCount* count = nullptr);

} // namespace quelm

#endif
