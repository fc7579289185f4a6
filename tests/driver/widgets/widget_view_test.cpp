// What a widget shows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_view.h"

#include "tests/support/test_dialogs.h"

namespace {

class WidgetViewTest : public HostTest {};

TEST_F(WidgetViewTest, OnlyWhatItsKindHasIsPresent)
{
    const quelm::WidgetView entry = quelm::viewOf(widget("Entry"));
    EXPECT_EQ(entry.name, "Entry");
    EXPECT_EQ(entry.kind, "TextEntry");
    EXPECT_EQ(entry.text, "initial");
    EXPECT_FALSE(entry.ticked || entry.value || entry.rowCount);

    const quelm::WidgetView check = quelm::viewOf(widget("Check"));
    EXPECT_EQ(check.ticked, false);
    EXPECT_FALSE(check.value);

    const quelm::WidgetView fixed = quelm::viewOf(widget("Fixed"));
    EXPECT_FALSE(fixed.text || fixed.ticked || fixed.value || fixed.rowCount);
}

TEST_F(WidgetViewTest, AnItemWithoutTextShowsItsName)
{
    const quelm::WidgetView combo = quelm::viewOf(widget("Combo"));
    EXPECT_EQ(combo.value, 0);
    EXPECT_EQ(combo.items, (std::vector<std::string>{"Combo A", "B", "Combo C"}));
    EXPECT_EQ(quelm::viewOf(widget("Tabs")).items, (std::vector<std::string>{"A", "B"}));
}

TEST_F(WidgetViewTest, AWindowAndAFileChooserHaveATitle)
{
    widget("Window").setText("Now");
    EXPECT_EQ(quelm::viewOf(widget("Window")).title, "Now");
    quelm::Widget& chooser = state.tree.addFileChooser(widget("Window"), "Load...");
    chooser.setText("here/*.xdb");
    EXPECT_EQ(quelm::viewOf(chooser).title, "Load...");
    EXPECT_EQ(quelm::viewOf(chooser).text, "here/*.xdb");
    EXPECT_FALSE(quelm::viewOf(widget("Entry")).title);
}

TEST_F(WidgetViewTest, OperableMeansWithAllAroundIt)
{
    EXPECT_TRUE(quelm::viewOf(widget("Entry")).visible);
    EXPECT_FALSE(quelm::viewOf(widget("Entry")).operable);
    widget("Window").setVisible(true);
    EXPECT_TRUE(quelm::viewOf(widget("Entry")).operable);
    EXPECT_FALSE(quelm::viewOf(widget("Button")).operable);
}

TEST_F(WidgetViewTest, AListShowsItsRowsAndSelectionInOrder)
{
    for (const char* name : {"Ann", "Bob", "Cid"})
        addRow("Many", name, "1");
    widget("Many").setSelection({2, 0});
    const quelm::WidgetView list = quelm::viewOf(widget("Many"));
    EXPECT_EQ(list.rowCount, 3U);
    EXPECT_EQ(list.value, 0);
    EXPECT_EQ(list.selection, (std::vector{0, 2}));
    EXPECT_EQ(quelm::rowsOf(widget("Many")),
              (std::vector<std::vector<std::string>>{{"Ann", "1"}, {"Bob", "1"}, {"Cid", "1"}}));
}

} // namespace
