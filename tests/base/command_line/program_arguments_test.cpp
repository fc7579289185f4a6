// How programs take their arguments.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/program_arguments.h"

#include "base/error.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// A program with an option, and a command with a place for a file.
class ProgramArguments : public testing::Test {
protected:
    ProgramArguments()
    {
        beginProgram(program);
        program.require_subcommand(0, 1);
        program.add_option("--note", note)->type_name("TEXT");
        program.add_subcommand("print")->add_option("FILE", file)->required()->type_name("");
    }

    std::string parse(const std::vector<const char*>& arguments)
    {
        std::vector<const char*> argv{"quelm-try"};
        argv.insert(argv.end(), arguments.begin(), arguments.end());
        return parseArguments(program, static_cast<int>(argv.size()), argv.data());
    }

    std::string refusal(const std::vector<const char*>& arguments)
    {
        return test::failureLine<UsageError>([&] { static_cast<void>(parse(arguments)); });
    }

    CLI::App program{"Tries.", "quelm-try"};
    std::string note = "none";
    std::string file;
};

TEST_F(ProgramArguments, NothingIsToBeToldAboutOrdinaryOnes)
{
    EXPECT_EQ(parse({"--note", "a", "print", "letter.ps"}), "");
    EXPECT_EQ(note, "a");
    EXPECT_EQ(file, "letter.ps");
}

TEST_F(ProgramArguments, AnEmptyValueMayStandBehindAnEqualsSign)
{
    EXPECT_EQ(parse({"--note=", "print", "letter.ps"}), "");
    EXPECT_EQ(note, "");
    EXPECT_EQ(file, "letter.ps");
}

TEST_F(ProgramArguments, BehindTwoDashesStandsNoOption)
{
    EXPECT_EQ(parse({"print", "--", "--note="}), "");
    EXPECT_EQ(note, "none");
    EXPECT_EQ(file, "--note=");
}

TEST_F(ProgramArguments, HelpAndVersionAreToldInsteadOfActing)
{
    EXPECT_THAT(parse({"--help"}), HasSubstr("Tries."));
    EXPECT_THAT(parse({"print", "--help"}), HasSubstr("FILE"));
    EXPECT_THAT(parse({"--version"}), StartsWith("quelm-try "));
}

TEST_F(ProgramArguments, HelpAndVersionHaveLetters)
{
    EXPECT_EQ(parse({"-h"}), parse({"--help"}));
    EXPECT_EQ(parse({"print", "-h"}), parse({"print", "--help"}));
    EXPECT_EQ(parse({"-V"}), parse({"--version"}));
}

TEST_F(ProgramArguments, TheCommandHelpShowsTheHelpOfOthers)
{
    addHelpCommand(program);
    EXPECT_EQ(parse({"help"}), parse({"--help"}));
    EXPECT_EQ(parse({"help", "print"}), parse({"print", "--help"}));
    EXPECT_EQ(parse({"help", "help"}), parse({"help", "--help"}));
    EXPECT_EQ(refusal({"help", "pirnt"}), "there is no command \"pirnt\"; did you mean print?");
    EXPECT_EQ(refusal({"help", "print", "more"}), "there is no command \"more\"; see quelm-try print --help");
    EXPECT_EQ(parse({"print", "help"}), "");
    EXPECT_EQ(file, "help");
}

TEST_F(ProgramArguments, WhoeverAsksForHelpIsNotToldWhatElseIsWrong)
{
    EXPECT_EQ(parse({"print", "--bogus", "--help"}), parse({"print", "--help"}));
    EXPECT_EQ(parse({"--help", "print"}), parse({"print", "--help"}));
    EXPECT_EQ(parse({"print", "a", "b", "-h"}), parse({"print", "--help"}));
}

TEST_F(ProgramArguments, ButThatTheCommandIsMistyped)
{
    program.add_option("DOCUMENT", note);
    EXPECT_EQ(refusal({"pirnt", "--help"}), "there is no command \"pirnt\"; did you mean print?");
    EXPECT_EQ(parse({"letter.ps", "--help"}), parse({"--help"}));
}

TEST_F(ProgramArguments, AWordThatLooksLikeANumberIsAWord)
{
    EXPECT_EQ(parse({"print", "-5"}), "");
    EXPECT_EQ(file, "-5");
    EXPECT_EQ(parse({"--note", "-5", "print", "-"}), "");
    EXPECT_EQ(note, "-5");
    EXPECT_EQ(file, "-");
}

TEST_F(ProgramArguments, AValueMayBeginWithADash)
{
    EXPECT_EQ(parse({"--note", "--help", "print", "a"}), "");
    EXPECT_EQ(note, "--help");
}

TEST_F(ProgramArguments, ARefusalIsOneLineThatNamesTheProgramsHelp)
{
    const auto line = refusal({"print"});
    EXPECT_THAT(line, HasSubstr("; see quelm-try print --help"));
    EXPECT_EQ(line.find('\n'), std::string::npos);
}

} // namespace
} // namespace quelm
