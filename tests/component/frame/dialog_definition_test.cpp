// The dialog definition: what hosts build from it, read with an XML parser of its own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "frame/dialog_definition.h"

#include "base/texts.h"
#include "frame/export_list.h"
#include "tests/component/frame/expected_dialogs.h"

#include <gtest/gtest.h>
#include <rapidxml/rapidxml.hpp>

#include <cstddef>
#include <cstring>
#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// One widget, of the definition or of the table. Document order and depth together say where it is nested.
struct Row {
    int depth = 0;
    std::string name;
    std::string element;
    std::string place; ///< "XPos,YPos WidthxHeight"
    std::string text;
    std::string callback;
    std::set<std::string> others; ///< "Attribute=value"

    bool operator==(const Row&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Row& row)
{
    out << row.depth << ' ' << row.name << " | " << row.element << " | " << row.place << " | " << row.text
        << " | " << row.callback << " |";
    for (const std::string& other : row.others)
        out << ' ' << other << ';';
    return out;
}

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Row parseTableLine(const std::string& line)
{
    Row row;
    row.depth = static_cast<int>(line.find_first_not_of(' ') / 2);
    std::istringstream columns(line);
    std::string others;
    for (std::string* column : {&row.name, &row.element, &row.place, &row.text, &row.callback, &others}) {
        std::getline(columns, *column, '|');
        *column = trimmed(*column);
    }
    for (std::size_t start = 0; start < others.size();) {
        const std::size_t end = others.find("; ", start);
        row.others.insert(others.substr(start, end - start));
        start = end == std::string::npos ? end : end + 2;
    }
    return row;
}

std::vector<Row> expectedRows()
{
    std::vector<Row> rows;
    std::istringstream lines(expectedDialogs);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty())
            rows.push_back(parseTableLine(line));
    return rows;
}

std::string withSeparator(const std::string& first, const char* separator, const std::string& second)
{
    return first.empty() && second.empty() ? "" : first + separator + second;
}

Row describe(const rapidxml::xml_node<>& node, int depth)
{
    std::map<std::string, std::string> attributes;
    Row row;
    row.depth = depth;
    row.element = node.name();
    for (const auto* attribute = node.first_attribute(); attribute != nullptr;
         attribute = attribute->next_attribute()) {
        const bool fresh = attributes.emplace(attribute->name(), attribute->value()).second;
        EXPECT_TRUE(fresh) << "repeated attribute " << attribute->name();
    }
    const auto take = [&attributes](const char* name) {
        const auto found = attributes.extract(name);
        return found ? found.mapped() : std::string();
    };
    row.name = take("Name");
    row.text = take("Text");
    row.callback = take("AddCallback");
    const std::string position = withSeparator(take("XPos"), ",", take("YPos"));
    const std::string size = withSeparator(take("Width"), "x", take("Height"));
    row.place = position.empty() || size.empty() ? position + size : position + ' ' + size;
    for (const auto& [name, value] : attributes)
        row.others.insert(name + '=' + value);
    return row;
}

void describeChildren(const rapidxml::xml_node<>& node, int depth, std::vector<Row>& rows)
{
    for (const auto* child = node.first_node(); child != nullptr; child = child->next_sibling()) {
        EXPECT_EQ(child->type(), rapidxml::node_element);
        rows.push_back(describe(*child, depth));
        describeChildren(*child, depth + 1, rows);
    }
}

class DialogDefinition : public testing::Test {
protected:
    /// Keeps character references as they are written.
    DialogDefinition() { document_.parse<rapidxml::parse_no_entity_translation>(buffer_.data()); }

    const rapidxml::xml_node<>& root() const { return *document_.first_node(); }

    std::vector<Row> rows() const
    {
        std::vector<Row> result;
        describeChildren(root(), 0, result);
        return result;
    }

    const std::string text = dialogDefinitionText;

private:
    std::vector<char> buffer_{dialogDefinitionText, dialogDefinitionText + sizeof dialogDefinitionText};
    rapidxml::xml_document<> document_;
};

TEST_F(DialogDefinition, HasTheSizeThatHostsRelyOn)
{
    EXPECT_EQ(std::strlen(dialogDefinitionText), 29520U);
    EXPECT_EQ(sizeof dialogDefinitionText, 29521U);
}

