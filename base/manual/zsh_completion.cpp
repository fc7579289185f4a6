// Writes a completion for zsh: a function for each command, which hands its options to _arguments.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/completions.h"
#include "base/manual/shell_names.h"

#include <algorithm>

namespace quelm {
namespace {

/// A text within what _arguments is told of an option: some characters part it there.
std::string specText(const std::string& text)
{
    std::string out;
    for (const char character : text) {
        if (character == '[' || character == ']' || character == ':' || character == '\\')
            out += '\\';
        out += character;
    }
    return out;
}

/// What completes a value.
std::string action(const OptionView& option, const std::string& helpAction)
{
    switch (option.kind) {
    case ValueKind::choice:
        return "(" + spaced(option.choices) + ")";
    case ValueKind::file:
        return "_files";
    case ValueKind::folder:
        return "_directories";
    case ValueKind::host:
        return "_hosts";
    case ValueKind::user:
        return "_users";
    case ValueKind::queue:
        return "( ${(f)\"$(lpstat -e 2>/dev/null)\"} )";
    case ValueKind::command:
        return helpAction;
    case ValueKind::none:
    case ValueKind::text:
        break;
    }
    return " ";
}

/// An option as _arguments takes it, in quotation marks. All names of an option exclude each other, unless it
/// may be repeated.
std::string optionSpec(const OptionView& option)
{
    std::string exclusive = option.isRepeatable ? "*" : "(" + spaced(option.names) + ")";
    std::string specs;
    for (const auto& name : option.names) {
        const bool isLong = name.starts_with("--");
        std::string spec = exclusive + name;
        if (option.kind != ValueKind::none)
            spec += isLong ? "=" : name.size() == 2 ? "+" : "";
        spec += "[" + specText(option.description) + "]";
        if (option.kind != ValueKind::none)
            spec += ":" + specText(option.value) + ":" + action(option, "");
        specs += "    " + singleQuoted(spec) + " \\\n";
    }
    return specs;
}

std::string zshName(const CommandView& program, const CommandView& command)
{
    std::string words = wordsOf(command);
    std::ranges::replace(words, ' ', '_');
    return "_" + program.name + (words.empty() ? "" : "_" + words);
}

/// The commands below one, as _describe takes them.
std::string described(const CommandView& command)
{
    std::string items;
    for (const auto& below : command.commands)
        items += "    " + singleQuoted(specText(below.name) + ":" + specText(below.description)) + "\n";
    return items;
}

std::string placeSpecs(const CommandView& command)
{
    std::string specs;
    int number = 0;
    for (const auto& place : command.places) {
        ++number;
        const auto where = place.isRepeatable ? std::string("*") : std::to_string(number);
        const auto position = where + (place.isRequired || place.isRepeatable ? ":" : "::");
        specs += "    " +
                 singleQuoted(position + specText(place.names.front()) + ":" + action(place, "->topics")) +
                 " \\\n";
    }
    return specs;
}

std::string commandFunction(const CommandView& program, const CommandView& command)
{
    const auto name = zshName(program, command);
    std::string text = name + "()\n{\n  local curcontext=\"$curcontext\" state state_descr line\n"
                              "  typeset -A opt_args\n  _arguments -C -s -S ";
    // What stands behind a command is the command's affair.
    text += command.commands.empty() ? "\\\n" : "-A '-*' \\\n";
    for (const auto& option : allOptionsOf(command))
        text += optionSpec(option);
    if (command.commands.empty()) {
        text += placeSpecs(command);
        text.erase(text.size() - 3);
        text += "\n";
        if (!command.places.empty() && command.places.front().kind == ValueKind::command)
            text += "  [[ $state == topics ]] && " + zshName(program, program) + "_topics\n";
        return text + "}\n\n";
    }
    text += "    '1:COMMAND:->command' \\\n    '*:: :->rest'\n  case $state in\n  command)\n    local -a "
            "commands=(\n" +
            described(command) + "    )\n    _describe -t commands COMMAND commands\n";
    for (const auto& place : command.places)
        if (place.kind == ValueKind::file)
            text += "    _files\n";
    text += "    ;;\n  rest)\n    curcontext=\"${curcontext%:*}-$line[1]:\"\n    case $line[1] in\n";
    for (const auto& below : command.commands)
        text += "    " + below.name + ") " + zshName(program, below) + " ;;\n";
    return text + "    esac\n    ;;\n  esac\n}\n\n";
}

/// Completes what `help` is asked for: $words begins with "help".
std::string topicsFunction(const CommandView& program)
{
    std::string text = zshName(program, program) + "_topics()\n{\n  local -a topics\n"
                                                   "  case \"${words[2,CURRENT-1]}\" in\n";
    forEachCommand(program, [&text](const CommandView& command) {
        if (!command.commands.empty())
            text += "  " + singleQuoted(wordsOf(command)) + ") topics=(\n" + described(command) + "  ) ;;\n";
    });
    return text + "  esac\n  _describe -t commands COMMAND topics\n}\n\n";
}

} // namespace

std::string zshCompletion(const CommandView& program)
{
    std::string text = "#compdef " + program.name + "\n# Completes " + program.name + " in zsh.\n\n";
    forEachCommand(program, [&](const CommandView& command) { text += commandFunction(program, command); });
    if (!program.commands.empty())
        text += topicsFunction(program);
    return text + "[[ $funcstack[1] == " + zshName(program, program) + " ]] && " + zshName(program, program) +
           " \"$@\"\n";
}

} // namespace quelm
