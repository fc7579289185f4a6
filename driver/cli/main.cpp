// The program quelm-driver: takes the command line, runs one command, and tells how it ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/file_io.h"
#include "base/log.h"
#include "base/program_end.h"
#include "base/standard_output.h"
#include "driver/cli/command_line.h"
#include "driver/cli/commands.h"
#include "driver/cli/desktop_command.h"

namespace {

/// `argv` is what `line` was taken from.
void run(const quelm::CommandLine& line, char** argv)
{
    if (!line.information.empty())
        return quelm::writeAnswer(line.information);
    quelm::setQuiet(line.quiet);
    switch (line.command) {
    case quelm::Command::fax:
        return quelm::runFaxCommand(line);
    case quelm::Command::attributes:
        return quelm::runAttributesCommand(line);
    case quelm::Command::script:
        return quelm::runScriptCommand(line);
    case quelm::Command::deviceInfo:
        return quelm::runDeviceInfoCommand(line);
    case quelm::Command::directorySearch:
        return quelm::runDirectoryCommand(line);
    case quelm::Command::phonebook:
        return quelm::runPhonebookCommand(line);
    case quelm::Command::outbox:
        return quelm::runOutboxCommand(line);
    case quelm::Command::configShow:
        return quelm::runConfigShowCommand(line);
    case quelm::Command::configCheck:
        return quelm::runConfigCheckCommand(line);
    case quelm::Command::none:
        break;
    }
    quelm::becomeDesktop(line, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const quelm::WriteSignalsIgnored ignored;
    return quelm::exitStatusOf("quelm-driver", [&] {
        quelm::withJsonFailure(quelm::asksForJson(argc, argv),
                               [&] { run(quelm::parseCommandLine(argc, argv), argv); });
    });
}
