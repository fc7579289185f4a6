// Names and quoting for shells.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/shell_names.h"

#include <algorithm>

namespace quelm {

std::string functionName(const CommandView& program)
{
    std::string name = "_" + program.name;
    std::ranges::replace(name, '-', '_');
    return name;
}

std::string wordsOf(const CommandView& command)
{
    const auto blank = command.path.find(' ');
    return blank == std::string::npos ? "" : command.path.substr(blank + 1);
}

std::vector<OptionView> allOptionsOf(const CommandView& command)
{
    auto options = command.options;
    options.insert(options.end(), command.inherited.begin(), command.inherited.end());
    return options;
}

void forEachCommand(const CommandView& command, const std::function<void(const CommandView&)>& visit)
{
    visit(command);
    for (const auto& below : command.commands)
        forEachCommand(below, visit);
}

std::string spaced(const std::vector<std::string>& words)
{
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string singleQuoted(const std::string& text, const std::string& quote)
{
    std::string quoted = "'";
    for (const char character : text)
        quoted += character == '\'' ? quote : std::string(1, character);
    return quoted + "'";
}

} // namespace quelm
