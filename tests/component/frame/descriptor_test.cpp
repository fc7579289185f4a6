// The descriptor objects, and that the definition, the export list and the widgets' names fit together.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "frame/descriptor.h"

#include "tests/support/component_test.h"
#include "tests/support/entry_points.h"

#include <algorithm>
#include <functional>
#include <set>

namespace {

// Names that several widgets bear, and how many; no code addresses them.
const std::map<std::string, int> sharedNames = {
    {"LanFax Help Button", 3},     {"Defaults Button", 2},     {"Help Button", 4},
    {"Personal PB Mimic", 2},      {"LDAP Settings Label", 2}, {"Add Rcpt Mimic", 2},
    {"Add Rcpt From PB Mimic", 2},
};

// The widgets that the callbacks address.
constexpr const char* addressedWidgets[] = {
    "Lan Fax Window",
    "Lan Fax TabSet",
    "LanFax Recipient List",
    "LanFax Details Button",
    "LanFax Save Group Button",
    "LanFax Save Entry Button",
    "LanFax Remove Button",
    "LanFaxConfSheet",
    "LanFax Cover Sheet Option",
    "LanFax Cover Sheet Notes",
    "LanFax Resolution",
    "LanFax Send Speed",
    "LanFax Send Time",
    "SendAtHr",
    "SendAtMin",
    "SendAtAmPm",
    "LanFax Dialing Prefix",
    "LanFax Dialing Prefix Info",
    "LanFax Credit Card",
    "LanFax Credit Card Info",
    "LanFax Pref Duplicates",
    "LanFax Pref Remove One",
    "LanFax Pref Current List",
    "LanFax Pref Current Cover Notes",
    "LanFax Personal PB Name",
    "LanFax Shared PB Name",
    "LDAP PB Status",
    "LDAP More Info Button",
    "LanFax Add Recipient Window",
    "RecipientName",
    "RecipientNumber",
    "RecipientOrganization",
    "RecipientTelNumber",
    "RecipientEmailAddr",
    "RecipientMailbox",
    "AddtoPersonalPB",
    "LanFax Recipient Properties Window",
    "RcptPropsName",
    "RcptPropsNumber",
    "RcptPropsOrganization",
    "RcptPropsTelNumber",
    "RcptPropsEmailAddr",
    "RcptPropsMailbox",
    "LanFax Add Recipient Error Window",
    "LanFax Add Fax Rcpt Error Label",
    "Cover Sheet Setup Window",
    "Show Rcpt Info Checkbox",
    "Show Custom Text",
    "Cover Sheet Custom Text",
    "Show Sender Info Checkbox",
    "Sender Info",
    "Sender Information Window",
    "Sender Fax Number",
    "Sender Fax Name",
    "Sender Fax Organization",
    "Sender Fax Tel Number",
    "Sender Fax Email Addr",
    "Add Rcpt From PB Window",
    "Current PB Type",
    "LDAP PB Type",
    "Fax PB List",
    "Search Label",
    "Search Status",
    "Search String",
    "Search Button",
    "Add Button",
    "Add Button2",
    "Fax Cur Recipient List",
    "Cur Rcpt Remove Button",
    "Cur Rcpt Prop Button",
    "LDAP Info Dialog",
    "LDAP HostPort",
    "LDAP Search Directory Root",
    "LDAP Server Type",
    "Login Name",
    "Name",
    "Email",
    "Bus Phone",
    "Bus Addr",
    "Office",
    "LDAP City",
    "LDAP State",
    "LDAP ZipCode",
    "LDAP Country",
    "LDAP Fax",
    "LanFax Add Group Window",
    "LanFaxAddGroup Group Name",
    "LanFaxAddGroup Group List",
};

} // namespace

class DescriptorTest : public StartedComponentTest {
protected:
    void forEachWidget(const std::function<void(const fake::Widget&)>& use)
    {
        std::function<void(const fake::Widget&)> visit = [&](const fake::Widget& widget) {
            use(widget);
            for (const auto& child : widget.children)
                visit(*child);
        };
        for (const auto& window : host.tree.windows())
            visit(*window);
    }
};

