// Questions through the boundary, and plain text out of markup.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/messages.h"

#include "tests/support/test_dialogs.h"

#include <array>

namespace {

class MessagesTest : public HostTest {};

TEST_F(MessagesTest, AQuestionIsKeptWithItsOwnCopyOfTheText)
{
    std::string text = "Sure?";
    PopupMessageDialog(3, nullptr, text.data());
    text = "xxxxx";
    ASSERT_NE(state.questions.top(), nullptr);
    EXPECT_EQ(state.questions.top()->kind, 3);
    EXPECT_EQ(state.questions.top()->text, "Sure?");
}

TEST_F(MessagesTest, ClosingOutsideAnAnswerClosesTheQuestionAskedLast)
{
    PopupMessageDialog(3, nullptr, host::in("first"));
    PopupMessageDialog(3, nullptr, host::in("second"));
    CloseCurrentPopupDialog();
    ASSERT_NE(state.questions.top(), nullptr);
    EXPECT_EQ(state.questions.top()->text, "first");
}

TEST_F(MessagesTest, ClosingWithoutAQuestionDoesNothing)
{
    CloseCurrentPopupDialog();
    EXPECT_EQ(state.questions.top(), nullptr);
}

struct Markup {
    std::string marked;
    std::string plain;
};

TEST(MarkupTest, GivesPlainTextAndLeavesInvalidMarkupAsItIs)
{
    const std::array<Markup, 12> table{{
        {"Name:", "Name:"},
        {"", ""},
        {"<b>Name:</b>", "Name:"},
        {"<span foreground=\"red\">a</span><i>b</i>", "ab"},
        {"&lt;a&gt; &amp; &#65;", "<a> & A"},
        {"line\nline", "line\nline"},
        {"Fax & phone", "Fax & phone"},
        {"<b>open", "<b>open"},
        {"a < b", "a < b"},
        {"<Name>", "<Name>"},
        {"<name>x</name>", "<name>x</name>"},
        {"\xff", "\xff"},
    }};
    for (const Markup& row : table)
        EXPECT_EQ(host::plainText(row.marked), row.plain) << row.marked;
}

TEST(MarkupTest, OnlyTheGivenBytesCount)
{
    std::string out = "what was there before";
    ParsePangoMarkupString(host::in("Name: and more"), 5, out);
    EXPECT_EQ(out, "Name:");
    ParsePangoMarkupString(host::in("Name:"), 4000, out);
    EXPECT_EQ(out, "Name:");
    ParsePangoMarkupString(host::in("Name:"), -1, out);
    EXPECT_EQ(out, "");
    ParsePangoMarkupString(nullptr, 5, out);
    EXPECT_EQ(out, "");
}

} // namespace
