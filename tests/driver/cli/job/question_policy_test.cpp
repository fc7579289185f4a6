// Who answers the duplicate question, and how.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/question_policy.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class QuestionPolicyTest : public testing::Test {
protected:
    bool decide(Duplicates duplicates, bool interactive, std::deque<std::string> lines = {},
                const std::string& question = "Name:   Ann\r\nAdd?")
    {
        Terminal terminal;
        terminal.interactive = interactive;
        terminal.show = [this](const std::string& text) { shown.push_back(text); };
        terminal.readLine = [lines = std::move(lines)]() mutable -> std::optional<std::string> {
            if (lines.empty())
                return std::nullopt;
            auto line = lines.front();
            lines.pop_front();
            return line;
        };
        return QuestionPolicy(duplicates, terminal).addDuplicate(question, "--to Ann=555");
    }

    std::vector<std::string> shown;
};

TEST_F(QuestionPolicyTest, AddAnswersYesWithoutAsking)
{
    EXPECT_TRUE(decide(Duplicates::add, false));
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(QuestionPolicyTest, SkipAnswersNoWithoutAsking)
{
    EXPECT_FALSE(decide(Duplicates::skip, true));
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(QuestionPolicyTest, AskShowsTheQuestionAtTheTerminal)
{
    EXPECT_TRUE(decide(Duplicates::ask, true, {"y"}));
    EXPECT_THAT(shown, ElementsAre("Name:   Ann\nAdd? [y/n] "));
    EXPECT_FALSE(decide(Duplicates::ask, true, {"no"}));
}

TEST_F(QuestionPolicyTest, AskShowsNothingThatTheTerminalObeys)
{
    EXPECT_TRUE(decide(Duplicates::ask, true, {"y"}, "Name:   Ann\u009b2J\u202e\nAdd?"));
    EXPECT_THAT(shown, ElementsAre("Name:   Ann\\u{9b}2J\\u{202e}\nAdd? [y/n] "));
}

TEST_F(QuestionPolicyTest, AskRepeatsTheQuestionUntilItIsAnswered)
{
    EXPECT_TRUE(decide(Duplicates::ask, true, {"", "what?", "yes"}));
    EXPECT_EQ(shown.size(), 3U);
}

TEST_F(QuestionPolicyTest, AskRefusesWhereNobodyCanAnswer)
{
    const std::string line = "--to Ann=555: this recipient is in the job already; say --duplicates add or "
                             "--duplicates skip";
    EXPECT_EQ(test::failureLine([&] { decide(Duplicates::ask, false); }), line);
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_EQ(test::failureLine([&] { decide(Duplicates::ask, true, {"hm"}); }), line);
}

} // namespace
} // namespace quelm
