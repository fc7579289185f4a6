// Reads commands and options out of CLI11, and words what is said of them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/command_view.h"

#include "base/translation.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <set>
#include <sstream>

namespace quelm {
namespace {

std::vector<std::string> partedAt(const std::string& text, char mark)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, mark);)
        parts.push_back(part);
    return parts;
}

std::string joined(const std::vector<std::string>& parts, const char* between)
{
    std::string text;
    for (const auto& part : parts)
        text += (text.empty() ? "" : between) + part;
    return text;
}

std::vector<std::string> namesOf(const CLI::Option& option)
{
    if (option.get_positional())
        return {option.get_name()};
    std::vector<std::string> names;
    for (const auto& letter : option.get_snames())
        names.push_back("-" + letter);
    for (const auto& word : option.get_lnames())
        names.push_back("--" + word);
    return names;
}

ValueKind kindOf(const OptionView& option)
{
    const auto& word = option.isPlace ? option.names.front() : option.value;
    if (word.empty())
        return ValueKind::none;
    if (word.find('|') != std::string::npos)
        return ValueKind::choice;
    if (word.starts_with("FILE") || word == "DOCUMENT" || word == "JOB" || word == "PHONEBOOK")
        return ValueKind::file;
    if (word == "DIR")
        return ValueKind::folder;
    if (word.starts_with("HOST"))
        return ValueKind::host;
    if (word == "COMMAND")
        return ValueKind::command;
    if (option.names.back() == "--user")
        return ValueKind::user;
    return option.names.back() == "--queue" ? ValueKind::queue : ValueKind::text;
}

/// The names of some of a command's options, in the command's order.
std::vector<std::string> namesAmong(const CLI::App& command, const std::set<CLI::Option*>& wanted)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        if (std::ranges::find(wanted, option) != wanted.end())
            names.push_back(namesOf(*option).back());
    return names;
}

OptionView optionView(const CLI::App& command, const CLI::Option& option)
{
    OptionView view;
    view.names = namesOf(option);
    view.isPlace = option.get_positional();
    view.value = view.isPlace || option.get_items_expected_max() == 0 ? "" : option.get_type_name();
    view.description = option.get_description();
    // CLI11's own word for options that were put into no section.
    view.section = option.get_group() == "Options" ? localized("Options") : option.get_group();
    view.isRequired = option.get_required();
    view.isRepeatable = option.get_items_expected_max() > 1;
    view.excludes = namesAmong(command, option.get_excludes());
    view.needs = namesAmong(command, option.get_needs());
    view.kind = kindOf(view);
    if (view.kind == ValueKind::choice)
        view.choices = partedAt(view.value, '|');
    return view;
}

OptionView foreignView(const ExplainedWords& words)
{
    OptionView view;
    const auto blank = words.words.find(' ');
    view.names = {words.words.substr(0, blank)};
    view.value = blank == std::string::npos ? "" : words.words.substr(blank + 1);
    view.description = words.text;
    view.section = localized("Options");
    view.kind = kindOf(view);
    return view;
}

std::string pathOf(const CLI::App& command)
{
    return (command.get_parent() == nullptr ? "" : pathOf(*command.get_parent()) + " ") + command.get_name();
}

bool isHidden(const CLI::Option& option) { return option.get_group().empty(); }

void addInherited(std::vector<OptionView>& inherited, const CLI::App& command)
{
    for (const CLI::App* app = &command; app->get_fallthrough() && app->get_parent() != nullptr;
         app = app->get_parent()) {
        const CLI::App& above = *app->get_parent();
        for (const CLI::Option* option : above.get_options())
            if (!option->get_positional() && !isHidden(*option) && option != above.get_help_ptr())
                inherited.push_back(optionView(above, *option));
    }
}

} // namespace

CommandView viewOf(const CLI::App& command)
{
    CommandView view;
    view.name = command.get_name();
    view.path = pathOf(command);
    view.description = command.get_description();
    view.texts = helpTextsOf(command);
    for (const auto& foreign : view.texts.foreignWords)
        view.options.push_back(foreignView(foreign));
    for (const CLI::Option* option : command.get_options())
        if (!isHidden(*option))
            (option->get_positional() ? view.places : view.options).push_back(optionView(command, *option));
    // What all commands have comes behind what is their own.
    std::stable_partition(view.options.begin(), view.options.end(), [](const OptionView& option) {
        return option.names.back() != "--help" && option.names.back() != "--version";
    });
    addInherited(view.inherited, command);
    for (const CLI::App* below : command.get_subcommands([](const CLI::App*) { return true; }))
        view.commands.push_back(viewOf(*below));
    view.needsCommand = command.get_require_subcommand_min() > 0;
    return view;
}

std::vector<std::string> usagesOf(const CommandView& command)
{
    // Translators: where options stand in the summary of a command; in brackets, as they may be left out.
    std::string words = localized("[OPTIONS]");
    for (const auto& option : command.options)
        if (option.isRequired)
            words = labelOf(option) + " " + words;
    std::vector<std::string> usages;
    if (!command.commands.empty())
        // Translators: where the command stands in the summary of a program.
        usages.push_back(words + " " + localized("COMMAND"));
    if (command.needsCommand)
        return usages;
    for (const auto& foreign : command.texts.foreignWords)
        usages.push_back(foreign.words);
    if (!command.texts.foreignWords.empty())
        return usages;
    for (const auto& place : command.places) {
        const auto name = place.names.front() + (place.isRepeatable ? "..." : "");
        words += " " + (place.isRequired ? name : "[" + name + "]");
    }
    usages.push_back(words);
    return usages;
}

std::string labelOf(const OptionView& option)
{
    return joined(option.names, ", ") + (option.value.empty() ? "" : " " + option.value);
}

std::string fullDescriptionOf(const OptionView& option)
{
    std::string text = option.description;
    const auto add = [&text](const std::string& remark) { text += " (" + remark + ")"; };
    if (option.isRequired && !option.isPlace)
        // Translators: behind the description of an option: it must be given.
        add(localized("required"));
    if (!option.needs.empty())
        // Translators: behind the description of an option: other options that must be given, too.
        add(localized("only with %s", joined(option.needs, ", ")));
    if (!option.excludes.empty())
        // Translators: behind the description of an option: others that must not be given, too.
        add(localized("not with %s", joined(option.excludes, ", ")));
    return text;
}

std::vector<std::string> sectionsOf(const CommandView& command)
{
    std::vector<std::string> sections;
    for (const auto& option : command.options)
        if (std::ranges::find(sections, option.section) == sections.end())
            sections.push_back(option.section);
    // What most commands have comes behind what is their own.
    std::stable_partition(sections.begin(), sections.end(),
                          [](const std::string& section) { return section != localized("Options"); });
    return sections;
}

} // namespace quelm
