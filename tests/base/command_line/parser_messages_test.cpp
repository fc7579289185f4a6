// What is said about arguments that cannot be understood.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/parser_messages.h"

#include "base/error.h"
#include "tests/base/command_line/tried_program.h"
#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace quelm {
namespace {

std::string refusal(const std::vector<const char*>& arguments)
{
    test::TriedProgram program;
    program.app.add_option_function<std::string>("--size", [](const std::string& given) {
        if (given == "bad")
            throw CLI::ValidationError("--size", "is bad");
        throw UnknownWord("--size", given, "small|large");
    });
    return test::failureLine<UsageError>([&] { static_cast<void>(program.parse(arguments)); });
}

TEST(ParserMessages, SayWhatIsMissing)
{
    EXPECT_EQ(refusal({"print"}), "FILE is missing; see quelm-try print --help");
    EXPECT_EQ(refusal({"book"}), "book needs one of list|add; see quelm-try book --help");
}

TEST(ParserMessages, SayThatAProgramNeedsACommand)
{
    CLI::App program("Tries.", "quelm-try");
    beginProgram(program);
    program.require_subcommand(1);
    program.add_subcommand("print");
    program.add_subcommand("show");
    addHelpCommand(program);
    const char* alone = "quelm-try";
    EXPECT_EQ(test::failureLine<UsageError>([&] { static_cast<void>(parseArguments(program, 1, &alone)); }),
              "the command is missing: one of print|show; see quelm-try --help");
    const std::vector<const char*> mistyped{"quelm-try", "shwo", "x"};
    EXPECT_EQ(test::failureLine<UsageError>(
                  [&] { static_cast<void>(parseArguments(program, 3, mistyped.data())); }),
              "\"shwo\" is none of print|show; did you mean show?");
}

TEST(ParserMessages, SayWhatIsTooMuch)
{
    EXPECT_EQ(refusal({"book", "list", "a", "b"}),
              "\"b\" is one word too many; see quelm-try book list --help");
    EXPECT_EQ(refusal({"print", "a.ps", "--quick"}),
              "there is no option --quick here; see quelm-try print --help");
    EXPECT_EQ(refusal({"a.ps", "b.ps"}), "\"b.ps\" is one word too many; see quelm-try --help");
    EXPECT_EQ(refusal({"print", "a.ps", "-x"}), "there is no option -x here; see quelm-try print --help");
}

TEST(ParserMessages, AskWhetherSomethingNearWasMeant)
{
    EXPECT_EQ(refusal({"print", "a.ps", "--nots", "x"}),
              "there is no option --nots here; did you mean --note?");
    EXPECT_EQ(refusal({"print", "--nots=x"}), "there is no option --nots here; did you mean --note?");
    EXPECT_EQ(refusal({"print", "a.ps", "--hoem", "x"}),
              "there is no option --hoem here; did you mean --home?");
    EXPECT_EQ(refusal({"pirnt", "a.ps"}), "there is no command \"pirnt\"; did you mean print?");
    EXPECT_EQ(refusal({"pirnt", "a.ps", "--fast"}), "there is no command \"pirnt\"; did you mean print?");
    EXPECT_EQ(refusal({"book", "lits"}), "\"lits\" is none of list|add; did you mean list?");
    EXPECT_EQ(refusal({"--size", "larg"}), "--size: \"larg\" is none of small|large; did you mean large?");
}

TEST(ParserMessages, NameTheHelpWhereNothingIsNear)
{
    EXPECT_EQ(refusal({"send", "a.ps"}), "there is no command \"send\"; see quelm-try --help");
    EXPECT_EQ(refusal({"book", "destroy"}), "\"destroy\" is none of list|add; see quelm-try book --help");
    EXPECT_EQ(refusal({"--size", "9"}), "--size: \"9\" is none of small|large; see quelm-try --help");
    EXPECT_EQ(refusal({"--size", "bad"}), "--size: is bad; see quelm-try --help");
}

TEST(ParserMessages, SayWhatAnOptionNeedsAndWhatItExcludes)
{
    EXPECT_EQ(refusal({"print", "a.ps", "--note"}), "--note needs a value: TEXT; see quelm-try print --help");
    EXPECT_EQ(refusal({"print", "a.ps", "-n"}), "--note needs a value: TEXT; see quelm-try print --help");
    EXPECT_EQ(refusal({"print", "a", "--slow", "--fast"}),
              "--fast stands beside --slow; see quelm-try print --help");
    EXPECT_EQ(refusal({"print", "a", "--watch", "x"}), "--watch needs --fast; see quelm-try print --help");
    EXPECT_EQ(refusal({"print", "a", "--fast=yes"}), "--fast takes no value; see quelm-try print --help");
    EXPECT_EQ(refusal({"print", "a", "--note", "b", "--note", "c"}),
              "--note stands more than once; see quelm-try print --help");
}

TEST(ParserMessages, AreWordedForWhatAProgramFindsItself)
{
    test::TriedProgram program;
    static_cast<void>(program.parse({"book", "list"}));
    EXPECT_EQ(refusalOf("is late", program.app), "is late; see quelm-try book list --help");
    EXPECT_EQ(nearestCommand("bok", program.app), "book");
}

} // namespace
} // namespace quelm
