// Tables and lines about jobs of the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/outbox_listing.h"

#include "base/terminal/columns.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/handover/recipient_check.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"

#include <algorithm>

namespace quelm {
namespace {

constexpr std::size_t longestCell = 40;

std::string shownState(const OutboxJob& job, std::time_t now)
{
    if (job.isOverdue(now))
        return localized("overdue");
    switch (job.state) {
    case OutboxState::waiting:
        return localized("waiting");
    case OutboxState::handingOver:
        return localized("being handed over");
    case OutboxState::handedOver:
        return job.waitsInQueue(now) ? localized("held by the queue") : localized("handed over");
    case OutboxState::uncertain:
        return localized("uncertain");
    case OutboxState::failed:
        return localized("failed");
    case OutboxState::cancelled:
        break;
    }
    return localized("cancelled");
}

/// The time that matters: when a job is due, or when it ended.
std::time_t timeOf(const OutboxJob& job, std::time_t now)
{
    return job.ended == 0 || job.waitsInQueue(now) ? job.due : job.ended;
}

std::string shownRecipients(const OutboxJob& job)
{
    if (job.recipients.empty())
        return "";
    std::string first = shownText(job.recipients.front().name, longestCell);
    const std::size_t more = job.recipients.size() - 1;
    if (more == 0)
        return first;
    // Translators: a recipient, and how many there are beside.
    return localizedCount("%s, %d more", "%s, %d more", more, first, more);
}

std::string shownPlace(const OutboxJob& job)
{
    return job.place.empty() ? shownTarget(job.target) : job.place;
}

void add(std::vector<std::vector<std::string>>& rows, const std::string& subject, const std::string& text)
{
    if (!text.empty())
        rows.push_back({subject, text});
}

} // namespace

std::string listedJobs(const std::vector<OutboxJob>& jobs, std::time_t now)
{
    if (jobs.empty())
        return localized("the outbox is empty") + "\n";
    std::vector<std::vector<std::string>> rows{{localized("job"), localized("state"), localized("time"),
                                                localized("document"), localized("recipients"),
                                                localized("destination"), localized("note")}};
    for (const auto& job : jobs)
        rows.push_back({std::to_string(job.number), shownState(job, now), shownMoment(timeOf(job, now), now),
                        shownText(job.title, longestCell), shownRecipients(job),
                        shownText(shownPlace(job), longestCell), oneLine(job.note)});
    return alignedColumns(rows);
}

std::string shownJob(const OutboxJob& job, std::time_t now)
{
    std::vector<std::vector<std::string>> rows;
    add(rows, localized("job"), std::to_string(job.number));
    add(rows, localized("state"), shownState(job, now));
    add(rows, localized("document"), job.title);
    add(rows, localized("user"), job.user);
    for (const auto& recipient : job.recipients)
        add(rows, localized("recipient"), shownRecipient(recipient));
    add(rows, localized("destination"), shownTarget(job.target));
    add(rows, localized("handed over to"), job.place);
    add(rows, localized("put in"), shownMoment(job.queued, now));
    add(rows, localized("due"), shownMoment(job.due, now));
    if (job.ended != 0)
        add(rows, localized("ended"), shownMoment(job.ended, now));
    if (job.chargesCard)
        add(rows, localized("credit card"),
            localized("charged; its number is not kept once it is handed over"));
    if (job.sentBefore != 0)
        add(rows, localized("sent before"), localized("as job %d", job.sentBefore));
    add(rows, localized("note"), job.note);
    const bool canBeMadeAnew = !job.documentPath.empty();
    const std::string again = !job.hasStream  ? localized("not kept")
                              : canBeMadeAnew ? localized("kept, with its document")
                                              : localized("kept, without its document");
    add(rows, localized("print job"), again);
    return alignedColumns(rows);
}

std::optional<std::string> questionOf(const OutboxJob& job, std::time_t now)
{
    if (job.isOverdue(now))
        // Translators: a job's number, its document, when it was due, and its number twice.
        return localized(
            "job %d (%s) was due %s and is not sent without your word: run \"quelm-driver outbox "
            "send %d\", or \"quelm-driver outbox cancel %d\"",
            job.number, shownText(job.title), shownMoment(job.due, now), job.number, job.number);
    if (job.state == OutboxState::uncertain)
        // Translators: a job's number, its document, its destination, and its number twice.
        return localized("job %d (%s): %s may have it already, whole or in part; look there, then run "
                         "\"quelm-driver outbox send %d\", or \"quelm-driver outbox cancel %d\"",
                         job.number, shownText(job.title), shownTarget(job.target), job.number, job.number);
    return std::nullopt;
}

} // namespace quelm
