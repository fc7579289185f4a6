// Names and quoting for shells.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/shell_names.h"

#include "tests/base/command_line/tried_program.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

TEST(ShellNames, AreMadeFromPrograms)
{
    test::TriedProgram program;
    const auto view = viewOf(program.app);
    EXPECT_EQ(functionName(view), "_quelm_try");
    EXPECT_EQ(wordsOf(view), "");
    std::vector<std::string> words;
    forEachCommand(view, [&words](const CommandView& command) { words.push_back(wordsOf(command)); });
    EXPECT_THAT(words, testing::ElementsAre("", "print", "book", "book list", "book add", "help"));
    EXPECT_EQ(allOptionsOf(view.commands.front()).size(),
              view.commands.front().options.size() + view.commands.front().inherited.size());
}

TEST(ShellNames, QuoteEveryText)
{
    EXPECT_EQ(singleQuoted("the user's $(own) \"file\""), "'the user'\\''s $(own) \"file\"'");
    EXPECT_EQ(singleQuoted("it's", "\\'"), "'it\\'s'");
    EXPECT_EQ(spaced({"a", "b"}), "a b");
    EXPECT_EQ(spaced({}), "");
}

} // namespace
} // namespace quelm
