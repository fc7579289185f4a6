// How the help of a command is laid out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_page.h"

#include "base/terminal/columns.h"
#include "tests/base/command_line/tried_program.h"

#include <gmock/gmock.h>

#include <sstream>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(HelpPage, ShowsUsageListsAndExamples)
{
    test::TriedProgram program;
    EXPECT_EQ(helpPage(viewOf(program.app).commands.front()), R"(Usage: quelm-try print [OPTIONS] FILE...

Prints files

All of them come out.

Arguments:
  FILE             What to print

Paper:
  -n, --note TEXT  A note on it
  --pdl dsc|pjl    Its language

Speed:
  --fast           In a hurry (not with --slow)
  --slow           With care (not with --fast)
  --watch NAME     Who looks on (only with --fast)

Options:
  -h, --help       Print this help and exit

Options of quelm-try that may stand here, too: --version, --home

Examples:
  quelm-try print a.ps
      Prints a file.
)");
}

TEST(HelpPage, ShowsEachWayToCallAProgramAndItsCommands)
{
    test::TriedProgram program;
    const auto page = helpPage(viewOf(program.app));
    EXPECT_THAT(page, testing::StartsWith("Usage: quelm-try [OPTIONS] COMMAND\n"
                                          "       quelm-try [OPTIONS] [DOCUMENT]\n\nTries.\n"));
    EXPECT_THAT(
        page, HasSubstr("Commands:\n  print          Prints files\n  book           Looks into the book\n"));
    EXPECT_THAT(page, Not(HasSubstr("too:")));
}

TEST(HelpPage, KeepsWithinEightyColumnsInEveryScript)
{
    test::TriedProgram program;
    std::string longText;
    std::string wide;
    for (int i = 0; i < 40; ++i) {
        longText += "слово ";
        wide += "传真";
    }
    program.app.add_option("--long", program.text, longText);
    program.app.add_option("--wide", program.text, wide);
    program.app.add_option("--of-which-the-name-is-very-long", program.text, "Short")->type_name("TEXT");
    addHelp(program.app, {{longText, wide}, {{"quelm-try", longText}}, {}, {}, {}, {}});
    std::istringstream page(helpPage(viewOf(program.app)));
    for (std::string line; std::getline(page, line);) {
        EXPECT_LE(widthOf(line), 80U) << line;
        EXPECT_FALSE(line.ends_with(' ')) << line;
    }
}

TEST(HelpPage, PutsTheTextOfAWideLabelBelowIt)
{
    test::TriedProgram program;
    program.app.add_option("--of-which-the-name-is-very-long", program.text, "Short")->type_name("TEXT");
    EXPECT_THAT(helpPage(viewOf(program.app)),
                HasSubstr("  --of-which-the-name-is-very-long TEXT\n                 Short\n"));
}

} // namespace
} // namespace quelm
