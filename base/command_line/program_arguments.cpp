// What programs tell CLI11 of themselves, and how it is handed their arguments.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/program_arguments.h"

#include "base/command_line/command_view.h"
#include "base/command_line/help_page.h"
#include "base/command_line/help_texts.h"
#include "base/command_line/parser_messages.h"
#include "base/error.h"
#include "base/translation.h"
#include "base/version.h"

#include <algorithm>
#include <vector>

namespace quelm {
namespace {

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

/// True when the user wrote --help behind the command or one above it.
bool wantsHelp(const CLI::App& command)
{
    for (const CLI::App* app = &command; app != nullptr; app = app->get_parent())
        if (app->get_help_ptr() != nullptr && app->get_help_ptr()->count() > 0)
            return true;
    return false;
}

const CLI::App* helpCommand(const CLI::App& program)
{
    const auto found =
        program.get_subcommands([](const CLI::App* command) { return command->get_name() == "help"; });
    return found.empty() ? nullptr : found.front();
}

/// The help of the command that the words behind `help` name.
std::string askedHelp(const CLI::App& program, const CLI::App& help)
{
    const CLI::App* command = &program;
    for (const auto& word : help.get_option("COMMAND")->results()) {
        const auto named =
            command->get_subcommands([&word](const CLI::App* below) { return below->get_name() == word; });
        if (named.empty())
            throw UsageError(unknownCommand(word, *command));
        command = named.front();
    }
    return helpPage(viewOf(*command));
}

} // namespace

void beginProgram(CLI::App& program)
{
    keepHelp(program);
    program.option_defaults()->disable_flag_override();
    program.set_version_flag("-V,--version", programAndVersion(program.get_name()),
                             localized("Print the version and exit"));
    program.set_help_flag("-h,--help", localized("Print this help and exit"));
    program.failure_message(CLI::FailureMessage::simple);
}

void addHelpCommand(CLI::App& program)
{
    auto* help = program.add_subcommand("help", localized("Show the help of a command"))->fallthrough();
    help->add_option_function<std::vector<std::string>>(
            "COMMAND", [](const std::vector<std::string>&) {}, localized("The command, in one or more words"))
        ->type_name("");
}

std::string parseArguments(CLI::App& program, int argc, const char* const* argv)
{
    try {
        program.parse(argumentsLastFirst(argc, argv));
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        const CLI::App& command = givenCommand(program);
        if (!wantsHelp(command))
            throw UsageError(refusalOf(error, program));
        if (const auto mistyped = mistypedCommand(program))
            throw UsageError(*mistyped);
        // Whoever asks for help is not told first what else is wrong.
        return helpPage(viewOf(command));
    }
    if (const CLI::App* help = helpCommand(program); help != nullptr && help->parsed())
        return askedHelp(program, *help);
    return {};
}

} // namespace quelm
