// Hands CLI11's calls for help to our own, and keeps the texts that CLI11 has no place for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_HELP_FORMATTER_H
#define BASE_COMMAND_LINE_HELP_FORMATTER_H

#include "base/command_line/help_texts.h"

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace quelm {

/// The formatter of a program, which all its commands share.
class HelpFormatter : public CLI::FormatterBase {
public:
    std::string make_help(const CLI::App* command, std::string name, CLI::AppFormatMode mode) const override;

    std::map<const CLI::App*, HelpTexts> texts;
};

} // namespace quelm

#endif
