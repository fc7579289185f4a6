// Tests of the questions that the main window asks itself.
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
        window_.add(messages_);
        window_.set_title("letter.ps");
        window_.present();
        EXPECT_TRUE(loopUntil([this] { return window_.get_mapped(); }));
    }

    void ask(const std::string& name = "Test Question")
    {
        question_.ask({name, "Really?", "It is lost then.", "_No", "_Yes"}, [this] { ++yeses_; });
        ASSERT_TRUE(loopUntil([&] { return onScreen(name + " Yes") != nullptr; }));
    }

    void press(const std::string& button)
    {
        pressButton(button);
        loopUntilIdle();
        EXPECT_EQ(onScreen("Test Question"), nullptr);
    }

    Toolkit toolkit_;
    Gtk::Window window_;
    MessageBar messages_;
    MainQuestion question_{window_, messages_};
    int yeses_ = 0;
};

TEST_F(MainQuestionTest, YesIsTold)
{
    ask();
    EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(onScreen("Test Question"))), "letter.ps");
    press("Test Question Yes");
    EXPECT_EQ(yeses_, 1);
}

TEST_F(MainQuestionTest, AnythingElseIsANo)
{
    ask();
    press("Test Question No");
    ask();
    gtk_window_close(GTK_WINDOW(onScreen("Test Question")));
    ASSERT_TRUE(loopUntil([] { return onScreen("Test Question") == nullptr; }));
    ask();
    question_.withdraw();
    EXPECT_EQ(onScreen("Test Question"), nullptr);
    EXPECT_EQ(yeses_, 0);
}

TEST_F(MainQuestionTest, TheAnswerComesFirstWhileTheQuestionStands)
{
    EXPECT_FALSE(question_.comesFirst());
    EXPECT_EQ(shownText("Main Message"), "");
    ask();
    EXPECT_TRUE(question_.comesFirst());
    EXPECT_EQ(shownText("Main Message"), "Answer the question first.");
    press("Test Question No");
    EXPECT_EQ(shownText("Main Message"), "");
    EXPECT_FALSE(question_.comesFirst());
}

TEST_F(MainQuestionTest, AnAnswerTakesNoOtherMessageWithIt)
{
    ask();
    EXPECT_TRUE(question_.comesFirst());
    question_.withdraw();
    messages_.tell(Gtk::MESSAGE_INFO, "It was sent.");
    ask();
    press("Test Question No");
    EXPECT_EQ(shownText("Main Message"), "It was sent.");
}

} // namespace
} // namespace quelm
