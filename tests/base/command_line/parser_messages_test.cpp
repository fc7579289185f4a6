// What is said about arguments that cannot be understood.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/parser_messages.h"

#include <gtest/gtest.h>

#include <vector>

namespace quelm {
namespace {

/// The reason for which a program refuses arguments.
std::string reason(std::vector<std::string> lastFirst)
{
    CLI::App program("Tries.", "quelm-try");
    program.require_subcommand(1);
    std::string text;
    std::string other;
    auto* first = program.add_option("--note", text)->type_name("TEXT");
    program.add_option("--other", other)->type_name("TEXT")->excludes(first);
    auto* print = program.add_subcommand("print")->fallthrough();
    print->add_option("FILE", text)->required()->type_name("");
    program.add_subcommand("show");
    try {
        program.parse(std::move(lastFirst));
    } catch (const CLI::ParseError& error) {
        return reasonOf(error, program);
    }
    return "";
}

TEST(ParserMessages, SayWhatIsMissing)
{
    EXPECT_EQ(reason({"print"}), "FILE is missing");
    EXPECT_EQ(reason({}), "the command is missing: one of print|show");
}

TEST(ParserMessages, SayWhatIsTooMuch)
{
    EXPECT_EQ(reason({"b.ps", "a.ps", "print"}), "\"b.ps\" is one word too many");
    EXPECT_EQ(reason({"--fast", "a.ps", "print"}), "there is no option --fast here");
}

TEST(ParserMessages, SayWhatAnOptionNeedsAndWhatItExcludes)
{
    EXPECT_EQ(reason({"--note"}), "--note needs a value: TEXT");
    EXPECT_EQ(reason({"a.ps", "print", "y", "--other", "x", "--note"}), "--note stands beside --other");
}

} // namespace
} // namespace quelm
