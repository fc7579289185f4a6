// The program's command line, taken apart but not yet acted upon.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_COMMAND_LINE_H
#define DRIVER_CLI_COMMAND_LINE_H

#include "driver/cli/job/job_options.h"
#include "driver/cli/outbox_options.h"
#include "driver/cli/phonebook_options.h"
#include "driver/core/driver.h"

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace quelm {

enum class Command {
    none,
    fax,
    attributes,
    script,
    phonebook,
    deviceInfo,
    directorySearch,
    outbox,
    configShow,
    configCheck
};

struct CommandLine {
    Command command = Command::none;
    DriverOptions driver; ///< the options that every command takes, unchecked
    std::string config;   ///< configuration file, empty for the user's own
    bool json = false;    ///< results as JSON, for other programs
    bool quiet = false;   ///< nothing beside results and failures, and no question
    JobOptions job;       ///< of `fax` and `attributes`
    std::string document; ///< of `fax`; without a command, what the desktop is to open, perhaps nothing
    std::string desktopDocument; ///< the word that stands in no command's place, while the line is parsed
    std::optional<std::string> commandMeant; ///< that which the document's name is much like
    bool hasDocument = true;     ///< false where `fax` only previews a cover page and was given no document
    std::string script;          ///< of `script`: a file, or "-" for standard input
    bool scriptList = false;     ///< say what scripts can name, and carry out none
    bool scriptDryRun = false;   ///< only read the script
    std::string directoryPrefix; ///< of `directory search`: how the names begin
    PhonebookRequest phonebook;  ///< of `phonebook`
    OutboxRequest outbox;        ///< of `outbox`
    std::string checkedFile;     ///< of `config check`: the one to look at; empty for those that are in use
    /// Not empty when the user asked for help or the version: print it and do nothing else.
    std::string information;
};

/// The commands and options of quelm-driver, for those who parse with them and those who describe them.
/// Parsing fills `line`, which must outlive the program.
std::shared_ptr<CLI::App> driverProgram(CommandLine& line);

/// Those of quelm-desktop, likewise.
std::shared_ptr<CLI::App> desktopProgram(CommandLine& line);

/// Takes `argv` apart. Throws UsageError with one line when it cannot be understood.
CommandLine parseCommandLine(int argc, const char* const* argv);

/// The same for quelm-desktop, which has no commands: the options that every command takes, and
/// perhaps a document.
CommandLine parseDesktopCommandLine(int argc, const char* const* argv);

} // namespace quelm

#endif
