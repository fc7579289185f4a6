// Reading dialog definitions, good and bad.
#include "driver/widgets/definition.h"

#include "base/error.h"
#include "driver/widgets/widget_tree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string problemOf(const std::string& definition)
{
    quelm::WidgetTree tree;
    try {
        windowsOfDefinition(tree, definition);
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
    quelm::WidgetTree tree;
    const auto windows = windowsOfDefinition(tree, inWindow("<Button Name=\"Add\" Text=\"_Add >>\"/>"));
    EXPECT_EQ(windows.at(0)->children().at(0)->text(), "_Add >>");
}

TEST(DefinitionTest, KeepsTheOrderAndNestingOfTheDocument)
{
    quelm::WidgetTree tree;
    const auto windows =
        windowsOfDefinition(tree, inWindow("<FixedContainer Name=\"A\"><Label Name=\"B\"/></FixedContainer>"
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
    for (int level = 0; level < depth; ++level) {
        text += "<FixedContainer>";
    }
    for (int level = 0; level < depth; ++level) {
        text += "</FixedContainer>";
    }
    return inWindow(text);
}

INSTANTIATE_TEST_SUITE_P(
    Definitions, BadDefinitionTest,
    testing::Values(BadDefinition{"Empty", "", "No document element found at byte 0"},
                    BadDefinition{"NoXml", "hello", "at byte"},
                    BadDefinition{"Unclosed", "<XmlGuiDefinition><DialogWindow>", "mismatch at byte"},
                    BadDefinition{"OtherRoot", "<Html/>", "root element is \"Html\""},
                    BadDefinition{"TwoRoots", "<XmlGuiDefinition/><XmlGuiDefinition/>", "behind its root"},
                    BadDefinition{"UnknownElement", inWindow("<Slider Name=\"S\"/>"),
                                  "element Slider \"S\" is of no kind"},
                    BadDefinition{"OutsideAWindow",
                                  "<XmlGuiDefinition><Label Name=\"L\"/></XmlGuiDefinition>",
                                  "element Label \"L\" stands outside a DialogWindow"},
                    BadDefinition{"WindowInWindow", inWindow("<DialogWindow Name=\"D\"/>"),
                                  "stands inside another widget"},
                    BadDefinition{"TooDeep", nested(100000), "nested too deeply"}),
    [](const auto& definition) { return definition.param.name; });

} // namespace
