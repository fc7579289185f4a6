// Lays the help of a command out for a terminal of 80 columns.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_page.h"

#include "base/command_line/wrapped_text.h"
#include "base/terminal/columns.h"
#include "base/translation.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t pageWidth = 80;
constexpr std::size_t margin = 2;
constexpr std::size_t widestLabel = 26; ///< a wider one has its text below it

/// Labels on the left, what they mean on the right.
using Rows = std::vector<std::pair<std::string, std::string>>;

void addRows(std::string& page, const std::string& heading, const Rows& rows, std::size_t labels)
{
    if (rows.empty())
        return;
    page += "\n" + heading + ":\n";
    const auto textAt = margin + labels + margin;
    for (const auto& [label, text] : rows) {
        std::string line = std::string(margin, ' ') + label;
        std::size_t used = margin + widthOf(label);
        for (const auto& part : wrappedLines(text, pageWidth - textAt)) {
            if (used + margin > textAt) {
                page += line + "\n";
                line.clear();
                used = 0;
            }
            if (!part.empty())
                line += std::string(textAt - used, ' ') + part;
            used = pageWidth;
        }
        page += line + "\n";
    }
}

void addText(std::string& page, const std::string& text, std::size_t indent = 0)
{
    for (const auto& line : wrappedLines(text, pageWidth - indent))
        page += std::string(indent, ' ') + line + "\n";
}

std::string usageText(const CommandView& command)
{
    std::string text;
    // Translators: ahead of how a program is called.
    const auto heading = localized("Usage: ");
    for (const auto& words : usagesOf(command))
        text +=
            (text.empty() ? heading : std::string(widthOf(heading), ' ')) + command.path + " " + words + "\n";
    return text;
}

std::string inheritedText(const CommandView& command)
{
    std::string names;
    for (const auto& option : command.inherited)
        names += (names.empty() ? "" : ", ") + option.names.back();
    const auto program = command.path.substr(0, command.path.find(' '));
    // Translators: a program, options.
    return localized("Options of %s that may stand here, too: %s", program, names);
}

Rows rowsOf(const std::vector<OptionView>& options)
{
    Rows rows;
    for (const auto& option : options)
        rows.emplace_back(labelOf(option), fullDescriptionOf(option));
    return rows;
}

Rows optionRows(const CommandView& command, const std::string& section)
{
    std::vector<OptionView> options;
    std::ranges::copy_if(command.options, std::back_inserter(options),
                         [&section](const OptionView& option) { return option.section == section; });
    return rowsOf(options);
}

/// The lists of a page, each under its heading.
std::vector<std::pair<std::string, Rows>> listsOf(const CommandView& command)
{
    std::vector<std::pair<std::string, Rows>> lists;
    Rows commands;
    for (const auto& below : command.commands)
        commands.emplace_back(below.name, below.description);
    lists.emplace_back(localized("Commands"), commands);
    lists.emplace_back(localized("Arguments"), rowsOf(command.places));
    for (const auto& section : sectionsOf(command))
        lists.emplace_back(section, optionRows(command, section));
    return lists;
}

/// The width of the column of labels, alike in all lists of a page.
std::size_t labelWidth(const std::vector<std::pair<std::string, Rows>>& lists)
{
    std::size_t widest = 0;
    for (const auto& list : lists)
        for (const auto& row : list.second)
            if (const auto width = widthOf(row.first); width <= widestLabel)
                widest = std::max(widest, width);
    return widest;
}

} // namespace

std::string helpPage(const CommandView& command)
{
    std::string page = usageText(command) + "\n";
    addText(page, command.description);
    for (const auto& paragraph : command.texts.details) {
        page += "\n";
        addText(page, paragraph);
    }
    const auto lists = listsOf(command);
    for (const auto& [heading, rows] : lists)
        addRows(page, heading, rows, labelWidth(lists));
    if (!command.inherited.empty()) {
        page += "\n";
        addText(page, inheritedText(command));
    }
    if (!command.texts.examples.empty())
        page += "\n" + localized("Examples") + ":\n";
    for (const auto& example : command.texts.examples) {
        page += std::string(margin, ' ') + example.words + "\n";
        addText(page, example.text, margin * 3);
    }
    return page;
}

} // namespace quelm
