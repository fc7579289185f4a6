// A program's commands and options as those who describe them see them: help, manual pages, completions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_COMMAND_VIEW_H
#define BASE_COMMAND_LINE_COMMAND_VIEW_H

#include "base/command_line/help_texts.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quelm {

/// What a value is, as far as a shell can help with it.
enum class ValueKind {
    none,    ///< there is no value: a flag
    text,    ///< anything
    choice,  ///< one of a few words
    file,    ///< the path of a file
    folder,  ///< the path of a folder
    host,    ///< a computer on the network
    user,    ///< a user of this computer
    queue,   ///< a print queue
    command, ///< a command of the program
};

/// An option, or a place of the command line for a word.
struct OptionView {
    std::vector<std::string> names; ///< "-h" and "--help"; "DOCUMENT" for a place
    std::string value;       ///< what stands for its value: "FILE", "dsc|pjl"; empty for flags and places
    std::string description; ///< in the user's language
    std::string section;     ///< heading that it stands under, in the user's language
    bool isPlace = false;
    bool isRequired = false;
    bool isRepeatable = false;         ///< of places: takes several words
    std::vector<std::string> excludes; ///< options that it cannot stand beside
    std::vector<std::string> needs;    ///< options that it needs beside it
    ValueKind kind = ValueKind::none;
    std::vector<std::string> choices; ///< of ValueKind::choice
};

/// A program or one of its commands.
struct CommandView {
    std::string name;        ///< "import"
    std::string path;        ///< with what stands ahead of it: "quelm-driver phonebook import"
    std::string description; ///< in the user's language
    HelpTexts texts;
    std::vector<OptionView> places;    ///< in their order
    std::vector<OptionView> options;   ///< its own, in the order in which they were added
    std::vector<OptionView> inherited; ///< those of the commands above it that may stand behind it, too
    std::vector<CommandView> commands; ///< below it
    bool needsCommand = false;         ///< one of these must be given
};

/// What is known of a command and all below it.
CommandView viewOf(const CLI::App& command);

/// What stands behind the path in a command's summary, a text for each way to call it: "[OPTIONS] DOCUMENT".
std::vector<std::string> usagesOf(const CommandView& command);

/// An option as it stands in a list: "-h, --help", "--pdl dsc|pjl", "DOCUMENT".
std::string labelOf(const OptionView& option);

/// Its description, with what it needs and excludes behind it.
std::string fullDescriptionOf(const OptionView& option);

/// The sections of a command's own options, each once, in their order, those without a section of their own
/// last.
std::vector<std::string> sectionsOf(const CommandView& command);

} // namespace quelm

#endif
