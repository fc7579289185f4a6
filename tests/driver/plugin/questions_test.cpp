// Asking, answering and closing questions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/questions.h"

#include "tests/support/log_capture.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using quelm::Questions;

quelm::CallGuard guard;
Questions* questions = nullptr;
std::vector<int> responses;

class QuestionsTest : public testing::Test {
protected:
    QuestionsTest()
    {
        questions = &open;
        responses.clear();
    }
    ~QuestionsTest() override { questions = nullptr; }

    std::string topText() const { return open.top() == nullptr ? "none" : open.top()->text; }

    Questions open{guard};
};

void noteAndClose(_GtkDialog* dialog, int response)
{
    EXPECT_NE(dialog, nullptr);
    responses.push_back(response);
    questions->closeCurrent();
}

TEST_F(QuestionsTest, TheAnswerYesIsMinusEight)
{
    open.ask(3, noteAndClose, "a");
    EXPECT_TRUE(open.answerTop(true));
    EXPECT_EQ(responses, (std::vector{-8}));
    EXPECT_EQ(open.top(), nullptr);
}

TEST_F(QuestionsTest, AnyOtherAnswerIsNotMinusEight)
{
    open.ask(3, noteAndClose, "a");
    EXPECT_TRUE(open.answerTop(false));
    ASSERT_EQ(responses.size(), 1U);
    EXPECT_NE(responses[0], -8);
}

TEST_F(QuestionsTest, WithoutAQuestionThereIsNothingToAnswer) { EXPECT_FALSE(open.answerTop(true)); }

TEST_F(QuestionsTest, TheQuestionAskedLastIsAnsweredFirst)
{
    open.ask(3, noteAndClose, "first");
    open.ask(3, noteAndClose, "second");
    EXPECT_EQ(topText(), "second");
    open.answerTop(true);
    EXPECT_EQ(topText(), "first");
}

TEST_F(QuestionsTest, ClosingInAnAnswerClosesTheAnsweredQuestionAndNotOneAskedSince)
{
    open.ask(
        3,
        [](_GtkDialog*, int) {
            questions->ask(3, noteAndClose, "asked in the answer");
            questions->closeCurrent();
            questions->closeCurrent();
        },
        "first");
    open.answerTop(true);
    EXPECT_EQ(topText(), "asked in the answer");
}

TEST_F(QuestionsTest, AnAnswerThatDoesNotCloseItsQuestionStillEndsIt)
{
    open.ask(
        3, [](_GtkDialog*, int) {}, "first");
    open.answerTop(true);
    EXPECT_EQ(topText(), "none");
}

TEST_F(QuestionsTest, AnExceptionInAnAnswerIsLoggedAndEndsTheQuestion)
{
    const LogCapture log;
    open.ask(
        3, [](_GtkDialog*, int) { throw std::runtime_error("no idea"); }, "first");
    const int before = guard.failures();
    EXPECT_TRUE(open.answerTop(true));
    EXPECT_EQ(topText(), "none");
    EXPECT_EQ(guard.failures(), before + 1);
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_NE(log.messages[0].find("no idea"), std::string::npos);
    open.ask(3, noteAndClose, "next");
    open.ask(3, noteAndClose, "last");
    open.closeCurrent();
    EXPECT_EQ(topText(), "next");
}

TEST_F(QuestionsTest, AQuestionThatNobodyWaitsForCanBeAnswered)
{
    open.ask(1, nullptr, "a message");
    EXPECT_TRUE(open.answerTop(true));
    EXPECT_EQ(topText(), "none");
}

TEST_F(QuestionsTest, TheObserverHearsOfEveryQuestionAskedAndClosed)
{
    int calls = 0;
    open.setObserver([&calls] { ++calls; });
    open.ask(3, noteAndClose, "first");
    EXPECT_EQ(calls, 1);
    open.answerTop(true);
    EXPECT_EQ(calls, 2);
}

} // namespace
