// The program's command line, taken apart but not yet acted upon.
#ifndef DRIVER_CLI_COMMAND_LINE_H
#define DRIVER_CLI_COMMAND_LINE_H

#include "driver/cli/job_options.h"
#include "driver/cli/phonebook_options.h"
#include "driver/core/driver.h"

#include <string>

namespace quelm {

enum class Command { none, fax, attributes, script, phonebook };

struct CommandLine {
    Command command = Command::none;
    DriverOptions driver;       ///< the options that every command takes; `now` is checked
    std::string config;         ///< configuration file, empty for the user's own
    JobOptions job;             ///< of `fax` and `attributes`
    std::string document;       ///< of `fax`
    std::string script;         ///< of `script`: a file, or "-" for standard input
    PhonebookRequest phonebook; ///< of `phonebook`
    /// Not empty when the user asked for help or the version: print it and do nothing else.
    std::string information;
};

/// Takes `argv` apart. Throws UsageError with one line when it cannot be understood.
CommandLine parseCommandLine(int argc, const char* const* argv);

} // namespace quelm

#endif
