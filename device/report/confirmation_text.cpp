// Writes a confirmation sheet as text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/columns.h"
#include "device/report/confirmation_sheet.h"
#include "device/report/report_contents.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace quelm::device {
namespace {

constexpr std::size_t columns = 79;

std::string_view nextCharacter(std::string_view text)
{
    const char* const begin = text.data();
    return text.substr(0, static_cast<std::size_t>(g_utf8_next_char(begin) - begin));
}

/// The head of `text` that `width` columns hold, which ends at a blank where there is one. What stands behind
/// it becomes `text`.
std::string takeLine(std::string& text, std::size_t width)
{
    std::size_t taken = 0;
    std::size_t used = 0;
    std::size_t blank = 0; // behind the last blank among them
    while (taken < text.size()) {
        const auto character = nextCharacter(std::string_view(text).substr(taken));
        const std::size_t wide = widthOf(std::string(character));
        if (used + wide > width && taken > 0)
            break;
        used += wide;
        taken += character.size();
        if (character == " ")
            blank = taken;
    }
    const std::size_t end = taken < text.size() && blank > 0 && text[taken] != ' ' ? blank : taken;
    std::string line = text.substr(0, end);
    text.erase(0, end);
    line.erase(line.find_last_not_of(' ') + 1);
    text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
    return line;
}

/// A title in three lines at most.
std::string shortTitle(std::string title)
{
    constexpr int mostLines = 3;
    constexpr std::string_view ellipsis = "...";
    std::string lines;
    for (int line = 1; line <= mostLines && !title.empty(); ++line) {
        std::string rest = title;
        std::string taken = takeLine(rest, columns);
        if (line == mostLines && !rest.empty()) {
            rest = title;
            taken = takeLine(rest, columns - ellipsis.size()) + std::string(ellipsis);
            rest.clear();
        }
        lines += taken + "\n";
        title = std::move(rest);
    }
    return lines;
}

/// `head`, and `text` behind it in as many lines as it takes, all beginning where the first does.
std::string hanging(const std::string& head, std::string text)
{
    std::string lines;
    const std::string indent(widthOf(head), ' ');
    do {
        std::string line = (lines.empty() ? head : indent) + takeLine(text, columns - indent.size());
        line.erase(line.find_last_not_of(' ') + 1);
        lines += line + "\n";
    } while (!text.empty());
    return lines;
}

std::string padded(const std::string& text, std::size_t width, bool right)
{
    const std::string blanks(width - std::min(width, widthOf(text)), ' ');
    return right ? blanks + text : text + blanks;
}

/// The table's columns are as wide as what stands in them; a number that is too long to stand beside the
/// others has a line of its own.
class Table {
public:
    explicit Table(const ReportContents& contents)
    {
        add(contents.heads);
        for (const auto& row : contents.rows)
            add(row.cells);
        std::size_t others = 0;
        for (std::size_t i = 0; i < reportColumns; ++i)
            others += i == numberColumn ? 0 : widths_[i] + gap;
        const std::size_t room = columns - std::min(columns, others);
        widths_[numberColumn] = std::min(widths_[numberColumn], room);
    }

    [[nodiscard]] std::string line(const ReportCells& cells) const
    {
        if (widthOf(cells[numberColumn]) <= widths_[numberColumn])
            return joined(cells);
        ReportCells rest = cells;
        rest[0].clear();
        rest[numberColumn].clear();
        return hanging(padded(cells[0], widths_[0], true) + std::string(gap, ' '), cells[numberColumn]) +
               joined(rest);
    }

    [[nodiscard]] std::string indent() const { return std::string(widths_[0] + gap, ' '); }

private:
    static constexpr std::size_t gap = 2;
    static constexpr std::size_t numberColumn = 1;
    static constexpr std::array<bool, reportColumns> rightAligned = {true, false, false, true, true, true};

    void add(const ReportCells& cells)
    {
        for (std::size_t i = 0; i < reportColumns; ++i)
            widths_[i] = std::max(widths_[i], widthOf(cells[i]));
    }

    [[nodiscard]] std::string joined(const ReportCells& cells) const
    {
        std::string line;
        for (std::size_t i = 0; i < reportColumns; ++i)
            line += padded(cells[i], widths_[i], rightAligned[i]) + std::string(gap, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        return line + "\n";
    }

    std::array<std::size_t, reportColumns> widths_{};
};

} // namespace

std::string confirmationText(const JobRecord& job, const std::vector<CallRecord>& calls)
{
    const ReportContents contents = reportContents(job, calls);
    std::string text = hanging("", contents.heading) + std::string(columns, '=') + "\n\n";
    text += shortTitle(contents.title) + hanging("", contents.outcome) + "\n";

    std::size_t widest = 0;
    for (const auto& fact : contents.facts)
        widest = std::max(widest, widthOf(fact.label));
    for (const auto& fact : contents.facts)
        text += hanging(padded(fact.label + ":", widest + 3, false), fact.value);

    const Table table(contents);
    text += "\n" + table.line(contents.heads) + std::string(columns, '-') + "\n";
    for (const auto& row : contents.rows) {
        text += table.line(row.cells) + hanging(table.indent(), row.result);
        for (const auto& detail : row.details)
            text += hanging(table.indent(), detail);
    }
    for (const auto& note : contents.notes)
        text += "\n" + hanging("", note);
    return text;
}

} // namespace quelm::device
