// Texts as the screen shows them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/shown_text.h"

#include "driver/widgets/widget_tree.h"
#include "tests/support/test_dialogs.h"

namespace {

using quelm::drawable;
using quelm::shownMessage;
using quelm::shownText;
using quelm::withPlainLineEnds;

class ShownText : public HostTest {};

} // namespace

TEST(Drawable, TextIsLeftAsItIs) { EXPECT_EQ(drawable("Jörg"), "Jörg"); }

TEST(Drawable, BytesThatAreNoTextAreReplaced) { EXPECT_EQ(drawable("J\xF6rg"), "J\xEF\xBF\xBDrg"); }

TEST(ShownMessage, BeginsWithACapitalWhereItBeginsWithAWord)
{
    EXPECT_EQ(shownMessage("the device did not answer"), "The device did not answer");
    EXPECT_EQ(shownMessage("\u00fcber das Netz"), "\u00dcber das Netz");
    EXPECT_EQ(shownMessage("The device"), "The device");
}

TEST(ShownMessage, LeavesNamesAsTheyAre)
{
    for (const char* message : {"letter.ps: cannot be read", "\"letter\" cannot be read",
                                "letter: cannot be read", "/home/ann/letter.ps is empty", "", "word"})
        EXPECT_EQ(shownMessage(message), message);
}

TEST(ShownMessage, IsOneDrawableLine) { EXPECT_EQ(shownMessage("a:\nb \xF6"), "a: b \xEF\xBF\xBD"); }

TEST(LineEnds, OfEveryKindBecomeOne)
{
    EXPECT_EQ(withPlainLineEnds("a\r\nb\rc\nd"), "a\nb\nc\nd");
    EXPECT_EQ(withPlainLineEnds("a\r\n\nb\r"), "a\n\nb\n");
}

TEST_F(ShownText, OfTheDefinitionKeepsItsLineBreaksAndMnemonics)
{
    EXPECT_EQ(shownText(widget("Label")), "One\nTwo");
    EXPECT_EQ(shownText(widget("Button")), "_Add >>");
    EXPECT_TRUE(quelm::hasMnemonics(widget("Button")));
    EXPECT_EQ(shownText(widget("Window")), "Title");
}

TEST_F(ShownText, OfTheComponentIsDataWithoutMnemonics)
{
    widget("Label").setText("john_doe@example.org");
    EXPECT_EQ(shownText(widget("Label")), "john_doe@example.org");
    EXPECT_FALSE(quelm::hasMnemonics(widget("Label")));
}

TEST_F(ShownText, OfAnItemWithoutTextIsItsName)
{
    EXPECT_EQ(shownText(widget("Combo A")), "Combo A");
    EXPECT_EQ(shownText(widget("Radio B")), "Radio B");
    EXPECT_EQ(shownText(widget("Combo B")), "B");
}

TEST_F(ShownText, OfAColumnIsItsTitle)
{
    EXPECT_EQ(quelm::columnTitle(widget("List"), 1), "Number");
    EXPECT_EQ(quelm::columnTitle(widget("List"), 5), "");
}

TEST_F(ShownText, OfAFileChooserIsItsTitle)
{
    quelm::Widget& chooser = state.tree.addFileChooser(widget("Window"), "Load...");
    chooser.setText("/opt/quelm/db/*.xdb");
    EXPECT_EQ(shownText(chooser), "Load...");
}
