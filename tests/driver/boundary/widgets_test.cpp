// The boundary's functions on widgets by name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/widgets.h"

#include "tests/support/test_dialogs.h"

namespace {

class WidgetsTest : public HostTest {};

TEST_F(WidgetsTest, AWidgetHasOneHandle)
{
    GTKObject* handle = host::widget("Entry");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(host::widget("Entry"), handle);
    EXPECT_STREQ(handle->getObjectName(), "Entry");
}

TEST_F(WidgetsTest, AnUnknownNameHasNone)
{
    EXPECT_EQ(host::widget("No Such Widget"), nullptr);
    EXPECT_EQ(GetWidgetByName(nullptr), nullptr);
    EXPECT_EQ(state.failures.last().definition,
              "its dialogs lack something that it asks for; install the component again");
}

TEST_F(WidgetsTest, ANameThatOccursTwiceReachesTheFirst)
{
    host::setWidgetText("Twice", "changed");
    EXPECT_EQ(widget("Twice").text(), "changed");
    std::array<char, 4096> text{};
    EXPECT_TRUE(GetWidgetPropertyByName(host::in("Twice"), host::in("WidgetText"), text.data(), nullptr,
                                        nullptr, nullptr));
    EXPECT_STREQ(text.data(), "changed");
    EXPECT_EQ(widget("Fixed").children()[2]->text(), "the second");
}

TEST_F(WidgetsTest, PropertiesOfUnknownWidgetsAreNeitherReadNorSet)
{
    int integer = 77;
    EXPECT_FALSE(host::readInteger("No Such Widget", integer));
    EXPECT_EQ(integer, 77);
    EXPECT_FALSE(SetWidgetPropertyByName(host::in("No Such Widget"), host::in("Value"), nullptr, 0, 1, true));
    EXPECT_FALSE(SetWidgetPropertyByName(nullptr, host::in("Value"), nullptr, 0, 1, true));
    EXPECT_FALSE(SetWidgetPropertyByName(host::in("Combo"), nullptr, nullptr, 0, 1, true));
    EXPECT_FALSE(SetWidgetPropertyByName(host::in("Combo"), host::in("Colour"), nullptr, 0, 1, true));
    EXPECT_EQ(widget("Combo").number(), 0);
}

TEST_F(WidgetsTest, ValuesComeBackAsTheyWereSet)
{
    host::setTextValue("Entry", "Ann");
    host::setTicked("Check", true);
    host::setIndex("Tabs", 1);
    host::TextBuffer text;
    bool ticked = false;
    int page = 0;
    EXPECT_TRUE(host::readText("Entry", text));
    EXPECT_TRUE(host::readTicked("Check", ticked));
    EXPECT_TRUE(host::readInteger("Tabs", page));
    EXPECT_STREQ(text.c_str(), "Ann");
    EXPECT_TRUE(ticked);
    EXPECT_EQ(page, 1);
}

TEST_F(WidgetsTest, AListWithSeveralSelectedRowsReadsTheLowest)
{
    for (const char* name : {"Ann", "Bob", "Cid"})
        addRow("Many", name, "1");
    widget("Many").setSelection({2, 1});
    int row = 0;
    EXPECT_TRUE(host::readInteger("Many", row));
    EXPECT_EQ(row, 1);
}

TEST(WidgetsWithoutADriver, AreNotFound)
{
    int integer = 77;
    EXPECT_EQ(host::widget("Entry"), nullptr);
    EXPECT_FALSE(host::readInteger("Entry", integer));
    EXPECT_FALSE(SetWidgetPropertyByName(host::in("Entry"), host::in("Value"), host::in("x"), 0, 0, false));
}

} // namespace