TEST_F(DescriptorTest, NamesTheComponentAndItsVersion)
{
    EXPECT_STREQ(_QuelmSODisplayName, "Bramblecor Pro Family Lan Fax Library");
    EXPECT_STREQ(_QuelmSOVersion, "0.1");
}

TEST_F(DescriptorTest, TheExportListNamesFiftyEntryPointsInOrder)
{
    std::string expected = ",";
    for (const char* name : entryPoints)
        expected += std::string(name) + ",";
    EXPECT_EQ(std::size(entryPoints), 50U);
    EXPECT_EQ(_QuelmSOExportList, expected);
}

TEST_F(DescriptorTest, TheHostParsesThePublishedDefinition)
{
    ASSERT_NE(pLanFaxXMLData, nullptr);
    EXPECT_EQ(std::string(pLanFaxXMLData).size(), 29520U);
    EXPECT_EQ(host.parsedText, pLanFaxXMLData);
}

TEST_F(DescriptorTest, TheDefinitionDescribesNineWindowsOfWhichOnlyTheFaxDialogIsNotHidden)
{
    std::vector<std::string> names;
    for (const auto& window : host.tree.windows()) {
        names.push_back(window->name);
        EXPECT_EQ(window->kind, "DialogWindow") << window->name;
        EXPECT_EQ(window->visible, window->name == "Lan Fax Window") << window->name;
    }
    EXPECT_EQ(names, (std::vector<std::string>{
                         "Lan Fax Window", "LanFax Add Recipient Window",
                         "LanFax Recipient Properties Window", "LanFax Add Recipient Error Window",
                         "Cover Sheet Setup Window", "Sender Information Window", "Add Rcpt From PB Window",
                         "LDAP Info Dialog", "LanFax Add Group Window"}));
}

TEST_F(DescriptorTest, EveryNameIsUniqueButTheOnesThatNoCodeAddresses)
{
    std::map<std::string, int> counts;
    forEachWidget([&counts](const fake::Widget& widget) {
        if (!widget.name.empty())
            ++counts[widget.name];
    });
    std::map<std::string, int> several;
    std::copy_if(counts.begin(), counts.end(), std::inserter(several, several.end()),
                 [](const auto& entry) { return entry.second > 1; });
    EXPECT_EQ(several, sharedNames);
}

TEST_F(DescriptorTest, EveryWidgetThatTheCallbacksAddressExistsOnce)
{
    for (const char* name : addressedWidgets)
        EXPECT_EQ(host.tree.countNamed(name), 1) << name;
}

TEST_F(DescriptorTest, OnlyTheJobsRecipientListHasMultipleSelection)
{
    std::map<std::string, bool> lists;
    forEachWidget([&lists](const fake::Widget& widget) {
        if (widget.isList())
            lists[widget.name] = widget.hasMultipleSelection();
    });
    EXPECT_EQ(lists, (std::map<std::string, bool>{{"LanFax Recipient List", true},
                                                  {"Fax PB List", false},
                                                  {"Fax Cur Recipient List", false},
                                                  {"LanFaxAddGroup Group List", false}}));
}

TEST_F(DescriptorTest, EveryCallbackOfTheDefinitionIsAnEntryPointButTwo)
{
    std::set<std::string> others;
    forEachWidget([&others](const fake::Widget& widget) {
        const bool known = std::find(std::begin(entryPoints), std::end(entryPoints), widget.callback) !=
                           std::end(entryPoints);
        if (!widget.callback.empty() && !known)
            others.insert(widget.callback);
    });
    EXPECT_EQ(others, (std::set<std::string>{"ProcessPushButtonHelpInvocation", "T40RcptPropsClose"}));
}

TEST_F(DescriptorTest, ClosingThePropertiesWindowFromItsFrameCallsNoCodeOfTheComponent)
{
    host.widget("LanFax Recipient Properties Window").visible = true;
    host.close("LanFax Recipient Properties Window");
    EXPECT_EQ(host.journal.all(), "");
    EXPECT_FALSE(host.visible("LanFax Recipient Properties Window"));
}

TEST_F(DescriptorTest, HelpIsTheHostsAffair)
{
    host.press("LanFax Help Button");
    EXPECT_EQ(host.journal.all(), lines({"help"}));
}
