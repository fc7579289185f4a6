// Which slot carries which property, on every kind of widget.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/properties.h"

#include "tests/support/test_dialogs.h"

#include <array>

namespace {

using quelm::Slot;

constexpr std::optional<Slot> none;

struct Row {
    const char* widget;
    std::optional<Slot> value;
    std::optional<Slot> text; // "WidgetText" and "Title" alike
};

// "Visibility" and "Sensitivity" are flags on all of them.
constexpr std::array<Row, 19> table{{
    {"Window", none, Slot::text},
    {"Fixed", none, none},
    {"Label", none, Slot::text},
    {"Picture", none, none},
    {"Button", none, none},
    {"Toolbar", none, none},
    {"Tool", none, none},
    {"Frame", none, none},
    {"Entry", Slot::text, Slot::text},
    {"Check", Slot::flag, none},
    {"Radio", Slot::integer, none},
    {"Radio A", Slot::flag, none},
    {"Combo", Slot::integer, none},
    {"Combo A", none, none},
    {"Spin", Slot::integer, none},
    {"Tabs", Slot::integer, none},
    {"Page A", none, none},
    {"List", Slot::integer, none},
    {"Main Driver Window", none, none},
}};

class PropertiesTest : public HostTest {
protected:
    struct Slots {
        std::array<char, 4096> text{"untouched"};
        int integer = 77;
        bool flag = false;
        bool found = false;
    };

