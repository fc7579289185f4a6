// Reading dialog definitions, good and bad.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/definition.h"

#include "base/error.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// Widgets that nobody looks at.
class Unheard : public quelm::WidgetListener {
public:
    void widgetChanged(quelm::Widget& /*widget*/, quelm::WidgetChange /*what*/) override {}
    void rowsChanged(quelm::Widget& /*list*/) override {}
};

std::string problemOf(const std::string& definition)
{
    Unheard listener;
    try {
        windowsOfDefinition(listener, definition);
    } catch (const quelm::Error& error) {
        return error.what();
    }
    return "none";
}

std::string inWindow(const std::string& content)
{
    return "<XmlGuiDefinition><DialogWindow Name=\"Window\">" + content +
           "</DialogWindow></XmlGuiDefinition>";
}

TEST(DefinitionTest, AnUnescapedGreaterSignInAnAttributeIsText)
{
    Unheard listener;
    const auto windows = windowsOfDefinition(listener, inWindow("<Button Name=\"Add\" Text=\"_Add >>\"/>"));
    EXPECT_EQ(windows.at(0)->children().at(0)->text(), "_Add >>");
}

TEST(DefinitionTest, KeepsTheOrderAndNestingOfTheDocument)
{
    Unheard listener;
    const auto windows = windowsOfDefinition(
        listener, inWindow("<FixedContainer Name=\"A\"><Label Name=\"B\"/></FixedContainer>"
                           "<Label Name=\"C\"/>"));
    const quelm::Widget& window = *windows.at(0);
    ASSERT_EQ(window.children().size(), 2U);
    EXPECT_EQ(window.children()[0]->name(), "A");
    EXPECT_EQ(window.children()[0]->children().at(0)->name(), "B");
    EXPECT_EQ(window.children()[0]->parent(), &window);
    EXPECT_EQ(window.children()[1]->name(), "C");
}

struct BadDefinition {
    const char* name;
    std::string text;
    std::string problem;
};

class BadDefinitionTest : public testing::TestWithParam<BadDefinition> {};

TEST_P(BadDefinitionTest, IsRefusedWithItsReason)
{
    const std::string problem = problemOf(GetParam().text);
    EXPECT_NE(problem.find("the dialog definition cannot be used: "), std::string::npos) << problem;
    EXPECT_NE(problem.find(GetParam().problem), std::string::npos) << problem;
}

std::string nested(int depth)
{
    std::string text;
    for (int level = 0; level < depth; ++level)
        text += "<FixedContainer>";
    for (int level = 0; level < depth; ++level)
        text += "</FixedContainer>";
    return inWindow(text);
}

INSTANTIATE_TEST_SUITE_P(
    Definitions, BadDefinitionTest,
    testing::Values(
        BadDefinition{"Empty", "", "No document element found at byte 0"},
        BadDefinition{"NoXml", "hello", "at byte"},
        BadDefinition{"Unclosed", "<XmlGuiDefinition><DialogWindow>", "mismatch at byte"},
        BadDefinition{"OtherRoot", "<Html/>", "root element is \"Html\""},
        BadDefinition{"TwoRoots", "<XmlGuiDefinition/><XmlGuiDefinition/>", "behind its root"},
        BadDefinition{"UnknownElement", inWindow("<Slider Name=\"S\"/>"), "element Slider at byte "},
        BadDefinition{"OutsideAWindow", "<XmlGuiDefinition><Label Name=\"L\"/></XmlGuiDefinition>",
                      "element Label at byte 19 stands outside a DialogWindow"},
        BadDefinition{"WindowInWindow", inWindow("<DialogWindow Name=\"D\"/>"),
                      "stands inside another widget"},
        BadDefinition{"TooDeep", nested(100000), "nested too deeply"}),
    [](const auto& definition) { return definition.param.name; });

} // namespace
