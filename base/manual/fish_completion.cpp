// Writes a completion for fish: a function that finds the command on the line, and a rule for each command
// and option. SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/completions.h"
#include "base/manual/shell_names.h"

#include <set>
#include <string_view>

namespace quelm {
namespace {

/// fish reads backslashes in single quotes.
std::string fishQuoted(const std::string& text)
{
    std::string escaped;
    for (const char character : text)
        escaped += character == '\\' ? std::string("\\\\") : std::string(1, character);
    return singleQuoted(escaped, "\\'");
}

std::string finder(const CommandView& program)
{
    std::set<std::string> withValue;
    std::string branches;
    forEachCommand(program, [&](const CommandView& command) {
        for (const auto& option : allOptionsOf(command))
            if (option.kind != ValueKind::none)
                withValue.insert(option.names.begin(), option.names.end());
        for (const auto& below : command.commands)
            branches += " " + fishQuoted(wordsOf(below)) + " " + fishQuoted("help " + wordsOf(below));
    });
    const auto name = "_" + functionName(program);
    std::string text =
        "# The command on the line, without options and other words.\nfunction " + name +
        "_command\n    set -l words (commandline -opc)\n    set -e words[1]\n    set -l command\n"
        "    set -l expecting no\n    for word in $words\n        if test $expecting = yes\n"
        "            set expecting no\n            continue\n        end\n        switch $word\n"
        "            case --\n                break\n";
    if (!withValue.empty()) {
        text += "            case";
        for (const auto& option : withValue)
            text += " " + option;
        text += "\n                set expecting yes\n";
    }
    text += "            case '-*'\n            case '*'\n";
    if (!branches.empty())
        text += "                if contains -- (string join ' ' $command $word)" + branches +
                "\n                    set -a command $word\n                end\n";
    return text + "        end\n    end\n    echo (string join ' ' $command)\nend\n\nfunction " + name +
           "_at\n    test \"$argv\" = (" + name + "_command)\nend\n\n";
}

std::string valuePart(const OptionView& option)
{
    switch (option.kind) {
    case ValueKind::none:
        return "";
    case ValueKind::choice:
        return " -x -a " + fishQuoted(spaced(option.choices));
    case ValueKind::file:
        return " -r -F";
    case ValueKind::folder:
        return " -x -a '(__fish_complete_directories)'";
    case ValueKind::host:
        return " -x -a '(__fish_print_hostnames)'";
    case ValueKind::user:
        return " -x -a '(__fish_complete_users)'";
    case ValueKind::queue:
        return " -x -a '(lpstat -e 2>/dev/null)'";
    case ValueKind::command:
    case ValueKind::text:
        break;
    }
    return " -x";
}

std::string namePart(const OptionView& option)
{
    std::string part;
    for (const auto& name : option.names)
        if (name.starts_with("--"))
            part += " -l " + name.substr(2);
        else
            part += (name.size() == 2 ? " -s " : " -o ") + name.substr(1);
    return part;
}

/// How a rule begins that holds behind these words.
std::string ruleAt(const CommandView& program, const std::string& words)
{
    return "complete -c " + program.name + " -n " + fishQuoted("_" + functionName(program) + "_at " + words);
}

/// The commands behind `help`, which stand there as they stand elsewhere.
std::string topicRules(const CommandView& program, const CommandView& help)
{
    std::string text;
    forEachCommand(program, [&](const CommandView& above) {
        const auto words = wordsOf(help) + (wordsOf(above).empty() ? "" : " ") + wordsOf(above);
        for (const auto& topic : above.commands)
            text += ruleAt(program, words) + " -f -a " + topic.name + " -d " + fishQuoted(topic.description) +
                    "\n";
    });
    return text;
}

std::string rules(const CommandView& program, const CommandView& command)
{
    const auto start = ruleAt(program, wordsOf(command));
    std::string text;
    for (const auto& below : command.commands)
        text += start + " -f -a " + below.name + " -d " + fishQuoted(below.description) + "\n";
    for (const auto& option : allOptionsOf(command))
        text += start + namePart(option) + valuePart(option) + " -d " + fishQuoted(option.description) + "\n";
    for (const auto& place : command.places) {
        if (place.kind == ValueKind::file)
            text += start + " -F\n";
        if (place.kind == ValueKind::command)
            text += topicRules(program, command);
    }
    return text;
}

} // namespace

std::string fishCompletion(const CommandView& program)
{
    std::string text = "# Completes " + program.name + " in fish.\n\n" + finder(program) + "complete -c " +
                       program.name + " -f\n";
    forEachCommand(program, [&](const CommandView& command) { text += rules(program, command); });
    return text;
}

} // namespace quelm
