// The commands and options that CLI11 is told of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_line.h"

#include "base/error.h"
#include "base/translation.h"
#include "base/version.h"
#include "driver/cli/parser_messages.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace quelm {
namespace {

/// The headings of the help, which the commands inherit.
void translateHeadings(CLI::App& program)
{
    const auto formatter = program.get_formatter();
    for (const char* heading :
         {forTranslation("Usage"), forTranslation("Positionals"), forTranslation("Options"),
          forTranslation("OPTIONS"), forTranslation("Subcommands"), forTranslation("SUBCOMMAND"),
          forTranslation("REQUIRED"), forTranslation("Excludes")})
        formatter->label(heading, translated(heading));
}

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

/// The arguments as CLI11 takes them, last first. It reads the next argument as the value of
/// "--note=": the empty value is made an argument of its own.
std::vector<std::string> argumentsLastFirst(int argc, const char* const* argv)
{
    std::vector<std::string> arguments;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        options = options && argument != "--";
        const bool emptyValue = options && argument.size() > 3 && argument.starts_with("--") &&
                                argument.find('=') == argument.size() - 1;
        if (emptyValue)
            argument.pop_back();
        arguments.push_back(argument);
        if (emptyValue)
            arguments.emplace_back();
    }
    std::ranges::reverse(arguments);
    return arguments;
}

/// Parses with CLI11, and says in `line` what the user asked to be told.
void parse(CLI::App& program, int argc, const char* const* argv, CommandLine& line)
{
    try {
        program.parse(argumentsLastFirst(argc, argv));
    } catch (const CLI::CallForHelp&) {
        line.information = program.help();
    } catch (const CLI::CallForVersion& version) {
        line.information = std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        // Translators: what is wrong, the program.
        throw UsageError(localized("%s; see %s --help", reasonOf(error, program), program.get_name()));
    }
}

} // namespace

CommandLine parseCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    CLI::App program(localized("Sends documents as faxes through the LAN fax component."), "quelm-driver");
    program.set_version_flag("--version", programAndVersion("quelm-driver"),
                             localized("Print the version and exit"));
    program.set_help_flag("--help", localized("Print this help and exit"));
    program.require_subcommand(0, 1);
    program.failure_message(CLI::FailureMessage::simple);
    translateHeadings(program);
    addDriverOptions(program, line);
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
    parse(program, argc, argv, line);
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
    if (line.command == Command::none)
        line.document = desktopDocument;
    return line;
}

CommandLine parseDesktopCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    CLI::App program(localized("Sends documents as faxes through the LAN fax component."), "quelm-desktop");
    program.set_version_flag("--version", programAndVersion("quelm-desktop"),
                             localized("Print the version and exit"));
    program.set_help_flag("--help", localized("Print this help and exit"));
    program.failure_message(CLI::FailureMessage::simple);
    translateHeadings(program);
    addDriverOptions(program, line);
    program.add_option("DOCUMENT", line.document, localized("PostScript or PDF file to open"))->type_name("");
    parse(program, argc, argv, line);
    return line;
}

} // namespace quelm
