// The command `phonebook` on the command line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_PHONEBOOK_OPTIONS_H
#define DRIVER_CLI_PHONEBOOK_OPTIONS_H

#include "driver/phonebook/actions.h"
#include "driver/phonebook/import.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quelm {

enum class PhonebookAction { none, list, show, add, addGroup, remove, import, exportTo };

/// What the user asked for. Texts are UTF-8 and unchecked.
struct PhonebookRequest {
    PhonebookAction action = PhonebookAction::none;
    std::string phonebook; ///< of --file or --shared; empty for the user's own
    std::string name;      ///< of an entry or group
    PhonebookEntry entry;  ///< of `add`, its name included
    std::vector<std::string> members;
    bool replace = false;
    bool asCsv = false;               ///< of `list`
    std::string file;                 ///< of `import` and `export`; "-" is standard input or output
    std::optional<FileFormat> format; ///< of `export`; nothing: by the file's name
    ImportOptions import;             ///< of `import`, whose `dryRun` is not used
    bool dryRun = false;              ///< say what would be done, and do nothing
};

/// Adds the actions below the command `phonebook`; parsing fills `request`, which must outlive it.
void addPhonebookActions(CLI::App& command, PhonebookRequest& request);

} // namespace quelm

#endif
