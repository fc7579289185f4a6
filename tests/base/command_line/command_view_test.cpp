// What is known of a program's commands and options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/command_view.h"

#include "tests/base/command_line/tried_program.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;

class CommandViews : public testing::Test {
protected:
    test::TriedProgram program;
    CommandView whole = viewOf(program.app);
    CommandView print = whole.commands.front();

    const OptionView& option(const std::string& name) const
    {
        for (const auto& one : print.options)
            if (one.names.back() == name)
                return one;
        throw std::out_of_range(name);
    }
};

std::vector<std::string> labels(const std::vector<OptionView>& options)
{
    std::vector<std::string> all;
    for (const auto& option : options)
        all.push_back(labelOf(option));
    return all;
}

TEST_F(CommandViews, NameCommandsByTheirPath)
{
    EXPECT_EQ(whole.path, "quelm-try");
    EXPECT_EQ(print.path, "quelm-try print");
    EXPECT_EQ(whole.commands[1].commands[1].path, "quelm-try book add");
    EXPECT_EQ(whole.commands[1].commands[1].name, "add");
}

TEST_F(CommandViews, HoldOptionsInTheirOrderWithWhatAllCommandsHaveLast)
{
    EXPECT_THAT(labels(print.places), ElementsAre("FILE"));
    EXPECT_THAT(labels(print.options), ElementsAre("-n, --note TEXT", "--pdl dsc|pjl", "--fast", "--slow",
                                                   "--watch NAME", "-h, --help"));
    EXPECT_THAT(labels(whole.options), ElementsAre("--home DIR", "-V, --version", "-h, --help"));
}

TEST_F(CommandViews, HoldTheOptionsThatMayStandBehindACommand)
{
    EXPECT_THAT(labels(print.inherited), ElementsAre("-V, --version", "--home DIR"));
    EXPECT_THAT(labels(whole.commands[1].commands[0].inherited), ElementsAre("-V, --version", "--home DIR"));
    EXPECT_THAT(whole.inherited, ElementsAre());
}

TEST_F(CommandViews, KnowWhatAValueIs)
{
    EXPECT_EQ(option("--note").kind, ValueKind::text);
    EXPECT_EQ(option("--fast").kind, ValueKind::none);
    EXPECT_EQ(option("--pdl").kind, ValueKind::choice);
    EXPECT_THAT(option("--pdl").choices, ElementsAre("dsc", "pjl"));
    EXPECT_EQ(print.places.front().kind, ValueKind::file);
    EXPECT_EQ(whole.options.front().kind, ValueKind::folder);
}

TEST_F(CommandViews, SayHowToCallACommand)
{
    EXPECT_THAT(usagesOf(whole), ElementsAre("[OPTIONS] COMMAND", "[OPTIONS] [DOCUMENT]"));
    EXPECT_THAT(usagesOf(print), ElementsAre("[OPTIONS] FILE..."));
    EXPECT_THAT(usagesOf(whole.commands[1]), ElementsAre("[OPTIONS] COMMAND"));
    EXPECT_THAT(usagesOf(whole.commands[1].commands[0]), ElementsAre("[OPTIONS]"));
}

TEST_F(CommandViews, SayWhatAnOptionNeedsAndExcludes)
{
    EXPECT_EQ(fullDescriptionOf(option("--fast")), "In a hurry (not with --slow)");
    EXPECT_EQ(fullDescriptionOf(option("--watch")), "Who looks on (only with --fast)");
    EXPECT_EQ(fullDescriptionOf(option("--note")), "A note on it");
    program.app.add_option("--needed", program.text, "Of use")->required();
    EXPECT_EQ(fullDescriptionOf(viewOf(program.app).options[1]), "Of use (required)");
}

TEST_F(CommandViews, PutOptionsWithoutASectionLast)
{
    EXPECT_THAT(sectionsOf(print), ElementsAre("Paper", "Speed", "Options"));
}

TEST_F(CommandViews, ShowAlsoWhatAProgramTakesByItself)
{
    addHelp(program.app, {{}, {}, {{"-FP FILE", "The book"}}, {}, {}, {}});
    const auto view = viewOf(program.app);
    EXPECT_EQ(labelOf(view.options.front()), "-FP FILE");
    EXPECT_EQ(view.options.front().kind, ValueKind::file);
}

TEST_F(CommandViews, LeaveHiddenOptionsOut)
{
    program.app.add_flag("--secret", program.chosen, "Nobody's business")->group("");
    for (const auto& one : viewOf(program.app).options)
        EXPECT_NE(one.names.back(), "--secret");
}

} // namespace
} // namespace quelm
