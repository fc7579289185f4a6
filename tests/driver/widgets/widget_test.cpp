// A widget's state and the changes that its observers are told.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget.h"

#include "tests/support/test_dialogs.h"

namespace {

using quelm::Widget;
using quelm::WidgetChange;
using quelm::WidgetKind;

class Notes : public quelm::WidgetObserver {
public:
    explicit Notes(quelm::WidgetTree& widgets) : tree_(widgets) { tree_.addObserver(*this); }
    ~Notes() override { tree_.removeObserver(*this); }
    void changed(Widget& widget, WidgetChange what) override
    {
        static constexpr const char* names[] = {"text", "value", "visibility", "sensitivity"};
        text += widget.name() + " " + names[static_cast<int>(what)] + ";";
    }
    void rowsChanged(Widget& list) override { text += list.name() + " rows;"; }

    std::string text;

private:
    quelm::WidgetTree& tree_;
};

class WidgetTest : public HostTest {
protected:
    Notes notes{state.tree};
};

TEST_F(WidgetTest, StartsAsTheDefinitionSays)
{
    EXPECT_FALSE(widget("Button").sensitive());
    EXPECT_FALSE(widget("Frame").visible());
    EXPECT_EQ(widget("Entry").text(), "initial");
    EXPECT_EQ(widget("Label").text(), "One\nTwo");
    EXPECT_EQ(widget("Window").text(), "Title");
    EXPECT_EQ(widget("Spin").number(), 12);
    EXPECT_EQ(widget("Combo").number(), 0);
    EXPECT_EQ(widget("List").number(), -1);
    EXPECT_EQ(*widget("Button").attribute("Text"), "_Add >>");
    EXPECT_EQ(widget("Button").attribute("HelpTopic"), nullptr);
}

TEST_F(WidgetTest, IsOnScreenOnlyWithAllThatItStandsIn)
{
    EXPECT_FALSE(widget("Entry").onScreen());
    widget("Window").setVisible(true);
    EXPECT_TRUE(widget("Entry").onScreen());
    widget("Fixed").setVisible(false);
    EXPECT_FALSE(widget("Entry").onScreen());
}

TEST_F(WidgetTest, IsActiveOnlyWithAllThatItStandsIn)
{
    EXPECT_TRUE(widget("Entry").active());
    widget("Fixed").setSensitive(false);
    EXPECT_FALSE(widget("Entry").active());
}

TEST_F(WidgetTest, TellsEachChangeOnce)
{
    widget("Entry").setText("new");
    widget("Entry").setText("new");
    widget("Check").setFlag(true);
    widget("Check").setFlag(true);
    widget("Window").setVisible(true);
    widget("Button").setSensitive(true);
    widget("Combo").setNumber(2);
    EXPECT_EQ(notes.text, "Entry text;Check value;Window visibility;Button sensitivity;Combo value;");
}

TEST_F(WidgetTest, ARadioItemIsOnWhenItsGroupHasItsIndex)
{
    EXPECT_TRUE(widget("Radio A").flag());
    widget("Radio B").setFlag(true);
    EXPECT_EQ(widget("Radio").number(), 1);
    EXPECT_FALSE(widget("Radio A").flag());
    EXPECT_EQ(notes.text, "Radio value;");
}

TEST_F(WidgetTest, ClearingARadioItemLeavesTheChoice)
{
    widget("Radio B").setFlag(true);
    widget("Radio B").setFlag(false);
    EXPECT_EQ(widget("Radio").number(), 1);
}

TEST_F(WidgetTest, TakesNoNumberOutOfItsRange)
{
    EXPECT_FALSE(widget("Combo").setNumber(3));
    EXPECT_FALSE(widget("Combo").setNumber(-1));
    EXPECT_FALSE(widget("Spin").setNumber(0));
    EXPECT_FALSE(widget("Spin").setNumber(13));
    EXPECT_FALSE(widget("Tabs").setNumber(2));
    EXPECT_FALSE(widget("List").setNumber(0));
    EXPECT_FALSE(widget("Label").setNumber(0));
    EXPECT_EQ(notes.text, "");
}

TEST_F(WidgetTest, RowsWhileFrozenAreToldOnceAtTheEnd)
{
    widget("List").freeze(true);
    addRow("List", "Ann", "1");
    addRow("List", "Bob", "2");
    EXPECT_EQ(notes.text, "");
    widget("List").freeze(false);
    EXPECT_EQ(notes.text, "List rows;");
}

TEST_F(WidgetTest, ClearingRowsAlsoClearsTheSelection)
{
    addRow("Many", "Ann", "1");
    widget("Many").setSelection({0});
    widget("Many").clearRows();
    EXPECT_TRUE(widget("Many").selection().empty());
    EXPECT_EQ(widget("Many").number(), -1);
}

TEST_F(WidgetTest, HandsOutTheSelectionInItsOrder)
{
    for (const char* name : {"Ann", "Bob", "Cid"})
        addRow("Many", name, "1");
    Widget& list = widget("Many");
    list.setSelection({2, 0});
    EXPECT_EQ(list.number(), 0);
    EXPECT_EQ(list.nextSelected(true), 2);
    EXPECT_EQ(list.nextSelected(false), 0);
    EXPECT_EQ(list.nextSelected(false), std::nullopt);
    list.sortSelection(true);
    EXPECT_EQ(list.nextSelected(true), 0);
    list.sortSelection(false);
    EXPECT_EQ(list.nextSelected(true), 2);
}

TEST_F(WidgetTest, OnlyAFieldWithAMaximumLimitsWhatIsTyped)
{
    EXPECT_EQ(widget("Entry").maximumLength(), 10U);
    EXPECT_EQ(widget("Label").maximumLength(), std::numeric_limits<std::size_t>::max());
}

TEST(WidgetKinds, EveryElementOfADefinitionHasAKindOfItsName)
{
    for (const char* element :
         {"DialogWindow",    "FixedContainer", "TableContainer", "NotebookSet",    "NotebookPage",
          "ToolbarMenu",     "ToolbarItem",    "BoxContainer",   "FrameContainer", "ScrolledWindowContainer",
          "Label",           "Picture",        "Button",         "CheckBox",       "RadioButton",
          "RadioButtonItem", "ComboBoxMain",   "ComboBoxItem",   "TextEntry",      "SpinBox",
          "ListBox"}) {
        const std::optional<WidgetKind> kind = quelm::kindOfElement(element);
        ASSERT_TRUE(kind) << element;
        EXPECT_STREQ(quelm::kindName(*kind), element);
    }
}

TEST(WidgetKinds, ADefinitionCannotMakeTheDriversOwnWindows)
{
    EXPECT_FALSE(quelm::kindOfElement("MainWindow"));
    EXPECT_FALSE(quelm::kindOfElement("FileSelection"));
    EXPECT_FALSE(quelm::kindOfElement("XmlGuiDefinition"));
}

} // namespace
