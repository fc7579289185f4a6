// Brings the entries and groups of a file into a phonebook: all of them, or none.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_IMPORT_H
#define DRIVER_PHONEBOOK_IMPORT_H

#include "driver/phonebook/contacts.h"
#include "driver/phonebook/phonebook.h"
#include "driver/phonebook/settled_contacts.h"

#include <functional>
#include <string>
#include <vector>

namespace quelm {

struct ImportOptions {
    ReadingOptions reading;
    SettlingOptions settling;
    bool skipBad = false; ///< import what can be used, and leave the rest
    bool dryRun = false;  ///< find out what would be done, and leave the phonebook as it is
    std::function<void(std::size_t done, std::size_t total)> progress; ///< may be empty
};

/// How an import went, or would go. `file` is the name that messages have for it.
struct ImportReport {
    std::string file;
    const char* format = "csv"; ///< or vcard, or ldif
    std::string charset;
    bool charsetGuessed = false;
    std::size_t added = 0;
    std::size_t merged = 0; ///< took the place of one of the same name
    std::size_t withoutNumber = 0;
    std::size_t mailboxes = 0;
    std::size_t extensions = 0;
    std::vector<Renaming> renamed;       ///< by line
    std::vector<std::string> categories; ///< names of the groups made of categories
    std::vector<std::string> notes;      ///< sentences about the file as a whole
    std::vector<Refusal> refused;        ///< by line
    /// What to tell the user of groups' members that no entry stands for, in a hundred lines at most and one
    /// more.
    std::vector<std::string> strayMembers;
    bool accepted = false; ///< false when something was refused: then the phonebook is as it was
    bool dryRun = false;   ///< it is as it was in any case
};

/// Reads a CSV, vCard or LDIF file, told apart by their content ("-" is standard input), and puts all that it
/// holds into the phonebook, which is made when there is none; `settle` says what is refused and what
/// renamed. Groups made of categories are added to the phonebook's own of that name. Throws Error when the
/// file cannot be read or the phonebook not written; the phonebook is then as it was. SIGINT, SIGTERM and
/// SIGHUP are held back while saving: the changes are taken back, and then the signal does what it does.
ImportReport importFile(const PhonebookPlace& place, const std::string& file, const ImportOptions& options);

/// The report in lines: on the first what came in, then what else there is to know; what was renamed in a
/// hundred lines at most and one more.
std::string importSummary(const ImportReport& report);
/// One line for each refusal, "FILE:LINE: reason", a hundred at most.
std::vector<std::string> refusalLines(const ImportReport& report);
/// Why nothing was written: one line.
std::string importFailure(const ImportReport& report);

} // namespace quelm

#endif
