// Widget objects: rows, selections, file choosers and handles that outlive their driver.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/gtk_handle.h"
#include "tests/support/test_dialogs.h"

#include <array>
#include <memory>

namespace {

class GtkObjectTest : public HostTest {
protected:
    GTKObject& handle(const char* name) { return *host::widget(name); }

    /// The rows that the list hands out, beginning with the first.
    std::vector<int> selectedRows(const char* list)
    {
        std::vector<int> rows;
        int row = 0;
        bool first = true;
        while (handle(list).getWidgetProperty(host::in("Value"), nullptr, nullptr, &row, &first)) {
            rows.push_back(row);
            first = false;
        }
        return rows;
    }

    void fillMany()
    {
        for (const char* name : {"Ann", "Bob", "Cid", "Dan"})
            addRow("Many", name, "1");
    }
};

TEST_F(GtkObjectTest, AFactoryAddsRowsToAList)
{
    addRow("List", "Ann", "1");
    ASSERT_EQ(widget("List").rows().count(), 1U);
    EXPECT_STREQ(widget("List").rows().cell(0, 0), "Ann");
    EXPECT_STREQ(widget("List").rows().cell(0, 2), "");
}

TEST_F(GtkObjectTest, AListIsNotFilledWithAnythingElse)
{
    GTKObject factory;
    const char* cells[] = {"Ann", nullptr};
    char** columns = const_cast<char**>(cells);
    EXPECT_FALSE(factory.createObject(&handle("List"), host::in("Button"), columns));
    EXPECT_FALSE(factory.createObject(&handle("List"), nullptr, columns));
    EXPECT_FALSE(factory.createObject(&handle("Entry"), host::in("ListItem"), columns));
    EXPECT_FALSE(factory.createObject(nullptr, host::in("ListItem"), columns));
    EXPECT_EQ(widget("List").rows().count(), 0U);
}

TEST_F(GtkObjectTest, ClearingAListRemovesItsRows)
{
    addRow("List", "Ann", "1");
    handle("List").clearListItems();
    EXPECT_EQ(widget("List").rows().count(), 0U);
}

TEST_F(GtkObjectTest, ACellIsCopiedIntoTheBuffer)
{
    addRow("List", "Ann", "555");
    std::array<char, 4096> buffer{};
    char* text = buffer.data();
    EXPECT_TRUE(handle("List").getListItemData(&text, 1, 0));
    EXPECT_EQ(text, buffer.data());
    EXPECT_STREQ(buffer.data(), "555");
}

TEST_F(GtkObjectTest, WithoutABufferTheRowsOwnTextIsPointedAt)
{
    addRow("List", "Ann", "555");
    char* text = nullptr;
    EXPECT_TRUE(handle("List").getListItemData(&text, 0, 0));
    EXPECT_STREQ(text, "Ann");
}

TEST_F(GtkObjectTest, ALongCellStaysWithinTheBuffer)
{
    const std::string longName(5000, 'x');
    addRow("List", longName.c_str(), "555");
    std::array<char, 4097> buffer;
    buffer.fill('#');
    char* text = buffer.data();
    EXPECT_TRUE(handle("List").getListItemData(&text, 0, 0));
    EXPECT_EQ(std::string(buffer.data()), longName.substr(0, 4095));
    EXPECT_EQ(buffer[4096], '#');
}

TEST_F(GtkObjectTest, ACellThatDoesNotExistLeavesTheBufferUntouched)
{
    addRow("List", "Ann", "555");
    std::array<char, 4096> buffer{"untouched"};
    char* text = buffer.data();
    EXPECT_FALSE(handle("List").getListItemData(&text, 0, 1));
    EXPECT_FALSE(handle("List").getListItemData(&text, 3, 0));
    EXPECT_FALSE(handle("List").getListItemData(&text, -1, 0));
    EXPECT_FALSE(handle("List").getListItemData(&text, 0, -1));
    EXPECT_FALSE(handle("Entry").getListItemData(&text, 0, 0));
    EXPECT_FALSE(handle("List").getListItemData(nullptr, 0, 0));
    EXPECT_STREQ(buffer.data(), "untouched");
}

TEST_F(GtkObjectTest, TheSelectedRowsOfAListAreHandedOutOneByOne)
{
    fillMany();
    widget("Many").setSelection({3, 1});
    EXPECT_EQ(selectedRows("Many"), (std::vector{3, 1}));
    handle("Many").sortIntegerGList(true);
    EXPECT_EQ(selectedRows("Many"), (std::vector{1, 3}));
    handle("Many").sortIntegerGList(false);
    EXPECT_EQ(selectedRows("Many"), (std::vector{3, 1}));
}

TEST_F(GtkObjectTest, TheFlagThatAsksForTheFirstRowIsOnlyRead)
{
    fillMany();
    widget("Many").setSelection({2});
    bool first = true;
    int row = -5;
    EXPECT_TRUE(handle("Many").getWidgetProperty(host::in("Value"), nullptr, nullptr, &row, &first));
    EXPECT_TRUE(first);
    EXPECT_EQ(row, 2);
    first = false;
    row = -5;
    EXPECT_FALSE(handle("Many").getWidgetProperty(host::in("Value"), nullptr, nullptr, &row, &first));
    EXPECT_EQ(row, -5);
}

TEST_F(GtkObjectTest, OtherPropertiesAreReadByTheirSlot)
{
    int number = 0;
    EXPECT_TRUE(handle("Spin").getWidgetProperty(host::in("Value"), nullptr, nullptr, &number, nullptr));
    EXPECT_EQ(number, 12);
    bool flag = false;
    EXPECT_TRUE(handle("Many").getWidgetProperty(host::in("Sensitivity"), nullptr, nullptr, nullptr, &flag));
    EXPECT_TRUE(flag);
}

TEST_F(GtkObjectTest, ASelectionIsCountedOnListsOnly)
{
    fillMany();
    widget("Many").setSelection({0, 1, 2});
    int count = 77;
    EXPECT_TRUE(handle("Many").getListSelectionCount(count));
    EXPECT_EQ(count, 3);
    count = 77;
    EXPECT_FALSE(handle("Entry").getListSelectionCount(count));
    EXPECT_EQ(count, 77);
}

TEST_F(GtkObjectTest, FlagsAndTextsAreSetByTheirSlot)
{
    EXPECT_TRUE(handle("Check").setWidgetProperty(host::in("Value"), true));
    EXPECT_TRUE(widget("Check").flag());
    bool ticked = false;
    EXPECT_TRUE(handle("Check").getWidgetProperty(host::in("Value"), &ticked));
    EXPECT_TRUE(ticked);
    EXPECT_TRUE(handle("Label").setWidgetProperty(host::in("WidgetText"), host::in("text")));
    EXPECT_EQ(widget("Label").text(), "text");
    EXPECT_FALSE(handle("Check").setWidgetProperty(host::in("Value"), host::in("text")));
    EXPECT_FALSE(handle("Entry").setWidgetProperty(host::in("Value"), true));
    EXPECT_EQ(widget("Entry").text(), "initial");
}

TEST_F(GtkObjectTest, AnObjectCanBecomeAFileChooser)
{
    GTKObject chooser;
    chooser.setObjectName(host::in("Chooser"));
    EXPECT_TRUE(
        chooser.createObject(&handle("Window"), host::in("FileSelection"), host::in("Load..."), true));
    EXPECT_STREQ(chooser.getObjectName(), "Chooser");
    chooser.addGTKObjectToList(host::in("Chooser"));
    EXPECT_EQ(host::widget("Chooser"), &chooser);
    EXPECT_TRUE(chooser.setWidgetProperty(host::in("Value"), host::in("/books/*.xdb")));
    host::TextBuffer path;
    EXPECT_TRUE(host::readText("Chooser", path));
    EXPECT_STREQ(path.c_str(), "/books/*.xdb");
    EXPECT_FALSE(widget("Chooser").visible());
    host::show("Chooser");
    EXPECT_TRUE(widget("Chooser").visible());
}

TEST_F(GtkObjectTest, OnlyTheTwoButtonsOfAChooserTakeCallbacks)
{
    GTKObject chooser;
    chooser.createObject(&handle("Window"), host::in("FileSelection"), host::in("Load..."), true);
    const auto handler = [] {};
    EXPECT_TRUE(chooser.setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("ok_button"), handler));
    EXPECT_TRUE(
        chooser.setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("cancel_button"), handler));
    EXPECT_FALSE(
        chooser.setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("help_button"), handler));
    EXPECT_FALSE(chooser.setWidgetProperty(host::in("Value"), host::in("ok_button"), handler));
    EXPECT_FALSE(
        handle("Window").setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("ok_button"), handler));
}

