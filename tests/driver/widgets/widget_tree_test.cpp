// The tree: names, windows, file choosers and observers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_tree.h"

#include "base/error.h"
#include "tests/support/test_dialogs.h"

namespace {

using quelm::Widget;
using quelm::WidgetKind;
using quelm::WidgetTree;

class Windows : public quelm::WidgetObserver {
public:
    void windowAdded(Widget& window) override { text += "+" + window.name(); }
    void windowRemoved(Widget& window) override { text += "-" + window.name(); }
    std::string text;
};

TEST(WidgetTreeTest, StartsWithTheDriversOwnVisibleMainWindow)
{
    const WidgetTree tree;
    const Widget* window = tree.find("Main Driver Window");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->kind(), WidgetKind::mainWindow);
    EXPECT_TRUE(window->visible());
}

TEST(WidgetTreeTest, BuildsEveryWindowHiddenAlsoWithoutTheAttribute)
{
    WidgetTree tree;
    EXPECT_TRUE(tree.build(testDialogs));
    EXPECT_FALSE(tree.find("Window")->visible());
    EXPECT_FALSE(tree.find("Second Window")->visible());
}

TEST(WidgetTreeTest, ANameThatOccursTwiceMeansTheFirstInDocumentOrder)
{
    WidgetTree tree;
    tree.build(testDialogs);
    EXPECT_EQ(tree.find("Twice")->text(), "the first");
}

TEST(WidgetTreeTest, AnUnknownNameMeansNoWidget)
{
    WidgetTree tree;
    tree.build(testDialogs);
    EXPECT_EQ(tree.find("No Such Widget"), nullptr);
    EXPECT_EQ(tree.find(""), nullptr);
}

TEST(WidgetTreeTest, AWindowThatIsThereAlreadyStaysAsItIs)
{
    WidgetTree tree;
    tree.build(testDialogs);
    Widget* const entry = tree.find("Entry");
    entry->setText("typed");
    const std::size_t windows = tree.windows().size();
    EXPECT_FALSE(tree.build(testDialogs));
    EXPECT_EQ(tree.windows().size(), windows);
    EXPECT_EQ(tree.find("Entry"), entry);
    EXPECT_EQ(entry->text(), "typed");
}

TEST(WidgetTreeTest, ABrokenDefinitionAddsNothing)
{
    WidgetTree tree;
    EXPECT_THROW(tree.build("<XmlGuiDefinition><DialogWindow Name=\"Good\"/><DialogWindow Name=\"Bad\">"
                            "<Nonsense/></DialogWindow></XmlGuiDefinition>"),
                 quelm::Error);
    EXPECT_EQ(tree.find("Good"), nullptr);
    EXPECT_EQ(tree.windows().size(), 1U);
}

TEST(WidgetTreeTest, TellsObserversAboutNewWindows)
{
    WidgetTree tree;
    Windows windows;
    tree.addObserver(windows);
    tree.build(testDialogs);
    EXPECT_EQ(windows.text, "+Window+Second Window");
}

TEST(WidgetTreeTest, ARemovedFileChooserIsNoLongerFound)
{
    WidgetTree tree;
    tree.build(testDialogs);
    Widget& chooser = tree.addFileChooser(*tree.find("Window"), "Load...");
    EXPECT_FALSE(chooser.visible());
    EXPECT_EQ(*chooser.attribute("Title"), "Load...");
    tree.registerName("Chooser", chooser);
    EXPECT_EQ(tree.find("Chooser"), &chooser);
    tree.removeFileChooser(chooser);
    EXPECT_EQ(tree.find("Chooser"), nullptr);
}

TEST(WidgetTreeTest, ARegisteredNameDoesNotHideAWidgetOfTheDefinition)
{
    WidgetTree tree;
    tree.build(testDialogs);
    Widget* const label = tree.find("Label");
    tree.registerName("Label", *tree.find("Entry"));
    EXPECT_EQ(tree.find("Label"), label);
}

} // namespace
