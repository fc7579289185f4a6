// Parts PostScript into lines and procedures.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/program_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t lineLength = 100;

std::size_t elementsOf(const std::vector<Statement>& statements)
{
    std::size_t all = 0;
    for (const auto& statement : statements)
        all += statement.elements;
    return all;
}

std::string joined(const std::vector<Statement>& statements)
{
    std::string text = "{";
    for (const auto& statement : statements)
        text += " " + statement.text;
    return text + " }";
}

/// The statements in procedures that are run one after the other.
std::vector<Statement> grouped(const std::vector<Statement>& statements)
{
    std::vector<Statement> groups;
    std::vector<Statement> group;
    std::size_t elements = 0;
    const auto endGroup = [&] {
        groups.push_back({joined(group) + " exec", 2});
        group.clear();
        elements = 0;
    };
    for (const auto& statement : statements) {
        if (elements + statement.elements > longestProcedure)
            endGroup();
        elements += statement.elements;
        group.push_back(statement);
    }
    endGroup();
    return groups;
}

} // namespace

Statement plainStatement(std::string text)
{
    const auto blanks = std::count(text.begin(), text.end(), ' ');
    return {std::move(text), static_cast<std::size_t>(blanks) + 1};
}

std::string procedureOf(std::vector<Statement> statements)
{
    while (elementsOf(statements) > longestProcedure)
        statements = grouped(statements);
    return joined(statements);
}

std::string numberText(long number) { return std::to_string(number); }

std::string numberText(double number)
{
    const double thousandths = std::round(number * 1000);
    if (thousandths == std::round(number) * 1000)
        return numberText(std::lround(number));
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), thousandths / 1000,
                                   std::chars_format::fixed, 3);
    std::string text(digits.data(), end.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    return text;
}

std::string inLines(std::string_view tokens)
{
    std::string lines;
    std::size_t length = 0;
    while (!tokens.empty()) {
        const auto token = tokens.substr(0, tokens.find(' '));
        tokens.remove_prefix(std::min(token.size() + 1, tokens.size()));
        const bool opensLine = length == 0;
        if (!opensLine)
            lines += length + 1 + token.size() > lineLength ? '\n' : ' ';
        length = opensLine || lines.back() == '\n' ? token.size() : length + 1 + token.size();
        lines += token;
    }
    return lines + '\n';
}

} // namespace quelm