TEST_F(DialogDefinition, StandsOnOneLineWithNothingButBlanksBetweenElements)
{
    bool inTag = false;
    char quote = '\0';
    std::string between;
    for (const char character : text) {
        ASSERT_TRUE(character >= ' ' && character <= '~') << "code " << int{character};
        if (quote != '\0') {
            quote = character == quote ? '\0' : quote;
        } else if (inTag) {
            quote = character == '"' || character == '\'' ? character : '\0';
            inTag = character != '>';
            if (!inTag)
                between.clear();
        } else if (character == '<') {
            ASSERT_EQ(between.find_first_not_of(' '), std::string::npos) << between;
            inTag = true;
        } else {
            between += character;
        }
    }
    EXPECT_FALSE(inTag);
    EXPECT_EQ(text.front(), '<');
    EXPECT_EQ(text.back(), '>');
}

TEST_F(DialogDefinition, SeparatesAllElementsByAtLeastOneBlank)
{
    EXPECT_EQ(text.find("><"), std::string::npos);
}

TEST_F(DialogDefinition, HoldsNoCommentAndNoDeclaration)
{
    EXPECT_EQ(text.find("<!"), std::string::npos);
    EXPECT_EQ(text.find("<?"), std::string::npos);
}

TEST_F(DialogDefinition, HasOneRootOfVersionZeroPointOne)
{
    EXPECT_STREQ(root().name(), "XmlGuiDefinition");
    EXPECT_EQ(root().next_sibling(), nullptr);
    ASSERT_NE(root().first_attribute(), nullptr);
    EXPECT_STREQ(root().first_attribute()->name(), "Version");
    EXPECT_STREQ(root().first_attribute()->value(), "0.1");
    EXPECT_EQ(root().first_attribute()->next_attribute(), nullptr);
}

TEST_F(DialogDefinition, HoldsTheNineWindowsInOrder)
{
    std::vector<std::string> windows;
    for (const auto* window = root().first_node(); window != nullptr; window = window->next_sibling()) {
        EXPECT_STREQ(window->name(), "DialogWindow");
        windows.emplace_back(window->first_attribute("Name")->value());
    }
    const std::vector<std::string> expected = {
        "Lan Fax Window",
        "LanFax Add Recipient Window",
        "LanFax Recipient Properties Window",
        "LanFax Add Recipient Error Window",
        "Cover Sheet Setup Window",
        "Sender Information Window",
        "Add Rcpt From PB Window",
        "LDAP Info Dialog",
        "LanFax Add Group Window",
    };
    EXPECT_EQ(windows, expected);
}

TEST_F(DialogDefinition, HoldsEveryWidgetOfTheTableAndNoOther)
{
    const std::vector<Row> expected = expectedRows();
    const std::vector<Row> actual = rows();
    for (std::size_t i = 0; i < expected.size() && i < actual.size(); ++i)
        ASSERT_EQ(actual[i], expected[i]) << "widget " << i;
    EXPECT_EQ(actual.size(), expected.size());
}

TEST_F(DialogDefinition, RepeatsOnlyNamesThatNoCodeAddresses)
{
    std::map<std::string, int> counts;
    for (const Row& row : rows())
        ++counts[row.name];
    std::erase_if(counts, [](const auto& count) { return count.second == 1; });
    const std::map<std::string, int> expected = {{"LanFax Help Button", 3},    {"Defaults Button", 2},
                                                 {"Help Button", 4},           {"Personal PB Mimic", 2},
                                                 {"LDAP Settings Label", 2},   {"Add Rcpt Mimic", 2},
                                                 {"Add Rcpt From PB Mimic", 2}};
    EXPECT_EQ(counts, expected);
}

TEST_F(DialogDefinition, NamesOnlyExportedCallbacksButForTheHostsHelpAndACloseThatNobodyProvides)
{
    std::set<std::string> unknown;
    for (const Row& row : rows())
        if (!row.callback.empty() &&
            std::string(exportList).find(',' + row.callback + ',') == std::string::npos)
            unknown.insert(row.callback);
    EXPECT_EQ(unknown, (std::set<std::string>{"ProcessPushButtonHelpInvocation", "T40RcptPropsClose"}));
}

TEST_F(DialogDefinition, LetsOneListAloneSelectSeveralRows)
{
    std::map<std::string, bool> lists;
    for (const Row& row : rows())
        if (row.element == "ListBox")
            lists[row.name] = row.others.contains("SelectionMode=Multiple");
    const std::map<std::string, bool> expected = {{"LanFax Recipient List", true},
                                                  {"Fax PB List", false},
                                                  {"Fax Cur Recipient List", false},
                                                  {"LanFaxAddGroup Group List", false}};
    EXPECT_EQ(lists, expected);
}

TEST_F(DialogDefinition, KeepsTheArrowUnescapedAndTheLineBreakAsAReference)
{
    EXPECT_NE(text.find("Text=\"_Add >>\""), std::string::npos);
    EXPECT_EQ(text.find("&gt;"), std::string::npos);
    EXPECT_NE(text.find("Please fill in&#10;missing information"), std::string::npos);
}

} // namespace
