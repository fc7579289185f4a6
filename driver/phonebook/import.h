// Brings the entries and groups of a file into a phonebook: all of them, or none.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_IMPORT_H
#define DRIVER_PHONEBOOK_IMPORT_H

#include "driver/phonebook/contacts.h"
#include "driver/phonebook/phonebook.h"

#include <functional>
#include <string>
#include <vector>

namespace quelm {

struct ImportOptions {
    bool skipBad = false; ///< import what can be used, and leave the rest
    std::function<void(std::size_t done, std::size_t total)> progress; ///< may be empty
};

/// How an import went. `file` is the name that messages have for it.
struct ImportReport {
    std::string file;
    std::size_t added = 0;
    std::size_t merged = 0; ///< took the place of one of the same name
    std::size_t withoutNumber = 0;
    std::size_t mailboxes = 0;
    std::vector<Refusal> refused; ///< by line
    /// What to tell the user of groups' members that no entry stands for, in a hundred lines at most and one
    /// more.
    std::vector<std::string> strayMembers;
    bool written = false; ///< false when something was refused: then the phonebook is as it was
};

/// Reads a CSV or vCard file, told apart by their content ("-" is standard input), and puts all that it holds
/// into the phonebook, which is made when there is none. A name that the file gives twice with different
/// numbers or members is refused the second time. Throws Error when the file cannot be read or the
/// phonebook not written; the phonebook is then as it was. SIGINT, SIGTERM and SIGHUP are held back while
/// saving: the changes are taken back, and then the signal does what it does.
ImportReport importFile(const PhonebookPlace& place, const std::string& file, const ImportOptions& options);

/// The report in lines: on the first what came in, then what else there is to know.
std::string importSummary(const ImportReport& report);
/// One line for each refusal, "FILE:LINE: reason", a hundred at most.
std::vector<std::string> refusalLines(const ImportReport& report);
/// Why nothing was written: one line.
std::string importFailure(const ImportReport& report);

} // namespace quelm

#endif
