// Questions of the component on the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/question_dialogs.h"

#include "driver/plugin/questions.h"
#include "tests/driver/desktop/desktop_fixture.h"

#include <atkmm/object.h>
#include <gdk/gdkkeysyms.h>

namespace {

class QuestionTest : public DesktopTest {
protected:
    void SetUp() override
    {
        openFaxDialog();
        addRecipient("Ann", "555");
    }

    /// Adds a recipient that the job has already.
    void askAboutADuplicate()
    {
        click("AddFaxRcpt");
        ASSERT_TRUE(opens("LanFax Add Recipient Window"));
        typeInto("RecipientName", "Ann");
        typeInto("RecipientNumber", "555");
        click("LanFaxAddRcpt OK Button");
        ASSERT_TRUE(asked());
    }

    static bool asked()
    {
        return loopUntil([] { return question() != nullptr && question()->is_active(); });
    }

    static bool answered()
    {
        return loopUntil([] { return question() == nullptr; });
    }

    std::size_t recipients() { return tree("LanFax Recipient List").rows().count(); }
};

} // namespace

TEST(QuestionText, IsPlainAndWithoutTrailingBlanks)
{
    EXPECT_EQ(quelm::questionText("Name:   Ann\r\nNumber:   555\r\n\nAdd it?\r\n "),
              "Name:   Ann\nNumber:   555\n\nAdd it?");
    EXPECT_EQ(quelm::questionText(""), "");
}

TEST_F(QuestionTest, StandsOverTheDialogThatAskedAndIsModal)
{
    askAboutADuplicate();
    EXPECT_EQ(question()->get_transient_for(), &screen<Gtk::Window>("LanFax Add Recipient Window"));
    EXPECT_TRUE(question()->get_modal());
    EXPECT_EQ(question()->get_title(), "Add Fax Recipient");
    EXPECT_EQ(question()->get_accessible()->get_description(), "Question");
    const std::string text = question()->property_text().get_value();
    EXPECT_NE(text.find("Ann"), std::string::npos) << text;
    EXPECT_EQ(text.find('\r'), std::string::npos);
}

TEST_F(QuestionTest, YesGoesOn)
{
    askAboutADuplicate();
    question()->response(Gtk::RESPONSE_YES);
    ASSERT_TRUE(answered());
    EXPECT_EQ(recipients(), 2U);
    EXPECT_FALSE(driver().pendingQuestion());
    EXPECT_TRUE(closes("LanFax Add Recipient Window"));
}

TEST_F(QuestionTest, NoAndEscapeAndClosingDoNot)
{
    for (const int way : {0, 1, 2}) {
        askAboutADuplicate();
        if (way == 0)
            question()->response(Gtk::RESPONSE_NO);
        else if (way == 1)
            press(*question(), GDK_KEY_Escape);
        else
            question()->close();
        ASSERT_TRUE(answered()) << way;
        EXPECT_EQ(recipients(), 1U) << way;
        if (isOpen("LanFax Add Recipient Window")) {
            click("LanFaxAddRcpt Cancel Button");
            ASSERT_TRUE(closes("LanFax Add Recipient Window"));
        }
    }
}

TEST_F(QuestionTest, AnswersOnlyTheQuestionThatWasShown)
{
    static int answers;
    answers = 0;
    const auto count = [](_GtkDialog*, int) { ++answers; };
    driver().questions().ask(quelm::Questions::yesNoKind, count, "First?");
    ASSERT_TRUE(asked());
    Gtk::MessageDialog& first = *question();
    first.response(Gtk::RESPONSE_YES);
    first.response(Gtk::RESPONSE_YES); // a double click
    driver().questions().ask(quelm::Questions::yesNoKind, count, "Second?");
    ASSERT_TRUE(loopUntil(
        [] { return question() != nullptr && question()->property_text().get_value() == "Second?"; }));
    EXPECT_EQ(answers, 0); // the first one is no longer on top
    question()->response(Gtk::RESPONSE_YES);
    ASSERT_TRUE(loopUntil(
        [] { return question() != nullptr && question()->property_text().get_value() == "First?"; }));
    EXPECT_EQ(answers, 1);
    question()->response(Gtk::RESPONSE_NO);
    ASSERT_TRUE(answered());
    EXPECT_EQ(answers, 2);
}

TEST_F(QuestionTest, AQuestionThatTheComponentClosesLeavesTheScreen)
{
    askAboutADuplicate();
    driver().questions().closeCurrent();
    EXPECT_TRUE(answered());
}

TEST_F(QuestionTest, AMessageOfAnotherKindIsOnlyClosed)
{
    driver().questions().ask(1, nullptr, "Done & <dusted>.");
    ASSERT_TRUE(asked());
    EXPECT_EQ(question()->get_widget_for_response(Gtk::RESPONSE_YES), nullptr);
    question()->response(Gtk::RESPONSE_NO);
    EXPECT_TRUE(answered());
    EXPECT_FALSE(driver().pendingQuestion());
}
