// Words CLI11's errors anew.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/parser_messages.h"

#include "base/command_line/nearest_word.h"
#include "base/translation.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string_view>

namespace quelm {
namespace {

/// What is wrong, and how to go on.
struct Refusal {
    std::string reason;
    std::optional<std::string> meant; ///< what the user may have wanted to write
};

std::string pathOf(const CLI::App& command)
{
    return (command.get_parent() == nullptr ? "" : pathOf(*command.get_parent()) + " ") + command.get_name();
}

bool isOption(const std::string& word) { return word.size() > 1 && word.starts_with('-'); }

/// The option of that name as the command takes it: its own, or one of the commands above it.
const CLI::Option* optionNamed(const CLI::App& program, const std::string& name)
{
    for (const CLI::App* app = &givenCommand(program); app != nullptr; app = app->get_parent())
        if (const CLI::Option* option = app->get_option_no_throw(name))
            return option;
    return nullptr;
}

std::vector<std::string> commandNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::App* below : command.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(below->get_name());
    return names;
}

/// All long options that may stand behind a command.
std::vector<std::string> optionNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::App* app = &command; app != nullptr; app = app->get_parent())
        for (const CLI::Option* option : app->get_options())
            for (const auto& name : option->get_lnames())
                names.push_back("--" + name);
    return names;
}

/// The commands that may be given, apart from "help": "list|show".
std::string commandChoices(const CLI::App& command)
{
    std::string possible;
    for (const auto& name : commandNames(command))
        if (name != "help")
            possible += (possible.empty() ? "" : "|") + name;
    return possible;
}

/// A word that stands where a command was expected, which CLI11 left over or took for the program's place.
std::string wordInPlaceOfCommand(const CLI::App& program)
{
    for (const CLI::Option* option : program.get_options())
        if (option->get_positional() && !option->empty())
            return option->results().front();
    for (const auto& word : program.remaining(true))
        if (!isOption(word))
            return word;
    return "";
}

Refusal noCommand(const std::string& word, const CLI::App& command)
{
    return {localized("there is no command \"%s\"", word), nearestCommand(word, command)};
}

Refusal noOption(const std::string& given, const CLI::App& command)
{
    const auto name = given.substr(0, given.find('='));
    return {localized("there is no option %s here", name), nearestWord(name, optionNames(command))};
}

Refusal whatIsMissing(const CLI::App& program)
{
    const CLI::App& command = givenCommand(program);
    for (const auto& word : program.remaining(true))
        if (isOption(word) && word != "--")
            return noOption(word, command);
    for (const CLI::Option* option : command.get_options())
        if (option->get_required() && option->empty())
            // Translators: an option, or a place of the command line such as DOCUMENT.
            return {localized("%s is missing", option->get_name()), {}};
    const auto possible = commandChoices(command);
    if (const auto word = wordInPlaceOfCommand(program); !word.empty())
        // Translators: what was given, and what is possible: vcard3|vcard4|csv.
        return {localized("\"%s\" is none of %s", word, possible), nearestCommand(word, command)};
    if (command.get_parent() == nullptr)
        // Translators: the commands of a program: "read|serve".
        return {localized("the command is missing: one of %s", possible), {}};
    // Translators: a command and the words that may follow it: "phonebook", "list|show|add".
    return {localized("%s needs one of %s", command.get_name(), possible), {}};
}

Refusal whatIsTooMuch(const CLI::App& program, const std::string& message)
{
    const CLI::App& command = givenCommand(program);
    if (&command == &program && !commandNames(program).empty()) {
        const auto word = wordInPlaceOfCommand(program);
        if (!word.empty() && (word.find_first_of("./") == std::string::npos || nearestCommand(word, program)))
            return noCommand(word, program);
    }
    const auto rest = program.remaining(true);
    const auto first = std::ranges::find_if(rest, [](const std::string& word) { return word != "--"; });
    if (first == rest.end())
        return {message, {}};
    return isOption(*first) ? noOption(*first, command)
                            : Refusal{localized("\"%s\" is one word too many", *first), {}};
}

