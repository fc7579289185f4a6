// The fake host keeps to what the boundary promises, so that the tests against it mean something.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/calls.h"
#include "tests/support/component_test.h"

#include <cstring>

using FakeHost = StartedComponentTest;

TEST_F(FakeHost, WritesAtMost4096BytesIntoABufferWithoutASize)
{
    host.setText("Search String", longText(5000));
    char buffer[4098];
    std::memset(buffer, '#', sizeof buffer);

    ASSERT_TRUE(GetWidgetPropertyByName(host::in("Search String"), host::in("Value"), buffer, nullptr,
                                        nullptr, nullptr));

    EXPECT_EQ(std::strlen(buffer), 4095U);
    EXPECT_EQ(buffer[4096], '#');
}

TEST_F(FakeHost, CutsALongTextAtACharacterBoundary)
{
    host.setText("Search String", longText(4094) + "\xC3\xA4");
    host::TextBuffer buffer;

    ASSERT_TRUE(host::readText("Search String", buffer));

    EXPECT_EQ(buffer.c_str(), longText(4094));
}

TEST_F(FakeHost, ReadsOnlyTheSlotThatSuits)
{
    int number = 77;
    bool flag = false;
    EXPECT_FALSE(host::readInteger("RecipientName", number));
    EXPECT_FALSE(host::readTicked("LanFax Recipient List", flag));
    EXPECT_FALSE(host::readTicked("No Such Widget", flag));
    EXPECT_EQ(number, 77);
    EXPECT_TRUE(host::readInteger("LanFax Recipient List", number));
    EXPECT_EQ(number, -1);
}

TEST_F(FakeHost, HandsOutSelectedRowsOneByOne)
{
    for (const char* name : {"Anne", "Bernard", "Carla", "Dora"})
        addRecipient(name, "1");
    job().updatePBEntryList(RECIPIENT_LIST);
    host.setSelection("LanFax Recipient List", {3, 1});
    GTKObject* list = host::widget("LanFax Recipient List");
    list->sortIntegerGList(true);

    std::vector<int> rows;
    int row = 0;
    bool first = true;
    while (list->getWidgetProperty(host::in("Value"), nullptr, nullptr, &row, &first)) {
        rows.push_back(row);
        first = false;
    }

    EXPECT_EQ(rows, (std::vector<int>{1, 3}));
    EXPECT_EQ(host.number("LanFax Recipient List"), 1);
}

TEST_F(FakeHost, FailsWhenTold)
{
    host.faults.failNth(fake::Op::createDirectory, 2);
    EXPECT_TRUE(host::createDirectory("/opt/quelm/a", 777));
    EXPECT_FALSE(host::createDirectory("/opt/quelm/b", 777));
    EXPECT_TRUE(host::createDirectory("/opt/quelm/c", 777));
}

TEST_F(FakeHost, KeepsAUserFromWhatIsHiddenOrInsensitive)
{
    EXPECT_THROW(host.press("LanFaxAddRcpt OK Button"), std::logic_error);
    EXPECT_THROW(host.press("LanFax Details Button"), std::logic_error);
    EXPECT_THROW(host.type("LanFax Personal PB Name", "x"), std::logic_error);
    EXPECT_THROW(host.type("LanFax Dialing Prefix Info", "12345"), std::logic_error);
}

TEST_F(FakeHost, BindsWidgetsToTheOptionsThatRuleThem)
{
    EXPECT_FALSE(host.sensitive("LanFax Setup Cover Sheet Button"));
    host.choose("LanFax Cover Sheet Option", 1);
    EXPECT_TRUE(host.sensitive("LanFax Setup Cover Sheet Button"));
    host.choose("LanFax Cover Sheet Option", 0);
    EXPECT_FALSE(host.sensitive("LanFax Setup Cover Sheet Button"));
}
