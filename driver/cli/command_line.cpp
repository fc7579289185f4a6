// The commands and options that CLI11 is told of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_line.h"

#include "base/command_line/parser_messages.h"
#include "base/command_line/program_arguments.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/cli/command_help.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

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

void parse(CLI::App& program, CommandLine& line, int argc, const char* const* argv)
{
    line.information = parseArguments(program, argc, argv);
    if (line.command != Command::none && !line.desktopDocument.empty())
        throw UsageError(refusalOf(localized("\"%s\" is one word too many", line.desktopDocument), program));
    if (line.command == Command::none && (line.json || line.quiet))
        throw UsageError(
            refusalOf(localized("%s needs a command", line.json ? "--json" : "--quiet"), program));
    if (line.command == Command::none) {
        line.document = line.desktopDocument;
        line.commandMeant = nearestCommand(line.document, program);
    }
    handOnAnswerOptions(line);
}

/// A command that the user may give; the options of the driver may stand behind it, too.
CLI::App& addCommand(CLI::App& program, CommandLine& line, const char* name, Command command,
                     const std::string& description)
{
    auto* added = program.add_subcommand(name, description)->fallthrough();
    added->callback([&line, command] { line.command = command; });
    return *added;
}

void addFax(CLI::App& program, CommandLine& line)
{
    auto& fax = addCommand(program, line, "fax", Command::fax, localized("Write a document as a fax job"));
    auto* document = fax.add_option("DOCUMENT", line.document, localized("PostScript or PDF file"))
                         ->required()
                         ->type_name("");
    addJobOptions(fax, line.job);
    addCoverPreviewOption(fax, line.job, *document);
    addHandoverOptions(fax, line.job);
    fax.callback([&line, document] {
        line.command = Command::fax;
        line.hasDocument = document->count() > 0;
        if (line.hasDocument && line.document.empty())
            throw CLI::ValidationError("DOCUMENT", localized("is empty"));
    });
}

void addScriptOptions(CLI::App& script, CommandLine& line)
{
    auto* file = script
                     .add_option_function<std::string>(
                         "FILE",
                         [&line](const std::string& given) {
                             if (given.empty())
                                 throw CLI::ValidationError("FILE", localized("is empty"));
                             line.script = given;
                         },
                         localized("Script, one action a line; - is standard input"))
                     ->required()
                     ->type_name("");
    auto* dryRun = script.add_flag("--dry-run", line.scriptDryRun,
                                   localized("Only read the script, and say what is wrong with it"));
    script
        .add_flag_callback(
            "--list",
            [&line, file] {
                line.scriptList = true;
                file->required(false);
            },
            localized("List the widgets and functions that scripts can name"))
        ->excludes(dryRun)
        ->excludes(file);
}

void addConfig(CLI::App& program, CommandLine& line)
{
    auto& config =
        *program.add_subcommand("config", localized("Look at the configuration files"))->fallthrough();
    config.require_subcommand(1);
    addCommand(config, line, "show", Command::configShow,
               localized("Show each value, and the file and line that gave it"));
    addCommand(config, line, "check", Command::configCheck,
               localized("Say everything that is wrong with them"))
        .add_option("FILE", line.checkedFile, localized("This file alone"))
        ->type_name("");
}

void addCommands(CLI::App& program, CommandLine& line)
{
    addFax(program, line);
    auto& attributes = addCommand(program, line, "attributes", Command::attributes,
                                  localized("Write the attribute lines of a fax job alone"));
    addJobOptions(attributes, line.job);

    auto& script = addCommand(program, line, "script", Command::script,
                              localized("Carry out the user actions of a script"));
    addScriptOptions(script, line);

    auto& phonebook = addCommand(program, line, "phonebook", Command::phonebook,
                                 localized("Look at a phonebook or change it"));
    addPhonebookActions(phonebook, line.phonebook);

    auto& device = addCommand(program, line, "device", Command::deviceInfo, localized("Ask the device"));
    device.require_subcommand(1);
    device.add_subcommand("info", localized("Show the directory settings that the device reports"))
        ->fallthrough();

    auto& directory = addCommand(program, line, "directory", Command::directorySearch,
                                 localized("Look into the device's directory"));
    directory.require_subcommand(1);
    auto* search =
        directory.add_subcommand("search", localized("List the people whose surname begins with a text"))
            ->fallthrough();
    search->add_option("PREFIX", line.directoryPrefix, localized("The beginning of \"SURNAME, GIVEN NAME\""))
        ->required()
        ->type_name("");

    auto& outbox = addCommand(program, line, "outbox", Command::outbox,
                              localized("Look at jobs that wait or were sent, and send them"));
    addOutboxActions(outbox, line.outbox);
    addConfig(program, line);
}

} // namespace

std::shared_ptr<CLI::App> driverProgram(CommandLine& line)
{
    auto program = std::make_shared<CLI::App>(
        localized("Sends documents as faxes through the LAN fax component."), "quelm-driver");
    beginProgram(*program);
    program->require_subcommand(0, 1);
    addDriverOptions(*program, line);
    addAnswerOptions(*program, line);
    // A subcommand hands on what it does not know: a word too many ends up here.
    program
        ->add_option("DOCUMENT", line.desktopDocument,
                     localized("Without a command: document to open on the desktop"))
        ->type_name("");
    addCommands(*program, line);
    addHelpCommand(*program);
    addDriverHelp(*program);
    return program;
}

std::shared_ptr<CLI::App> desktopProgram(CommandLine& line)
{
    auto program = std::make_shared<CLI::App>(
        localized("Sends documents as faxes through the LAN fax component."), "quelm-desktop");
    beginProgram(*program);
    addDriverOptions(*program, line);
    program->add_option("DOCUMENT", line.desktopDocument, localized("PostScript or PDF file to open"))
        ->type_name("");
    addDesktopHelp(*program);
    return program;
}

CommandLine parseCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    parse(*driverProgram(line), line, argc, argv);
    return line;
}

CommandLine parseDesktopCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    parse(*desktopProgram(line), line, argc, argv);
    return line;
}

} // namespace quelm