std::optional<Refusal> whatDoesNotMatch(const CLI::App& program, const std::string& message)
{
    constexpr std::string_view middle = " was given";
    if (const auto at = message.find(middle); at != std::string::npos) {
        const auto name = message.substr(0, at);
        // Translators: an option.
        return Refusal{localized("%s takes no value", (name.size() > 1 ? "--" : "-") + name), {}};
    }
    const CLI::Option* option = optionNamed(program, message.substr(0, message.find(':')));
    if (option == nullptr)
        return {};
    if (option->count() > 1)
        // Translators: an option.
        return Refusal{localized("%s stands more than once", option->get_name()), {}};
    // Translators: an option and what stands behind it: "--note", "TEXT".
    return Refusal{localized("%s needs a value: %s", option->get_name(), option->get_type_name()), {}};
}

/// The two options in "--a excludes --b".
std::optional<std::pair<std::string, std::string>> optionsAround(std::string_view middle,
                                                                 const std::string& message)
{
    const auto at = message.find(middle);
    if (at == std::string::npos)
        return {};
    return std::pair(message.substr(0, at), message.substr(at + middle.size()));
}

Refusal refusal(const CLI::ParseError& error, const CLI::App& program)
{
    const std::string all = error.what();
    if (const auto* word = dynamic_cast<const UnknownWord*>(&error))
        return {all, nearestWord(word->given(), word->possible())};
    if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr)
        return {all, {}};
    // Only the first line: what follows repeats it.
    const std::string message = all.substr(0, all.find('\n'));
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
        return whatIsMissing(program);
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
        return whatIsTooMuch(program, message);
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return whatDoesNotMatch(program, message).value_or(Refusal{message, {}});
    if (const auto both = optionsAround(" excludes ", message))
        return {localized("%s stands beside %s", both->first, both->second), {}};
    if (const auto both = optionsAround(" requires ", message))
        return {localized("%s needs %s", both->first, both->second), {}};
    return {message, {}};
}

std::string lineOf(const Refusal& refusal, const CLI::App& command)
{
    return refusalLine(refusal.reason, refusal.meant, pathOf(command));
}

std::vector<std::string> partedWords(const std::string& words)
{
    std::vector<std::string> parts;
    std::istringstream stream(words);
    for (std::string word; std::getline(stream, word, '|');)
        parts.push_back(word);
    return parts;
}

} // namespace

UnknownWord::UnknownWord(const std::string& option, const std::string& given, const std::string& words)
    // Translators: what was given, and what is possible: vcard3|vcard4|csv.
    : CLI::ValidationError(option, localized("\"%s\" is none of %s", given, words)), given_(given),
      possible_(partedWords(words))
{
}

const CLI::App& givenCommand(const CLI::App& program)
{
    const CLI::App* command = &program;
    for (auto given = command->get_subcommands(); !given.empty(); given = command->get_subcommands())
        command = given.front();
    return *command;
}

std::string refusalLine(const std::string& reason, const std::optional<std::string>& meant,
                        const std::string& path)
{
    if (meant)
        // Translators: what is wrong; what may have been meant.
        return localized("%s; did you mean %s?", reason, *meant);
    // Translators: what is wrong; a program and perhaps its command.
    return localized("%s; see %s --help", reason, path);
}

std::optional<std::string> nearestCommand(const std::string& word, const CLI::App& command)
{
    return nearestWord(word, commandNames(command));
}

std::string refusalOf(const CLI::ParseError& error, const CLI::App& program)
{
    return lineOf(refusal(error, program), givenCommand(program));
}

std::optional<std::string> mistypedCommand(const CLI::App& program)
{
    if (!program.get_subcommands().empty())
        return {};
    const auto refused = noCommand(wordInPlaceOfCommand(program), program);
    return refused.meant ? std::optional(lineOf(refused, program)) : std::nullopt;
}

std::string refusalOf(const std::string& reason, const CLI::App& program)
{
    return lineOf({reason, {}}, givenCommand(program));
}

std::string unknownCommand(const std::string& word, const CLI::App& command)
{
    return lineOf(noCommand(word, command), command);
}

} // namespace quelm
