// Keeps the texts of commands in their program's formatter.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_texts.h"

#include "base/command_line/command_view.h"
#include "base/command_line/help_formatter.h"
#include "base/command_line/help_page.h"

#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace quelm {

std::string HelpFormatter::make_help(const CLI::App* command, std::string, CLI::AppFormatMode) const
{
    return helpPage(viewOf(*command));
}

void addHelp(CLI::App& command, HelpTexts texts)
{
    const auto formatter = std::dynamic_pointer_cast<HelpFormatter>(command.get_formatter());
    if (formatter == nullptr)
        throw std::logic_error("help for a program that was not begun");
    formatter->texts[&command] = std::move(texts);
}

const HelpTexts& helpTextsOf(const CLI::App& command)
{
    static const HelpTexts none;
    const auto formatter = std::dynamic_pointer_cast<HelpFormatter>(command.get_formatter());
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

OptionSection::~OptionSection() { command_.option_defaults()->group(former_); }

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
