// Gathers a confirmation sheet from what the device remembers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/report/report_contents.h"

#include "base/texts.h"
#include "base/translation.h"
#include "device/display/record_words.h"

#include <algorithm>
#include <map>

namespace quelm::device {
namespace {

/// The last call for each recipient, by its position.
std::map<int, const CallRecord*> lastCalls(const std::vector<CallRecord>& calls)
{
    std::map<int, const CallRecord*> last;
    for (const auto& call : calls) {
        const CallRecord*& kept = last[call.position];
        if (kept == nullptr || kept->attempt < call.attempt ||
            (kept->attempt == call.attempt && kept->number < call.number))
            kept = &call;
    }
    return last;
}

std::string resultOf(const JobRecord& job, const RecipientRecord& recipient, const CallRecord* call)
{
    if (job.state == JobState::failed)
        return localized("not called");
    const std::string result = recipientResultText(recipient, call);
    return result.empty() ? recipientStateText(recipient.state) : result;
}

ReportRow rowOf(const JobRecord& job, const RecipientRecord& recipient, const CallRecord* call)
{
    ReportRow row;
    row.sent = recipient.state == RecipientState::sent;
    row.cells = {std::to_string(recipient.position),
                 oneLine(recipient.number),
                 recipient.lastCallAt ? momentText(*recipient.lastCallAt) : "-",
                 recipient.lastCallAt ? lineTimeText(recipient.lastDuration) : "-",
                 job.pages > 0 ? pagesOfText(recipient.pagesSent, job.pages) : "-",
                 std::to_string(recipient.attempts)};
    row.result = resultOf(job, recipient, call);
    if (!recipient.mailbox.empty())
        row.details.push_back(localized("mailbox %s", oneLine(recipient.mailbox)));
    if (call == nullptr)
        return row;
    if (const std::string carriage = carriageText(*call); !carriage.empty())
        row.details.push_back(carriage);
    if (const std::string damage = damageText(*call); !damage.empty())
        row.details.push_back(damage);
    if (const std::string identity = oneLine(call->identity); !trimmed(identity).empty())
        row.details.push_back(localized("the other machine is %s", identity));
    return row;
}

} // namespace

ReportContents reportContents(const JobRecord& job, const std::vector<CallRecord>& calls)
{
    const auto last = lastCalls(calls);
    ReportContents contents;
    contents.heading = localized("Fax confirmation");
    contents.title = titleText(job);
    contents.heads = {localized("No."),      localized("Number"), localized("Last call"),
                      localized("Duration"), localized("Pages"),  localized("Calls")};

    std::chrono::milliseconds onTheLine{0};
    for (const auto& call : calls)
        onTheLine += call.duration;
    unsigned long sent = 0;
    for (const auto& recipient : job.recipients) {
        const auto call = last.find(recipient.position);
        contents.rows.push_back(rowOf(job, recipient, call == last.end() ? nullptr : call->second));
        sent += contents.rows.back().sent ? 1 : 0;
    }
    contents.complete = sent == job.recipients.size();
    if (job.state == JobState::failed)
        contents.outcome = localized("nobody was called");
    else
        // Translators: of a fax's recipients, so many received all of it.
        contents.outcome = localizedCount("sent to %d of %d recipient", "sent to %d of %d recipients",
                                          job.recipients.size(), sent, job.recipients.size());

    contents.facts = {
        {localized("Job"), std::to_string(job.number)},
        {localized("Received"), momentText(job.receivedAt)},
        {localized("From"), oneLine(job.from)},
        {localized("Pages"), job.pages > 0 ? std::to_string(job.pages) : "-"},
        {localized("Cover sheet"), job.reading.coverSheet ? localized("yes") : localized("no")},
        {localized("Resolution"), resolutionText(job.reading.resolution)},
        {localized("Speed"), speedText(job.reading.speed)},
        {localized("Calls"), std::to_string(calls.size())},
        {localized("Line time"), lineTimeText(onTheLine)},
    };
    if (!job.problem.empty())
        contents.facts.push_back({localized("Problem"), oneLine(job.problem)});
    if (std::ranges::any_of(calls, &CallRecord::fellBack))
        contents.notes.push_back(
            localized("Super G3 (V.34) was asked for. The device has no modem for it: the "
                      "calls were made at 14400 bit/s or less."));
    return contents;
}

} // namespace quelm::device
