// Puts the outbox's jobs into words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/outbox_texts.h"

#include "base/translation.h"
#include "driver/desktop/sending/destination_choice.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"

#include <variant>

namespace quelm {
namespace {

DestinationKind kindOf(const JobTarget& target)
{
    if (std::holds_alternative<FileTarget>(target))
        return DestinationKind::file;
    return std::holds_alternative<QueueTarget>(target) ? DestinationKind::queue : DestinationKind::device;
}

std::string failedText(const OutboxJob& job, const std::string& trouble)
{
    return localized(
        "The fax job of %s was not handed over: %s. Send it again with \"quelm-driver outbox send "
        "%d\".",
        job.title, trouble, job.number);
}

std::string uncertainText(const OutboxJob& job, const std::string& trouble)
{
    return localized("Whether the fax job of %s went out is not known: %s. Look at it with \"quelm-driver "
                     "outbox show %d\".",
                     job.title, trouble, job.number);
}

} // namespace

std::string endedText(const OutboxJob& job, const HandoverEnd& end)
{
    switch (end.state) {
    case OutboxState::handedOver: {
        std::vector<std::string> additions;
        if (!end.receipt.note.empty())
            additions.push_back(end.receipt.note);
        return withAdditions(
            handedOverText(kindOf(job.target), end.receipt.place, job.title, job.recipients.size()),
            additions);
    }
    case OutboxState::uncertain:
        return uncertainText(job, end.trouble);
    default:
        return failedText(job, end.trouble);
    }
}

std::string settledText(const OutboxJob& job)
{
    return job.state == OutboxState::uncertain ? uncertainText(job, job.note) : failedText(job, job.note);
}

std::string submittedText(const SubmissionEnd& end, const std::string& sender, const std::string& document,
                          unsigned long recipients, std::time_t now)
{
    const std::string due = shownMoment(end.due, now);
    if (end.kind == SubmissionEnd::Kind::held)
        // Translators: the places are a document, a number, a queue and its job, and "today at 16:05".
        return localizedCount(
            "The fax job of %s for %d recipient was handed over to %s, which holds it until %s.",
            "The fax job of %s for %d recipients was handed over to %s, which holds it until %s.", recipients,
            document, recipients, end.receipt.place, due);
    std::vector<std::string> additions;
    if (!end.reason.empty())
        additions.push_back(end.reason);
    if (!sender.empty())
        additions.push_back(sender);
    return withAdditions(
        // Translators: the places are a document, two numbers, and "today at 16:05".
        localizedCount("The fax job of %s for %d recipient waits as job %d of the outbox until %s.",
                       "The fax job of %s for %d recipients waits as job %d of the outbox until %s.",
                       recipients, document, recipients, end.number, due),
        additions);
}

std::string overdueText(const OutboxJob& job, std::time_t now)
{
    // Translators: a document, and "today at 04:05" or "on 2026-11-30 at 04:05".
    return localized("The fax job of %s was to go out %s.", job.title, shownMoment(job.due, now));
}

std::string overdueDetails(const OutboxJob& job)
{
    JobSummary summary;
    summary.recipients = job.recipients;
    if (job.chargesCard)
        summary.charges.push_back(localized("a credit card is charged"));
    std::string details;
    for (const auto& line : summaryLines(summary, job.due))
        details += shownMessage(line) + "\n";
    // Translators: %s is "device fax.example:9100" or the like.
    return details + localized("Destination: %s", shownTarget(job.target));
}

std::string leftBehindText(const JobsLeftBehind& left, std::time_t now)
{
    const std::string last = shownMoment(left.last, now);
    return left.count == 1 ? localized("A fax job waits in the outbox until %s.", last)
                           : localizedCount("%d fax job waits in the outbox, the last until %s.",
                                            "%d fax jobs wait in the outbox, the last until %s.", left.count,
                                            left.count, last);
}

} // namespace quelm
