// What people know widgets by.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_label.h"

#include "driver/widgets/widget_tree.h"

#include <gtest/gtest.h>

namespace {

using quelm::labelText;
using quelm::withoutMnemonic;

constexpr const char* dialogs = R"(<XmlGuiDefinition>
  <DialogWindow Name="Inner Window" Title="Add Recipient">
    <FixedContainer Name="Area">
      <Label Name="Inner Label" Text="Fax Number:" XPos="10" YPos="10"/>
      <TextEntry Name="Inner Below" XPos="10" YPos="30"/>
      <Label Name="Inner Label Two" Text="Speed:" XPos="10" YPos="100"/>
      <ComboBoxMain Name="Inner Beside" XPos="80" YPos="102"><ComboBoxItem Name="Item"/></ComboBoxMain>
      <Label Name="Inner Label Three" Text="Cover Sheet:" XPos="10" YPos="140"/>
      <RadioButton Name="Inner Choice" Text="Print">
        <RadioButtonItem Name="Inner No" Text="Do Not Print" XPos="10" YPos="160"/>
        <RadioButtonItem Name="Inner Yes" Text="Print" XPos="10" YPos="180"/>
      </RadioButton>
      <CheckBox Name="Inner Box" Text="_Prefix" XPos="10" YPos="200"/>
      <TextEntry Name="Inner Completes" XPos="200" YPos="260"/>
      <Button Name="Inner Button" Text="_Add &gt;&gt;"/>
      <Label Name="Inner Frame Label" Text="People" XPos="10" YPos="300"/>
      <ScrolledWindowContainer Name="Frame" XPos="10" YPos="320">
        <ListBox Name="Inner List" AddListColumn1="Name"/>
      </ScrolledWindowContainer>
      <SpinBox Name="Inner Alone" AdjLowerLimit="1" AdjUpperLimit="12" XPos="500" YPos="500"/>
      <Button Name="Inner Bare"/>
    </FixedContainer>
  </DialogWindow>
</XmlGuiDefinition>)";

class WidgetLabel : public testing::Test {
protected:
    WidgetLabel() { tree.build(dialogs); }

    std::string of(const char* name) const { return labelText(*tree.find(name)); }

    quelm::WidgetTree tree;
};

TEST_F(WidgetLabel, IsTheTextThatAWidgetShows)
{
    EXPECT_EQ(of("Inner Button"), "Add >>");
    EXPECT_EQ(of("Inner Box"), "Prefix");
    EXPECT_EQ(of("Inner Window"), "Add Recipient");
}

TEST_F(WidgetLabel, IsThatOfTheLabelAboveOrBesideIt)
{
    EXPECT_EQ(of("Inner Below"), "Fax Number");
    EXPECT_EQ(of("Inner Beside"), "Speed");
    EXPECT_EQ(of("Inner List"), "People");
    EXPECT_EQ(of("Inner Choice"), "Cover Sheet");
}

TEST_F(WidgetLabel, IsThatOfTheBoxThatAFieldCompletes) { EXPECT_EQ(of("Inner Completes"), "Prefix"); }

TEST_F(WidgetLabel, IsItsWindowsTitleWhereNothingElseStands)
{
    EXPECT_EQ(of("Inner Alone"), "Add Recipient");
    EXPECT_EQ(of("Inner Bare"), "Add Recipient");
    EXPECT_EQ(of("Area"), "Add Recipient");
}

TEST_F(WidgetLabel, OfAFileChooserIsItsTitleAndNeverItsPath)
{
    auto& chooser = tree.addFileChooser(*tree.find("Inner Window"), "Choose a _phonebook");
    chooser.setText("/home/ann/book");
    EXPECT_EQ(labelText(chooser), "Choose a _phonebook");
}

TEST(Mnemonics, AreLeftOut)
{
    EXPECT_EQ(withoutMnemonic("_Add >>"), "Add >>");
    EXPECT_EQ(withoutMnemonic("Save _Group..."), "Save Group...");
    EXPECT_EQ(withoutMnemonic("a__b"), "a_b");
    EXPECT_EQ(withoutMnemonic("end_"), "end_");
}

} // namespace
