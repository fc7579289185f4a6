// Keeps the texts of commands in their program's formatter.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_texts.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace quelm {

namespace {

/// CLI11 hands a program's formatter to all its commands: the place for texts that it has none for.
class TextKeeper : public CLI::Formatter {
public:
    std::map<const CLI::App*, HelpTexts> texts;
};

} // namespace

void keepHelp(CLI::App& program) { program.formatter(std::make_shared<TextKeeper>()); }

HelpTexts& keptHelp(CLI::App& command)
{
    const auto formatter = std::dynamic_pointer_cast<TextKeeper>(command.get_formatter());
    if (formatter == nullptr)
        throw std::logic_error("help for a program that was not begun");
    return formatter->texts[&command];
}

void addHelp(CLI::App& command, HelpTexts texts) { keptHelp(command) = std::move(texts); }

const HelpTexts& helpTextsOf(const CLI::App& command)
{
    static const HelpTexts none;
    const auto formatter = std::dynamic_pointer_cast<TextKeeper>(command.get_formatter());
    if (formatter == nullptr)
        return none;
    const auto found = formatter->texts.find(&command);
    return found == formatter->texts.end() ? none : found->second;
}

OptionSection::OptionSection(CLI::App& command, const std::string& heading)
    : command_(command), former_(command.option_defaults()->get_group())
{
    command_.option_defaults()->group(heading);
}

OptionSection::~OptionSection()
{
    try {
        command_.option_defaults()->group(former_);
    } catch (const std::exception&) {
        // The heading was taken once, and is taken again.
        std::terminate();
    }
}

CLI::App& commandAt(CLI::App& program, const std::string& path)
{
    CLI::App* command = &program;
    std::istringstream words(path);
    for (std::string word; words >> word;) {
        const auto named =
            command->get_subcommands([&word](CLI::App* below) { return below->get_name() == word; });
        if (named.empty())
            throw std::out_of_range("no command " + path);
        command = named.front();
    }
    return *command;
}

} // namespace quelm
