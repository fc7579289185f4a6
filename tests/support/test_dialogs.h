// A dialog definition with one widget of every kind, for tests of the parts below the driver.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_TEST_DIALOGS_H
#define TESTS_SUPPORT_TEST_DIALOGS_H

#include "driver/boundary/host_state.h"
#include "host/calls.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

inline constexpr const char* testDialogs = R"(<XmlGuiDefinition Version="0.1">
  <DialogWindow Name="Window" Title="Title" Parent="Main Driver Window" AddCallback="Close">
    <FixedContainer Name="Fixed">
      <Label Name="Label" Text="One&#10;Two"/>
      <Label Name="Twice" Text="the first"/>
      <Label Name="Twice" Text="the second"/>
      <Picture Name="Picture" PicFile="icon/base/Fax/AddRecipient.gif"/>
      <Button Name="Button" Text="_Add >>" Sensitivity="false"/>
      <ToolbarMenu Name="Toolbar" Alignment="Horizontal"><ToolbarItem Name="Tool" Text="Tool"/></ToolbarMenu>
      <BoxContainer Name="Frame Box"><FrameContainer Name="Frame" Visibility="false"/></BoxContainer>
      <TextEntry Name="Entry" Text="initial" SetMaximum="10"/>
      <CheckBox Name="Check" Text="Check"/>
      <RadioButton Name="Radio"><RadioButtonItem Name="Radio A" Text="A"/><RadioButtonItem Name="Radio B"/></RadioButton>
      <ComboBoxMain Name="Combo"><ComboBoxItem Name="Combo A"/><ComboBoxItem Name="Combo B" Text="B"/><ComboBoxItem Name="Combo C"/></ComboBoxMain>
      <SpinBox Name="Spin" AdjDefaultValue="12" AdjLowerLimit="1" AdjUpperLimit="12" AdjIncrement="1"/>
      <TableContainer Name="Table"><NotebookSet Name="Tabs"><NotebookPage Name="Page A" Text="A"/><NotebookPage Name="Page B" Text="B"/></NotebookSet></TableContainer>
      <ScrolledWindowContainer Name="Scroll">
        <ListBox Name="List" AddListColumn1="Name" AddListColumn2="Number" AddListColumn3="Mailbox"/>
      </ScrolledWindowContainer>
      <ListBox Name="Many" SelectionMode="Multiple" AddListColumn1="Name" AddListColumn2="Number"/>
    </FixedContainer>
  </DialogWindow>
  <DialogWindow Name="Second Window" Title="Second" Visibility="false"/>
</XmlGuiDefinition>)";

/// The options that features and bindings know by name.
inline constexpr const char* optionDialogs = R"(<XmlGuiDefinition Version="0.1">
  <DialogWindow Name="Lan Fax Window" Title="Options">
    <RadioButton Name="LanFax Cover Sheet Option"><RadioButtonItem Name="LanFax No Cover Sheet"/><RadioButtonItem Name="LanFax Cover Sheet"/></RadioButton>
    <Button Name="LanFax Setup Cover Sheet Button" Sensitivity="false"/>
    <TextEntry Name="LanFax Cover Sheet Notes" SetMaximum="64"/>
    <ComboBoxMain Name="LanFax Send Speed"><ComboBoxItem Name="4800"/><ComboBoxItem Name="14.4"/><ComboBoxItem Name="Super G3"/></ComboBoxMain>
    <ComboBoxMain Name="LanFax Resolution"><ComboBoxItem Name="Standard"/><ComboBoxItem Name="Superfine"/><ComboBoxItem Name="Fine"/></ComboBoxMain>
    <RadioButton Name="LanFax Send Time"><RadioButtonItem Name="LanFax Send Now"/><RadioButtonItem Name="LanFax Send At"/></RadioButton>
    <SpinBox Name="SendAtHr" AdjDefaultValue="12" AdjLowerLimit="1" AdjUpperLimit="12"/>
    <SpinBox Name="SendAtMin" AdjDefaultValue="0" AdjLowerLimit="0" AdjUpperLimit="59"/>
    <ComboBoxMain Name="SendAtAmPm"><ComboBoxItem Name="SendAm"/><ComboBoxItem Name="SendPm"/></ComboBoxMain>
    <CheckBox Name="LanFax Dialing Prefix"/><TextEntry Name="LanFax Dialing Prefix Info" SetMaximum="4"/>
    <CheckBox Name="LanFax Credit Card"/><TextEntry Name="LanFax Credit Card Info" SetMaximum="31"/>
    <CheckBox Name="LanFax Pref Duplicates"/><CheckBox Name="LanFax Pref Remove One"/>
    <CheckBox Name="LanFax Pref Current List"/>
    <TextEntry Name="LanFax Personal PB Name" Editable="false"/>
    <TextEntry Name="LanFax Shared PB Name" Editable="false"/>
    <CheckBox Name="Show Rcpt Info Checkbox"/>
    <RadioButton Name="Show Rcpt Info"><RadioButtonItem Name="Show All Rcpt Info" Sensitivity="false"/><RadioButtonItem Name="Show Custom Text" Sensitivity="false"/></RadioButton>
    <TextEntry Name="Cover Sheet Custom Text" SetMaximum="31" Sensitivity="false"/>
    <CheckBox Name="Show Sender Info Checkbox"/>
    <Label Name="Sender Info" Sensitivity="false"/><Button Name="Sender Properties Button" Sensitivity="false"/>
    <TextEntry Name="Sender Fax Name" SetMaximum="31"/>
    <TextEntry Name="RecipientName" SetMaximum="31"/>
  </DialogWindow>
</XmlGuiDefinition>)";

/// A host with dialogs and without a component.
class HostTest : public testing::Test {
protected:
    explicit HostTest(const char* definition = testDialogs)
    {
        if (!pDriverDirector->parseXMLBuffer(host::in(definition)))
            throw std::runtime_error(state.failures.last().definition);
    }

    quelm::Widget& widget(const char* name) { return *state.tree.find(name); }

    void addRow(const char* list, const char* name, const char* number)
    {
        const char* cells[] = {name, number, nullptr};
        GTKObject factory;
        EXPECT_TRUE(host::addListRow(factory, host::widget(list), cells));
    }

    quelm::HostState state{"/opt/quelm", "ann"};
};

class OptionsTest : public HostTest {
protected:
    OptionsTest() : HostTest(optionDialogs) {}
};

#endif
