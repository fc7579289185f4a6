// Words CLI11's errors anew.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/parser_messages.h"

#include "base/translation.h"

#include <string_view>
#include <vector>

namespace quelm {
namespace {

/// The command that the user gave, the subcommand of a command in its place.
const CLI::App& givenCommand(const CLI::App& program)
{
    const CLI::App* command = &program;
    for (auto given = command->get_subcommands(); !given.empty(); given = command->get_subcommands())
        command = given.front();
    return *command;
}

/// The option of that name as the command takes it: its own, or one of the commands above it.
const CLI::Option* optionNamed(const CLI::App& program, const std::string& name)
{
    for (const CLI::App* app = &givenCommand(program); app != nullptr; app = app->get_parent())
        if (const CLI::Option* option = app->get_option_no_throw(name))
            return option;
    return nullptr;
}

std::string whatIsMissing(const CLI::App& command)
{
    for (const CLI::Option* option : command.get_options())
        if (option->get_required() && option->empty())
            // Translators: an option, or a place of the command line such as DOCUMENT.
            return localized("%s is missing", option->get_name());
    std::string possible;
    for (const CLI::App* subcommand : command.get_subcommands([](const CLI::App*) { return true; }))
        possible += (possible.empty() ? "" : "|") + subcommand->get_name();
    if (command.get_parent() == nullptr)
        // Translators: the commands of a program: "read|serve".
        return localized("the command is missing: one of %s", possible);
    // Translators: a command and the words that may follow it: "phonebook", "list|show|add".
    return localized("%s needs one of %s", command.get_name(), possible);
}

std::string whatIsTooMuch(const std::vector<std::string>& rest, const std::string& message)
{
    if (rest.empty())
        return message;
    const std::string& first = rest.front();
    return first.size() > 1 && first.starts_with('-') ? localized("there is no option %s here", first)
                                                      : localized("\"%s\" is one word too many", first);
}

} // namespace

std::string reasonOf(const CLI::ParseError& error, const CLI::App& program)
{
    // Only the first line: what follows repeats it.
    const std::string all = error.what();
    std::string message = all.substr(0, all.find('\n'));
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
        return whatIsMissing(givenCommand(program));
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
        return whatIsTooMuch(program.remaining(true), message);
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        if (const CLI::Option* option = optionNamed(program, message.substr(0, message.find(':'))))
            // Translators: an option and what stands behind it: "--note", "TEXT".
            return localized("%s needs a value: %s", option->get_name(), option->get_type_name());
    }
    if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr) {
        constexpr std::string_view middle = " excludes ";
        if (const auto at = message.find(middle); at != std::string::npos)
            return localized("%s stands beside %s", message.substr(0, at),
                             message.substr(at + middle.size()));
    }
    return message;
}

} // namespace quelm
