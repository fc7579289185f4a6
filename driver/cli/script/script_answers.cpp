// Answers in their fixed form; a line ends in LF, texts stand in quotation marks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_answers.h"

#include "driver/cli/script/script_parser.h"

namespace quelm {
namespace {

const char* yesNo(bool value) { return value ? "yes" : "no"; }

} // namespace

std::string widgetAnswer(const WidgetView& view)
{
    std::string line = "widget " + inQuotes(view.name) + " kind " + view.kind + " visible " +
                       yesNo(view.visible) + " sensitive " + yesNo(view.sensitive) + " operable " +
                       yesNo(view.operable);
    if (view.text)
        line += " text " + inQuotes(*view.text);
    if (view.ticked)
        line += std::string(" ticked ") + yesNo(*view.ticked);
    if (view.value)
        line += " value " + std::to_string(*view.value);
    if (!view.items.empty())
        line += " items";
    for (const auto& item : view.items)
        line += " " + inQuotes(item);
    if (view.rowCount) {
        line += " rows " + std::to_string(*view.rowCount) + " selected";
        if (view.selection.empty())
            line += " none";
    }
    for (const int row : view.selection)
        line += " " + std::to_string(row);
    return line + "\n";
}

std::string rowsAnswer(std::string_view list, const std::vector<std::vector<std::string>>& rows)
{
    std::string answer = "rows " + inQuotes(list) + " " + std::to_string(rows.size()) + "\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        answer += "row " + std::to_string(i);
        for (const auto& cell : rows[i])
            answer += " " + inQuotes(cell);
        answer += "\n";
    }
    return answer;
}

std::string windowsAnswer(const std::vector<WidgetView>& windows)
{
    std::string answer = "windows " + std::to_string(windows.size()) + "\n";
    for (const auto& window : windows)
        answer += "window " + inQuotes(window.name) + " title " + inQuotes(window.title.value_or("")) + "\n";
    return answer;
}

std::string questionAnswer(const QuestionView& question)
{
    return "question " + inQuotes(question.text) + "\n";
}

std::string deviceAnswer(const NetworkAddress& device)
{
    return "handed device " + inQuotes(toText(device)) + "\n";
}

std::string queueAnswer(std::string_view queue, int job)
{
    return "handed queue " + inQuotes(queue) + " job " + std::to_string(job) + "\n";
}

} // namespace quelm
