// What is wrong with a command line, in the user's language.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_PARSER_MESSAGES_H
#define BASE_COMMAND_LINE_PARSER_MESSAGES_H

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// A word that is none of those which an option takes. Callbacks of options throw it.
class UnknownWord : public CLI::ValidationError {
public:
    /// `words` is "dsc|pjl", as the help shows it.
    UnknownWord(const std::string& option, const std::string& given, const std::string& words);

    /// The words among which the one that was meant may be.
    const std::vector<std::string>& possible() const { return possible_; }
    const std::string& given() const { return given_; }

private:
    std::string given_;
    std::vector<std::string> possible_;
};

/// The command that the user gave, the subcommand of a command in its place; the program when none was given.
const CLI::App& givenCommand(const CLI::App& program);

/// The line, without the program's name, for a program that could not parse its arguments: what is wrong, and
/// behind it what the user may have meant or where the help is. CLI11's own messages are English; what it
/// throws and the options as parsed so far tell what is meant.
std::string refusalOf(const CLI::ParseError& error, const CLI::App& program);

/// The same for what the program itself finds wrong.
std::string refusalOf(const std::string& reason, const CLI::App& program);

/// The same for a word that is no command below `command`.
std::string unknownCommand(const std::string& word, const CLI::App& command);

/// What is wrong, with what may have been meant or, without that, whose help to see: "quelm-driver fax".
std::string refusalLine(const std::string& reason, const std::optional<std::string>& meant,
                        const std::string& path);

/// The command below `command` that the word is much like; nothing when none is.
std::optional<std::string> nearestCommand(const std::string& word, const CLI::App& command);

/// The same for a program with commands to which none was given, but a word that is much like one; nothing
/// otherwise.
std::optional<std::string> mistypedCommand(const CLI::App& program);

} // namespace quelm

#endif
