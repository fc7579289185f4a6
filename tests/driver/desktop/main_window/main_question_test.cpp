// Tests of the questions that the main window asks itself.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/main_question.h"

#include "tests/driver/desktop/main_loop.h"
#include "tests/driver/desktop/on_screen.h"
#include "tests/driver/desktop/toolkit.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

class MainQuestionTest : public testing::Test {
protected:
    MainQuestionTest()
    {
        window.add(messages);
        window.set_title("letter.ps");
        window.present();
        EXPECT_TRUE(loopUntil([this] { return window.get_mapped(); }));
    }

    void ask(const std::string& name = "Test Question")
    {
        question.ask({name, "Really?", "It is lost then.", "_No", "_Yes"}, [this] { ++yeses; });
        ASSERT_TRUE(loopUntil([&] { return onScreen(name + " Yes") != nullptr; }));
    }

    void press(const std::string& button)
    {
        pressButton(button);
        loopUntilIdle();
        EXPECT_EQ(onScreen("Test Question"), nullptr);
    }

    Toolkit toolkit;
    Gtk::Window window;
    MessageBar messages;
    MainQuestion question{window, messages};
    int yeses = 0;
};

TEST_F(MainQuestionTest, YesIsTold)
{
    ask();
    EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(onScreen("Test Question"))), "letter.ps");
    press("Test Question Yes");
    EXPECT_EQ(yeses, 1);
}

TEST_F(MainQuestionTest, AnythingElseIsANo)
{
    ask();
    press("Test Question No");
    ask();
    gtk_window_close(GTK_WINDOW(onScreen("Test Question")));
    ASSERT_TRUE(loopUntil([] { return onScreen("Test Question") == nullptr; }));
    ask();
    question.withdraw();
    EXPECT_EQ(onScreen("Test Question"), nullptr);
    EXPECT_EQ(yeses, 0);
}

TEST_F(MainQuestionTest, AThirdAnswerAndANoCanBeToldApart)
{
    std::string answers;
    for (const std::string button : {"Yes", "Other", "No"}) {
        question.ask({"Test Question", "Really?", "It is lost then.", "_No", "_Yes", "_Other"},
                     {[&] { answers += "yes "; }, [&] { answers += "other "; }, [&] { answers += "no "; }});
        ASSERT_TRUE(loopUntil([&] { return onScreen("Test Question " + button) != nullptr; }));
        EXPECT_TRUE(question.isOpen());
        press("Test Question " + button);
        EXPECT_FALSE(question.isOpen());
    }
    EXPECT_EQ(answers, "yes other no ");
    ask();
    EXPECT_EQ(onScreen("Test Question Other"), nullptr);
}

TEST_F(MainQuestionTest, TheAnswerComesFirstWhileTheQuestionStands)
{
    EXPECT_FALSE(question.comesFirst());
    EXPECT_EQ(shownText("Main Message"), "");
    ask();
    EXPECT_TRUE(question.comesFirst());
    EXPECT_EQ(shownText("Main Message"), "Answer the question first.");
    press("Test Question No");
    EXPECT_EQ(shownText("Main Message"), "");
    EXPECT_FALSE(question.comesFirst());
}

TEST_F(MainQuestionTest, AnAnswerTakesNoOtherMessageWithIt)
{
    ask();
    EXPECT_TRUE(question.comesFirst());
    question.withdraw();
    messages.tell(Gtk::MESSAGE_INFO, "It was sent.");
    ask();
    press("Test Question No");
    EXPECT_EQ(shownText("Main Message"), "It was sent.");
}

} // namespace
} // namespace quelm
