// What the help of a command says beside its options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_HELP_TEXTS_H
#define BASE_COMMAND_LINE_HELP_TEXTS_H

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quelm {

/// Something that is written as it stands, and what it does. The text is in the user's language.
struct ExplainedWords {
    std::string words;
    std::string text;
};

/// What the help and the manual page of a command show. Texts are whole sentences in the user's language.
struct HelpTexts {
    std::vector<std::string> details;         ///< paragraphs behind the description
    std::vector<ExplainedWords> examples;     ///< whole command lines, as one types them into a shell
    std::vector<ExplainedWords> foreignWords; ///< options that the program takes without CLI11: "-FP FILE"
    std::vector<ExplainedWords> environment;  ///< of a program: variables, for the manual pages
    std::vector<ExplainedWords> files;        ///< of a program: paths, for the manual pages
    std::vector<std::string> related;         ///< of a program: pages to see, "quelm-device(1)"
};

/// Lets a program without commands keep the texts of those that it is given later.
void keepHelp(CLI::App& program);

/// Gives a command its texts. Its program has gone through `beginProgram` ahead of that.
void addHelp(CLI::App& command, HelpTexts texts);

/// The texts of a command, to be added to; they stay where they are as long as the program is there.
HelpTexts& keptHelp(CLI::App& command);

/// The texts of a command; empty ones when it has none. Valid as long as the program is, until the next
/// `addHelp`.
const HelpTexts& helpTextsOf(const CLI::App& command);

/// As long as it lives, options that a command is given stand in a section of its help.
class OptionSection {
public:
    /// `heading` is in the user's language.
    OptionSection(CLI::App& command, const std::string& heading);
    ~OptionSection();
    OptionSection(const OptionSection&) = delete;
    OptionSection& operator=(const OptionSection&) = delete;

private:
    CLI::App& command_;
    std::string former_;
};

/// The command below `program` that the words of `path` lead to: "phonebook import". Throws std::out_of_range
/// when there is none: a mistake in the program.
CLI::App& commandAt(CLI::App& program, const std::string& path);

} // namespace quelm

#endif
