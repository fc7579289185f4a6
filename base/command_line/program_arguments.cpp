// What programs tell CLI11 of themselves, and how it is handed their arguments.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/program_arguments.h"

#include "base/command_line/parser_messages.h"
#include "base/error.h"
#include "base/translation.h"
#include "base/version.h"

#include <algorithm>
#include <vector>

namespace quelm {
namespace {

/// The headings of the help.
void translateHeadings(CLI::App& program)
{
    const auto formatter = program.get_formatter();
    for (const char* heading :
         {forTranslation("Usage"), forTranslation("Positionals"), forTranslation("Options"),
          forTranslation("OPTIONS"), forTranslation("Subcommands"), forTranslation("SUBCOMMAND"),
          forTranslation("REQUIRED"), forTranslation("Excludes")})
        formatter->label(heading, translated(heading));
}

/// The arguments as CLI11 takes them, last first. It reads the next argument as the value of
/// "--note=": the empty value is made an argument of its own.
std::vector<std::string> argumentsLastFirst(int argc, const char* const* argv)
{
    std::vector<std::string> arguments;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        options = options && argument != "--";
        const bool emptyValue = options && argument.size() > 3 && argument.starts_with("--") &&
                                argument.find('=') == argument.size() - 1;
        if (emptyValue)
            argument.pop_back();
        arguments.push_back(argument);
        if (emptyValue)
            arguments.emplace_back();
    }
    std::ranges::reverse(arguments);
    return arguments;
}

} // namespace

void beginProgram(CLI::App& program)
{
    program.set_version_flag("--version", programAndVersion(program.get_name()),
                             localized("Print the version and exit"));
    program.set_help_flag("--help", localized("Print this help and exit"));
    program.failure_message(CLI::FailureMessage::simple);
    translateHeadings(program);
}

std::string parseArguments(CLI::App& program, int argc, const char* const* argv)
{
    try {
        program.parse(argumentsLastFirst(argc, argv));
    } catch (const CLI::CallForHelp&) {
        return program.help();
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        // Translators: what is wrong, the program.
        throw UsageError(localized("%s; see %s --help", reasonOf(error, program), program.get_name()));
    }
    return {};
}

} // namespace quelm
