// The commands of the program. Each acts on a parsed command line, and throws quelm::Error when it
// cannot be carried out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_COMMANDS_H
#define DRIVER_CLI_COMMANDS_H

#include "driver/cli/command_line.h"

namespace quelm {

/// Writes a document and its fax job as one print stream.
void runFaxCommand(const CommandLine& line);

/// Writes what the component writes for the job, one system call for each of its writes.
void runAttributesCommand(const CommandLine& line);

/// Looks at a phonebook or changes it; the component is not needed.
void runPhonebookCommand(const CommandLine& line);

/// Shows the directory settings that the device reports, on standard output: one line for each field
/// of the component's dialog.
void runDeviceInfoCommand(const CommandLine& line);

/// Lists the people of the device's directory whose names begin as asked, one a line, on standard output.
void runDirectoryCommand(const CommandLine& line);

/// Looks at the jobs that wait or were handed over, and does with them what the user asks for.
void runOutboxCommand(const CommandLine& line);

/// Shows what the configuration says, and where.
void runConfigShowCommand(const CommandLine& line);

/// Says everything that is wrong with the configuration.
void runConfigCheckCommand(const CommandLine& line);

/// Carries out a script, with its answers on standard output.
void runScriptCommand(const CommandLine& line);

} // namespace quelm

#endif
