// What is wrong with a command line, in the user's language.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_PARSER_MESSAGES_H
#define BASE_COMMAND_LINE_PARSER_MESSAGES_H

#include <CLI/CLI.hpp>

#include <string>

namespace quelm {

/// The reason why `program` could not parse its arguments, as part of a line. CLI11's own messages are
/// English; what it throws and the options as parsed so far tell what is meant.
std::string reasonOf(const CLI::ParseError& error, const CLI::App& program);

} // namespace quelm

#endif
