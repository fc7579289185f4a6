// What shells offer for the command lines of our programs, compared with their commands and options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/completions.h"

#include "base/manual/shell_names.h"
#include "manual/programs.h"
#include "tests/manual/shells.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace quelm {
namespace {

using test::Question;
using test::Shell;
using testing::Contains;
using testing::IsSubsetOf;
using testing::Not;
using Words = std::set<std::string>;

/// A question, and what must be offered: exactly that, or at least.
struct Expectation {
    Question question;
    Words offered;
    bool exactly = true;
};

Question questionOf(const CommandView& command, const std::vector<std::string>& more)
{
    Question words;
    std::istringstream path(command.path);
    for (std::string word; path >> word;)
        words.push_back(word);
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

void expectValues(std::vector<Expectation>& all, const CommandView& command, const OptionView& option)
{
    const auto& name = option.names.back();
    if (option.kind == ValueKind::choice)
        all.push_back({questionOf(command, {name, ""}), Words(option.choices.begin(), option.choices.end())});
    if (option.kind == ValueKind::file)
        all.push_back({questionOf(command, {name, "let"}), {"letter.ps"}});
    if (option.kind == ValueKind::folder)
        all.push_back({questionOf(command, {name, "sh"}), {"shelf"}});
}

std::vector<Expectation> expectationsOf(const CommandView& program)
{
    std::vector<Expectation> all;
    forEachCommand(program, [&all](const CommandView& command) {
        Words names;
        for (const auto& option : allOptionsOf(command)) {
            names.insert(option.names.begin(), option.names.end());
            expectValues(all, command, option);
        }
        all.push_back({questionOf(command, {"-"}), names});
        Words commands;
        for (const auto& below : command.commands)
            commands.insert(below.name);
        all.push_back({questionOf(command, {""}), commands, command.places.empty()});
        for (const auto& place : command.places)
            if (place.kind == ValueKind::file)
                all.push_back({questionOf(command, {"let"}), {"letter.ps"}});
    });
    return all;
}

/// fish shows that a folder is one.
Words plain(const Words& offered)
{
    Words words;
    for (auto word : offered) {
        if (word.ends_with('/'))
            word.pop_back();
        words.insert(word);
    }
    return words;
}

class CompletionsOfPrograms : public testing::TestWithParam<Shell> {
protected:
    static Words offered(const CommandView& program, const Question& question)
    {
        return plain(test::completionsOf(GetParam(), program, {question}).front());
    }
};

TEST_P(CompletionsOfPrograms, OfferEveryCommandOptionAndWord)
{
    for (const auto& program : describedPrograms()) {
        const auto expectations = expectationsOf(program);
        std::vector<Question> questions;
        for (const auto& expected : expectations)
            questions.push_back(expected.question);
        const auto answers = test::completionsOf(GetParam(), program, questions);
        for (std::size_t i = 0; i < answers.size(); ++i) {
            const auto& expected = expectations[i];
            const auto asked = testing::PrintToString(expected.question);
            auto offered = plain(answers[i]);
            // Where no word is expected, zsh offers the options.
            if (expected.question.back().empty())
                std::erase_if(offered, [](const std::string& word) { return word.starts_with('-'); });
            if (expected.exactly)
                EXPECT_EQ(offered, expected.offered) << asked;
            else
                EXPECT_THAT(expected.offered, IsSubsetOf(offered)) << asked;
        }
    }
}

TEST_P(CompletionsOfPrograms, FindTheCommandBehindOptionsAndTheirValues)
{
    const auto driver = describedPrograms().front();
    EXPECT_THAT(offered(driver, {"quelm-driver", "--home", "fax", "outbox", ""}), Contains("resend"));
    EXPECT_THAT(offered(driver, {"quelm-driver", "--json", "phonebook", "--user", "list", "im"}),
                testing::ElementsAre("import"));
    EXPECT_THAT(offered(driver, {"quelm-driver", "fax", "--to", "A=1", "--pd"}),
                testing::ElementsAre("--pdl"));
}

TEST_P(CompletionsOfPrograms, ShowTheCommandsThatHelpIsAskedFor)
{
    const auto driver = describedPrograms().front();
    EXPECT_THAT(offered(driver, {"quelm-driver", "help", "phone"}), testing::ElementsAre("phonebook"));
    EXPECT_THAT(offered(driver, {"quelm-driver", "help", "phonebook", "im"}), testing::ElementsAre("import"));
}

TEST_P(CompletionsOfPrograms, OfferNoOptionBehindTwoDashes)
{
    const auto driver = describedPrograms().front();
    EXPECT_THAT(offered(driver, {"quelm-driver", "fax", "--", "-"}), Not(Contains("--to")));
}

INSTANTIATE_TEST_SUITE_P(Shells, CompletionsOfPrograms, testing::Values(Shell::bash, Shell::zsh, Shell::fish),
                         [](const auto& shell) { return test::nameOf(shell.param); });

TEST(CompletionsOfBash, ReadValuesBehindAnEqualsSign)
{
    const auto driver = describedPrograms().front();
    const auto answers = test::completionsOf(Shell::bash, driver,
                                             {{"quelm-driver", "fax", "--pdl", "=", "p"},
                                              {"quelm-driver", "fax", "--pdl", "="},
                                              {"quelm-driver", "fax", "--pdl", "=", "pjl", "--reso"}});
    EXPECT_EQ(answers[0], Words{"pjl"});
    EXPECT_EQ(answers[1], (Words{"dsc", "pjl"}));
    EXPECT_EQ(answers[2], Words{"--resolution"});
}

} // namespace
} // namespace quelm
