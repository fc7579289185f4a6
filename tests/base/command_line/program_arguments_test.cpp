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

TEST_F(ProgramArguments, ARefusalIsOneLineThatNamesTheProgramsHelp)
{
    const auto line = refusal({"print"});
    EXPECT_THAT(line, HasSubstr("; see quelm-try --help"));
    EXPECT_EQ(line.find('\n'), std::string::npos);
}

} // namespace
} // namespace quelm
