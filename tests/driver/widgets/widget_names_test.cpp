// The names of the widgets as the driver has them: those of the component's definition, each once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_names.h"

#include "driver/widgets/widget_tree.h"
#include "tests/support/build_paths.h"
#include "tests/support/named_constants.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

void addNames(const quelm::Widget& widget, std::set<std::string>& names)
{
    names.insert(widget.name());
    for (const auto& child : widget.children())
        addNames(*child, names);
}

std::set<std::string> namesOfTheDefinition()
{
    std::ifstream stream(build_paths::inProject("component/frame/dialogs.xml"));
    const std::string definition{std::istreambuf_iterator<char>(stream), {}};
    quelm::WidgetTree tree;
    std::set<std::string> names;
    tree.build(definition);
    for (const auto& window : tree.windows())
        if (window->kind() == quelm::WidgetKind::dialogWindow)
            addNames(*window, names);
    return names;
}

TEST(WidgetNamesTest, AConstantHasTheNameThatItIsCalledAfter)
{
    EXPECT_STREQ(quelm::widget_names::lanFaxWindow, "Lan Fax Window");
    EXPECT_STREQ(quelm::widget_names::lanFaxRcptPbOkButton, "LanFaxRcptPB OK Button");
    EXPECT_STREQ(quelm::widget_names::name4800, "4800");
}

TEST(WidgetNamesTest, AreThoseOfTheDefinitionEachOnce)
{
    const auto values =
        valuesOfConstants(build_paths::inBuild("driver/widgets/generated/driver/widgets/widget_names.h"));
    const std::set<std::string> distinct(values.begin(), values.end());
    EXPECT_EQ(distinct.size(), values.size());
    EXPECT_GT(distinct.size(), 200U);
    EXPECT_EQ(distinct, namesOfTheDefinition());
}

} // namespace