TEST_F(GtkObjectTest, ADestroyedChooserLeavesTheTree)
{
    {
        GTKObject chooser;
        chooser.createObject(&handle("Window"), host::in("FileSelection"), host::in("Load..."), true);
        chooser.addGTKObjectToList(host::in("Chooser"));
        ASSERT_NE(host::widget("Chooser"), nullptr);
    }
    EXPECT_EQ(host::widget("Chooser"), nullptr);
}

TEST_F(GtkObjectTest, NothingElseCanBeCreated)
{
    GTKObject object;
    EXPECT_FALSE(object.createObject(&handle("Window"), host::in("Button"), host::in("Title"), true));
    EXPECT_FALSE(object.createObject(nullptr, host::in("FileSelection"), host::in("Title"), true));
}

TEST_F(GtkObjectTest, AWidgetOfTheDefinitionKeepsItsName)
{
    handle("Check").setObjectName(host::in("Other"));
    EXPECT_STREQ(handle("Check").getObjectName(), "Check");
}

TEST_F(GtkObjectTest, AFactoryAnswersFalseToWhatNeedsAWidget)
{
    GTKObject factory;
    int count = 0;
    bool flag = false;
    EXPECT_FALSE(factory.getListSelectionCount(count));
    EXPECT_FALSE(factory.getWidgetProperty(host::in("Value"), &flag));
    EXPECT_FALSE(factory.setWidgetProperty(host::in("Visibility"), true));
    EXPECT_STREQ(factory.getObjectName(), "");
    factory.clearListItems();
    factory.setListFreezeState(true);
    factory.sortIntegerGList(true);
}

TEST(GtkObjectLifetime, AnObjectThatOutlivesItsDriverStandsForNoWidget)
{
    GTKObject chooser;
    {
        quelm::HostState state("/opt/quelm", "ann");
        state.tree.build(testDialogs);
        chooser.createObject(host::widget("Window"), host::in("FileSelection"), host::in("Load..."), true);
        ASSERT_NE(quelm::widgetOf(&chooser), nullptr);
    }
    EXPECT_EQ(quelm::widgetOf(&chooser), nullptr);
    EXPECT_FALSE(chooser.setWidgetProperty(host::in("Visibility"), true));
}

} // namespace
