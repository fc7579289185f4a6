// The names of the widgets as the component has them: those of the definition that it ships, each once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/widget_names.h"

#include "frame/dialog_definition.h"
#include "tests/support/build_paths.h"
#include "tests/support/named_constants.h"

#include <gtest/gtest.h>
#include <rapidxml/rapidxml.hpp>

#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

void addNames(const rapidxml::xml_node<>& node, std::set<std::string>& names)
{
    for (const auto* child = node.first_node(); child != nullptr; child = child->next_sibling()) {
        names.insert(child->first_attribute("Name")->value());
        addNames(*child, names);
    }
}

std::set<std::string> namesOfTheDefinition()
{
    std::vector<char> text(dialogDefinitionText,
                           dialogDefinitionText + std::strlen(dialogDefinitionText) + 1);
    rapidxml::xml_document<> document;
    document.parse<0>(text.data());
    std::set<std::string> names;
    addNames(*document.first_node(), names);
    return names;
}

} // namespace

TEST(WidgetNamesTest, AConstantHasTheNameThatItIsCalledAfter)
{
    EXPECT_STREQ(widget_names::lanFaxWindow, "Lan Fax Window");
    EXPECT_STREQ(widget_names::lanFaxOkButton, "LanFax OK Button");
    EXPECT_STREQ(widget_names::ldapZipCode, "LDAP ZipCode");
    EXPECT_STREQ(widget_names::name144, "14.4");
}

TEST(WidgetNamesTest, AreThoseOfTheDefinitionEachOnce)
{
    const auto values =
        valuesOfConstants(build_paths::inBuild("component/common/generated/common/widget_names.h"));
    const std::set<std::string> distinct(values.begin(), values.end());
    EXPECT_EQ(distinct.size(), values.size());
    EXPECT_EQ(distinct.size(), 240U);
    EXPECT_EQ(distinct, namesOfTheDefinition());
}
