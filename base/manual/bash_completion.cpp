// Writes a completion for bash: tables of the program as functions, and one function that walks over what was
// typed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/completions.h"
#include "base/manual/shell_names.h"

#include <string_view>

namespace quelm {
namespace {

/// What the walking function does with it is in `walker`.
std::string kindWord(const OptionView& option)
{
    switch (option.kind) {
    case ValueKind::none:
        return "";
    case ValueKind::choice:
        return "words " + spaced(option.choices);
    case ValueKind::file:
        return "file";
    case ValueKind::folder:
        return "folder";
    case ValueKind::host:
        return "host";
    case ValueKind::user:
        return "user";
    case ValueKind::queue:
        return "queue";
    case ValueKind::command:
        return "command";
    case ValueKind::text:
        break;
    }
    return "text";
}

/// A function that prints a line for each command: `content` gives it.
std::string table(const CommandView& program, const std::string& name,
                  const std::function<std::string(const CommandView&)>& content)
{
    std::string lines = functionName(program) + "_" + name + "()\n{\n    case $1 in\n";
    forEachCommand(program, [&](const CommandView& command) {
        lines += "    " + singleQuoted(wordsOf(command)) + ") printf '%s\\n' " +
                 singleQuoted(content(command)) + " ;;\n";
    });
    return lines + "    esac\n}\n\n";
}

std::string commandNames(const CommandView& command)
{
    std::vector<std::string> names;
    for (const auto& below : command.commands)
        names.push_back(below.name);
    return spaced(names);
}

std::string optionNames(const CommandView& command)
{
    std::vector<std::string> names;
    for (const auto& option : allOptionsOf(command))
        names.insert(names.end(), option.names.begin(), option.names.end());
    return spaced(names);
}

std::string placeKind(const CommandView& command)
{
    return command.places.empty() ? "text" : kindWord(command.places.back());
}

/// A function that prints what kind of value an option has; nothing for a flag. $1 is the command, $2 the
/// option.
std::string valueTable(const CommandView& program)
{
    std::string lines = functionName(program) + "_value()\n{\n    case \"$1 $2\" in\n";
    forEachCommand(program, [&lines](const CommandView& command) {
        for (const auto& option : allOptionsOf(command)) {
            if (option.kind == ValueKind::none)
                continue;
            std::string patterns;
            for (const auto& name : option.names)
                patterns += (patterns.empty() ? "" : " | ") + singleQuoted(wordsOf(command) + " " + name);
            lines += "    " + patterns + ") printf '%s\\n' " + singleQuoted(kindWord(option)) + " ;;\n";
        }
    });
    return lines + "    esac\n}\n\n";
}

/// NAME stands for the function's own name. bash parts words at "=", which then is a word of its own.
constexpr std::string_view walker = R"sh(NAME()
{
    local current=${COMP_WORDS[COMP_CWORD]} command= topic= option= plain= word kind i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ $option ]]; then
            [[ $word == = ]] || option=
        elif [[ $plain ]]; then
            continue
        elif [[ $word == -- ]]; then
            plain=yes
        elif [[ $word == -* ]]; then
            [[ $(NAME_value "$command" "$word") ]] && option=$word
        elif [[ $command == help ]]; then
            topic=${topic:+$topic }$word
        elif [[ " $(NAME_commands "$command") " == *" $word "* ]]; then
            command=${command:+$command }$word
        fi
    done
    [[ $current == = ]] && current=
    if [[ $option ]]; then
        kind=$(NAME_value "$command" "$option")
    elif [[ ! $plain && $current == -* ]]; then
        kind="words $(NAME_options "$command")"
    else
        kind=$(NAME_place "$command")
        word=$(NAME_commands "$command")
        [[ $word ]] && mapfile -t COMPREPLY < <(compgen -W "$word" -- "$current")
    fi
    case $kind in
    words\ *) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -W "${kind#words }" -- "$current") ;;
    command) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -W "$(NAME_commands "$topic")" -- "$current") ;;
    file)
        compopt -o filenames 2>/dev/null
        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current")
        ;;
    folder)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        ;;
    host) mapfile -t COMPREPLY < <(compgen -A hostname -- "$current") ;;
    user) mapfile -t COMPREPLY < <(compgen -u -- "$current") ;;
    queue) mapfile -t COMPREPLY < <(compgen -W "$(lpstat -e 2>/dev/null)" -- "$current") ;;
    esac
}
)sh";

std::string replaced(std::string_view text, std::string_view what, const std::string& with)
{
    std::string out;
    for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
        out += std::string(text.substr(0, at)) + with;
        text.remove_prefix(at + what.size());
    }
    return out + std::string(text);
}

} // namespace

std::string bashCompletion(const CommandView& program)
{
    return "# Completes " + program.name + " in bash.\n" + table(program, "commands", commandNames) +
           table(program, "options", optionNames) + table(program, "place", placeKind) + valueTable(program) +
           replaced(walker, "NAME", functionName(program)) + "complete -F " + functionName(program) + " " +
           program.name + "\n";
}

} // namespace quelm
