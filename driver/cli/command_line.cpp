// The commands and options that CLI11 is told of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_line.h"

#include "base/command_line/program_arguments.h"
#include "base/error.h"
#include "base/translation.h"

#include <CLI/CLI.hpp>

#include <string>
#include <utility>

namespace quelm {
namespace {

void addDriverOptions(CLI::App& program, CommandLine& line)
{
    const auto add = [&program](const char* name, std::string& value, const char* type,
                                const std::string& description) {
        program
            .add_option_function<std::string>(
                name,
                [name, &value](const std::string& given) {
                    if (given.empty())
                        throw CLI::ValidationError(name, localized("is empty"));
                    value = given;
                },
                description)
            ->type_name(type)
            ->take_last();
    };
    add("--home", line.driver.home, "DIR", localized("Installation folder: the component, icon/ and db/"));
    add("--user", line.driver.user, "NAME", localized("Work as this user"));
    add("--component", line.driver.component, "FILE", localized("The component to load"));
    add("--config", line.config, "FILE", localized("Configuration file of the driver"));
    add("--now", line.driver.now, "YYYY-MM-DDTHH:MM", localized("Stop the clock at this time"));
    add("--device-snmp", line.driver.device.address, "HOST[:PORT]",
        localized("The device to ask over SNMP, which has the directory's address"));
}

/// How a command answers. Not for the desktop, which answers in windows.
void addAnswerOptions(CLI::App& program, CommandLine& line)
{
    program.add_flag("--json", line.json, localized("Answer in JSON, for other programs"));
    program.add_flag("--quiet", line.quiet, localized("Say only results and failures, and ask nothing"));
}

/// The commands look for these where their own options are, too.
void handOnAnswerOptions(CommandLine& line)
{
    line.job.asJson = line.json;
    line.outbox.asJson = line.json;
    line.outbox.quiet = line.quiet;
}

} // namespace

CommandLine parseCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    CLI::App program(localized("Sends documents as faxes through the LAN fax component."), "quelm-driver");
    beginProgram(program);
    program.require_subcommand(0, 1);
    addDriverOptions(program, line);
    addAnswerOptions(program, line);
    // A subcommand hands on what it does not know: a word too many ends up here.
    std::string desktopDocument;
    program
        .add_option("DOCUMENT", desktopDocument,
                    localized("Without a command: document to open on the desktop"))
        ->type_name("");

    auto* fax = program.add_subcommand("fax", localized("Write a document as a fax job"));
    auto* faxDocument = fax->add_option("DOCUMENT", line.document, localized("PostScript or PDF file"))
                            ->required()
                            ->type_name("");
    addJobOptions(*fax, line.job);
    addCoverPreviewOption(*fax, line.job, *faxDocument);
    addHandoverOptions(*fax, line.job);

    auto* attributes =
        program.add_subcommand("attributes", localized("Write the attribute lines of a fax job alone"));
    addJobOptions(*attributes, line.job);

    auto* script = program.add_subcommand("script", localized("Carry out the user actions of a script"));
    script->add_option("FILE", line.script, localized("Script, one action a line; - is standard input"))
        ->required()
        ->type_name("");

    auto* phonebook = program.add_subcommand("phonebook", localized("Look at a phonebook or change it"));
    addPhonebookActions(*phonebook, line.phonebook);

    auto* device = program.add_subcommand("device", localized("Ask the device"));
    device->require_subcommand(1);
    device->add_subcommand("info", localized("Show the directory settings that the device reports"))
        ->fallthrough();

    auto* directory = program.add_subcommand("directory", localized("Look into the device's directory"));
    directory->require_subcommand(1);
    auto* search =
        directory->add_subcommand("search", localized("List the people whose surname begins with a text"))
            ->fallthrough();
    search->add_option("PREFIX", line.directoryPrefix, localized("The beginning of \"SURNAME, GIVEN NAME\""))
        ->required()
        ->type_name("");

    auto* outbox =
        program.add_subcommand("outbox", localized("Look at jobs that wait or were sent, and send them"));
    addOutboxActions(*outbox, line.outbox);

    for (auto* command : {fax, attributes, script, phonebook, device, directory, outbox})
        command->fallthrough()->footer(
            localized("The options that quelm-driver --help lists may stand here, too."));
    line.information = parseArguments(program, argc, argv);
    for (const auto& [command, name] : {std::pair{fax, Command::fax},
                                        {attributes, Command::attributes},
                                        {script, Command::script},
                                        {phonebook, Command::phonebook},
                                        {device, Command::deviceInfo},
                                        {directory, Command::directorySearch},
                                        {outbox, Command::outbox}})
        if (command->parsed())
            line.command = name;
    line.hasDocument = line.command != Command::fax || faxDocument->count() > 0;
    if (line.command != Command::none && !desktopDocument.empty())
        throw UsageError(localized("\"%s\" is one word too many; see quelm-driver --help", desktopDocument));
    if (line.command == Command::none) {
        if (line.json || line.quiet)
            throw UsageError(
                localized("%s needs a command; see quelm-driver --help", line.json ? "--json" : "--quiet"));
        line.document = desktopDocument;
    }
    handOnAnswerOptions(line);
    return line;
}

CommandLine parseDesktopCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    CLI::App program(localized("Sends documents as faxes through the LAN fax component."), "quelm-desktop");
    beginProgram(program);
    addDriverOptions(program, line);
    program.add_option("DOCUMENT", line.document, localized("PostScript or PDF file to open"))->type_name("");
    line.information = parseArguments(program, argc, argv);
    return line;
}

} // namespace quelm
