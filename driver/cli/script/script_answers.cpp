// Answers in their fixed form; a line ends in LF, texts stand in quotation marks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_answers.h"

#include "driver/cli/job/iso_moment.h"
#include "driver/cli/script/script_parser.h"

namespace quelm {
namespace {

const char* yesNo(bool value) { return value ? "yes" : "no"; }

std::string destinationText(const JobTarget& target)
{
    if (const auto* device = std::get_if<NetworkAddress>(&target))
        return "device " + inQuotes(toText(*device));
    if (const auto* queue = std::get_if<QueueTarget>(&target))
        return "queue " + inQuotes(queue->name);
    return "file " + inQuotes(std::get<FileTarget>(target).path);
}

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

std::string rowsAnswer(const std::string& list, const std::vector<std::vector<std::string>>& rows)
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

std::string receiptAnswer(const ScriptReceipt& receipt)
{
    if (receipt.kind == ScriptReceipt::Kind::waits)
        return "waits outbox job " + std::to_string(receipt.job) + " until " +
               inQuotes(isoMoment(receipt.until)) + "\n";
    std::string line = receipt.kind == ScriptReceipt::Kind::held ? "held " : "handed ";
    line += destinationText(receipt.target);
    if (std::holds_alternative<QueueTarget>(receipt.target))
        line += " job " + std::to_string(receipt.job);
    if (receipt.kind == ScriptReceipt::Kind::held)
        line += " until " + inQuotes(isoMoment(receipt.until));
    return line + "\n";
}

std::string summaryAnswer(const JobSummary& summary)
{
    std::vector<std::string> lines;
    for (const auto& one : summary.recipients)
        lines.push_back("recipient " + inQuotes(one.name) + " " + inQuotes(one.number));
    lines.push_back("document " + inQuotes(summary.document) + " pages " +
                    (summary.pages ? std::to_string(*summary.pages) : "unknown"));
    lines.push_back(std::string("cover ") + yesNo(summary.hasCoverPage));
    lines.push_back("resolution " + inQuotes(summary.resolution));
    lines.push_back("speed " + inQuotes(summary.speed));
    lines.push_back(std::string("confirmation ") + yesNo(summary.hasConfirmation));
    if (!summary.dialingPrefix.empty())
        lines.push_back("prefix " + inQuotes(summary.dialingPrefix));
    if (!summary.card.empty())
        lines.push_back("card " + inQuotes(summary.card));
    lines.push_back("time " + (summary.plan.sendAt ? inQuotes(isoMoment(*summary.plan.sendAt)) : "now"));
    if (summary.plan.target)
        lines.push_back("destination " + destinationText(*summary.plan.target));
    for (const auto& sentence : summary.notReaching)
        lines.push_back("unsent " + inQuotes(sentence));
    std::string answer = "summary " + std::to_string(lines.size()) + "\n";
    for (const auto& line : lines)
        answer += line + "\n";
    return answer;
}

} // namespace

std::string answerText(const ScriptAnswer& answer)
{
    if (answer.widget)
        return widgetAnswer(*answer.widget);
    if (answer.list)
        return rowsAnswer(*answer.list, answer.rows);
    if (answer.windows)
        return windowsAnswer(*answer.windows);
    std::string text = "ok\n";
    if (answer.summary)
        text += summaryAnswer(*answer.summary);
    if (answer.receipt)
        text += receiptAnswer(*answer.receipt);
    if (answer.question)
        text += "question " + inQuotes(answer.question->text) + "\n";
    return text;
}

} // namespace quelm
