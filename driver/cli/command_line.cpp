// The commands and options that CLI11 is told of.
#include "driver/cli/command_line.h"

#include "driver/core/error.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace quelm {
namespace {

void addDriverOptions(CLI::App& program, CommandLine& line)
{
    const auto add = [&program](const char* name, std::string& value, const char* type,
                                const char* description) {
        program
            .add_option_function<std::string>(
                name,
                [name, &value](const std::string& given) {
                    if (given.empty())
                        throw CLI::ValidationError(name, "is empty");
                    value = given;
                },
                description)
            ->type_name(type)
            ->take_last();
    };
    add("--home", line.driver.home, "DIR", "Installation folder: the component, icon/ and db/");
    add("--user", line.driver.user, "NAME", "Work as this user");
    add("--component", line.driver.component, "FILE", "The component to load");
    add("--config", line.config, "FILE", "Configuration file of the driver");
    add("--now", line.driver.now, "YYYY-MM-DDTHH:MM", "Stop the clock at this time");
}

/// The first line of a message of CLI11; what follows repeats it.
std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

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

} // namespace

CommandLine parseCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    CLI::App program("Sends documents as faxes through the LAN fax component.", "quelm-driver");
    program.set_version_flag("--version", "quelm-driver " QUELM_DRIVER_VERSION, "Print the version and exit");
    program.set_help_flag("--help", "Print this help and exit");
    program.require_subcommand(0, 1);
    program.failure_message(CLI::FailureMessage::simple);
    addDriverOptions(program, line);

    auto* fax = program.add_subcommand("fax", "Write a document as a fax job");
    fax->add_option("DOCUMENT", line.document, "PostScript or PDF file")->required()->type_name("");
    addJobOptions(*fax, line.job);

    auto* attributes = program.add_subcommand("attributes", "Write the attribute lines of a fax job alone");
    addJobOptions(*attributes, line.job);

    auto* script = program.add_subcommand("script", "Carry out the user actions of a script");
    script->add_option("FILE", line.script, "Script, one action a line; - is standard input")
        ->required()
        ->type_name("");

    auto* phonebook = program.add_subcommand("phonebook", "Look at a phonebook or change it");
    addPhonebookActions(*phonebook, line.phonebook);

    for (auto* command : {fax, attributes, script, phonebook})
        command->fallthrough()->footer("The options that quelm-driver --help lists may stand here, too.");
    try {
        program.parse(argumentsLastFirst(argc, argv));
    } catch (const CLI::CallForHelp&) {
        line.information = program.help();
    } catch (const CLI::CallForVersion& version) {
        line.information = std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        throw UsageError(firstLine(error.what()) + "; see quelm-driver --help");
    }
    for (const auto& [command, name] : {std::pair{fax, Command::fax},
                                        {attributes, Command::attributes},
                                        {script, Command::script},
                                        {phonebook, Command::phonebook}}) {
        if (command->parsed())
            line.command = name;
    }
    return line;
}

} // namespace quelm
