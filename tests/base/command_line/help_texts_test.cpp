// The texts that are kept for commands.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_texts.h"

#include "tests/base/command_line/tried_program.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quelm {
namespace {

TEST(HelpTexts, AreKeptForEachCommand)
{
    test::TriedProgram program;
    addHelp(commandAt(program.app, "book add"), {{"Adds."}, {}, {}, {}, {}, {}});
    EXPECT_EQ(helpTextsOf(commandAt(program.app, "book add")).details.front(), "Adds.");
    EXPECT_EQ(helpTextsOf(commandAt(program.app, "print")).details.front(), "All of them come out.");
    EXPECT_TRUE(helpTextsOf(commandAt(program.app, "book list")).details.empty());
    EXPECT_TRUE(helpTextsOf(program.app).examples.empty());
}

TEST(HelpTexts, AreForProgramsThatWereBegun)
{
    CLI::App program("Tries.", "quelm-try");
    EXPECT_THROW(addHelp(program, {}), std::logic_error);
    EXPECT_TRUE(helpTextsOf(program).details.empty());
}

TEST(HelpTexts, ACommandIsFoundByItsPath)
{
    test::TriedProgram program;
    EXPECT_EQ(&commandAt(program.app, ""), &program.app);
    EXPECT_EQ(commandAt(program.app, "book list").get_name(), "list");
    EXPECT_THROW(commandAt(program.app, "book remove"), std::out_of_range);
}

} // namespace
} // namespace quelm
