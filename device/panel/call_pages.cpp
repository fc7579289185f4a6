// The page about calls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/texts.h"
#include "base/translation.h"
#include "device/display/record_words.h"
#include "device/panel/panel_pages.h"

namespace quelm::device {
namespace {

constexpr int callsPerPage = 50;

const char* kindOf(const CallRecord& call)
{
    if (call.state == CallState::calling)
        return "busy";
    if (call.state == CallState::brokenOff)
        return "quiet";
    return call.code == 0 ? "good" : "bad";
}

Html receiverOf(const PanelSource& source, const CallRecord& call)
{
    if (call.receiver.empty())
        return text("-");
    const Html mailbox =
        remarkBelow(call.mailbox.empty() ? "" : localized("mailbox %s", oneLine(call.mailbox)));
    if (!receivedFile(source, call.receiver, call.number))
        return foreignText(call.receiver) + mailbox;
    return link("/received/" + call.receiver + "/call-" + std::to_string(call.number),
                foreignText(call.receiver)) +
           mailbox;
}

} // namespace

Html callTable(const PanelSource& source, const std::vector<CallRecord>& calls)
{
    Html rows;
    for (const auto& call : calls) {
        const std::string job = std::to_string(call.job);
        std::string attempt = std::to_string(call.position);
        if (call.attempt > 1)
            // Translators: a recipient's place in the job, and which call for it this is.
            attempt = localized("%d, call %d", call.position, call.attempt);
        rows +=
            tableRow({text(std::to_string(call.number)), link("/jobs/" + job, text(job)), text(attempt),
                      unbroken(momentText(call.begunAt)), text(lineTimeText(call.duration)),
                      foreignText(call.dialled), receiverOf(source, call),
                      badge(callResultText(call), kindOf(call)), text(std::to_string(call.pagesSent)),
                      text(carriageText(call)) + remarkBelow(damageText(call)), foreignText(call.identity)});
    }
    return table(localized("Calls"),
                 {localized("Call"), localized("Job"), localized("Recipient"), localized("Begun"),
                  localized("Duration"), localized("Dialled"), localized("Received by"), localized("Result"),
                  localized("Pages"), localized("Speed"), localized("Other machine")},
                 rows);
}

PanelPage callsPage(const PanelSource& source, int before)
{
    auto calls = source.log.calls(before, callsPerPage + 1);
    const bool more = calls.size() > callsPerPage;
    if (more)
        calls.pop_back();
    PanelPage page{localized("Calls"), "/calls", {}, isUnderWay(source)};
    if (calls.empty()) {
        page.content = nothing(localized("No call has been made yet."));
        return page;
    }
    page.content = callTable(source, calls) +
                   pageLinks(before > 0 ? "/calls" : "",
                             more ? "/calls?before=" + std::to_string(calls.back().number) : "");
    return page;
}

} // namespace quelm::device