    Slots read(const char* name, const char* property)
    {
        Slots slots;
        slots.found =
            quelm::readProperty(widget(name), property, slots.text.data(), &slots.integer, &slots.flag);
        return slots;
    }
};

TEST_F(PropertiesTest, EachPropertyHasTheOneSlotOfItsKind)
{
    for (const Row& row : table) {
        const quelm::Widget& of = widget(row.widget);
        EXPECT_EQ(quelm::slotOf(of, "Value"), row.value) << row.widget;
        EXPECT_EQ(quelm::slotOf(of, "WidgetText"), row.text) << row.widget;
        EXPECT_EQ(quelm::slotOf(of, "Title"), row.text) << row.widget;
        EXPECT_EQ(quelm::slotOf(of, "Visibility"), Slot::flag) << row.widget;
        EXPECT_EQ(quelm::slotOf(of, "Sensitivity"), Slot::flag) << row.widget;
        EXPECT_EQ(quelm::slotOf(of, "Colour"), none) << row.widget;
    }
}

TEST_F(PropertiesTest, AFileChooserHasAPathForItsValue)
{
    const quelm::Widget& chooser = state.tree.addFileChooser(widget("Window"), "Load...");
    EXPECT_EQ(quelm::slotOf(chooser, "Value"), Slot::text);
}

TEST_F(PropertiesTest, WithoutAPointerForItsSlotNothingIsRead)
{
    for (const Row& row : table) {
        for (const char* property : {"Value", "Title", "Visibility"}) {
            const quelm::Widget& of = widget(row.widget);
            const std::optional<Slot> slot = quelm::slotOf(of, property);
            PropertiesTest::Slots slots;
            EXPECT_FALSE(quelm::readProperty(of, property, slot == Slot::text ? nullptr : slots.text.data(),
                                             slot == Slot::integer ? nullptr : &slots.integer,
                                             slot == Slot::flag ? nullptr : &slots.flag));
            EXPECT_STREQ(slots.text.data(), "untouched");
            EXPECT_EQ(slots.integer, 77);
            EXPECT_FALSE(slots.flag);
        }
    }
}

TEST_F(PropertiesTest, ReadingWritesTheSuitableSlotAlone)
{
    const Slots entry = read("Entry", "Value");
    EXPECT_TRUE(entry.found);
    EXPECT_STREQ(entry.text.data(), "initial");
    EXPECT_EQ(entry.integer, 77);

    const Slots spin = read("Spin", "Value");
    EXPECT_EQ(spin.integer, 12);
    EXPECT_STREQ(spin.text.data(), "untouched");

    const Slots visible = read("Entry", "Visibility");
    EXPECT_TRUE(visible.flag);
    EXPECT_EQ(visible.integer, 77);
}

TEST_F(PropertiesTest, ALongTextIsCutAtACharacterWithin4096Bytes)
{
    std::string text;
    while (text.size() < 6000)
        text += "€";
    widget("Entry").setText(text);
    std::array<char, 4097> buffer;
    buffer.fill('#');
    EXPECT_TRUE(quelm::readProperty(widget("Entry"), "Value", buffer.data(), nullptr, nullptr));
    EXPECT_EQ(std::string(buffer.data()), text.substr(0, 4095));
    EXPECT_EQ(buffer[4096], '#');

    widget("Entry").setText("a" + text);
    EXPECT_TRUE(quelm::readProperty(widget("Entry"), "Value", buffer.data(), nullptr, nullptr));
    EXPECT_EQ(std::string(buffer.data()), "a" + text.substr(0, 4092));
}

TEST_F(PropertiesTest, InALabelTheReferencesStandForLineBreaks)
{
    EXPECT_TRUE(quelm::writeProperty(widget("Label"), "WidgetText", "a&#10;b&#13;&#10&amp;&#13;", 0, false));
    EXPECT_EQ(widget("Label").text(), "a\nb\n&#10&amp;\n");
}

TEST_F(PropertiesTest, InATextFieldTheyStayWhatTheUserTyped)
{
    EXPECT_TRUE(quelm::writeProperty(widget("Entry"), "WidgetText", "a&#10;b", 0, false));
    EXPECT_EQ(widget("Entry").text(), "a&#10;b");
}

TEST_F(PropertiesTest, ATextFieldTakesALongerTextFromTheComponentThanFromAUser)
{
    const std::string text(100, 'x');
    EXPECT_TRUE(quelm::writeProperty(widget("Entry"), "Value", text.c_str(), 0, false));
    EXPECT_EQ(widget("Entry").text(), text);
}

TEST_F(PropertiesTest, ANullTextEmptiesAField)
{
    EXPECT_TRUE(quelm::writeProperty(widget("Entry"), "Value", nullptr, 0, false));
    EXPECT_EQ(widget("Entry").text(), "");
}

TEST_F(PropertiesTest, ASpinBoxTakesTheNearestNumberThatItHas)
{
    EXPECT_TRUE(quelm::writeProperty(widget("Spin"), "Value", nullptr, 99, false));
    EXPECT_EQ(widget("Spin").number(), 12);
    EXPECT_TRUE(quelm::writeProperty(widget("Spin"), "Value", nullptr, -5, false));
    EXPECT_EQ(widget("Spin").number(), 1);
}

TEST_F(PropertiesTest, AnIndexThatDoesNotExistChangesNothing)
{
    EXPECT_TRUE(quelm::writeProperty(widget("Combo"), "Value", nullptr, 1, false));
    EXPECT_FALSE(quelm::writeProperty(widget("Combo"), "Value", nullptr, 3, false));
    EXPECT_EQ(widget("Combo").number(), 1);
}

TEST_F(PropertiesTest, WindowsThatAreKeptNeitherAppearNorVanish)
{
    const bool open = widget("Window").visible();
    {
        const quelm::WindowsKept windows(state);
        EXPECT_TRUE(quelm::writeProperty(widget("Window"), "Visibility", nullptr, 0, !open));
        EXPECT_TRUE(quelm::writeProperty(widget("Second Window"), "Visibility", nullptr, 0, true));
        EXPECT_TRUE(quelm::writeProperty(widget("Entry"), "Visibility", nullptr, 0, false));
        EXPECT_EQ(widget("Window").visible(), open);
        EXPECT_FALSE(widget("Second Window").visible());
        EXPECT_FALSE(widget("Entry").visible()) << "what stands in a window is the component's to show";
    }
    EXPECT_TRUE(quelm::writeProperty(widget("Second Window"), "Visibility", nullptr, 0, true));
    EXPECT_TRUE(widget("Second Window").visible());
}

TEST_F(PropertiesTest, FlagsOfItemsCanBeSetOneByOne)
{
    EXPECT_TRUE(quelm::writeProperty(widget("Combo B"), "Sensitivity", nullptr, 0, false));
    EXPECT_FALSE(widget("Combo B").sensitive());
    EXPECT_TRUE(widget("Combo A").sensitive());
    EXPECT_TRUE(quelm::writeProperty(widget("Radio B"), "Value", nullptr, 0, true));
    EXPECT_EQ(widget("Radio").number(), 1);
}

} // namespace
