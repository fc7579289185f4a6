// Sums up a job, and words it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/summary.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/handover/card_remark.h"
#include "driver/handover/job_view.h"
#include "driver/handover/not_reaching.h"
#include "driver/handover/recipient_check.h"
#include "driver/handover/send_time.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace quelm {
namespace {

/// In the order of the dialogs' lists; the words stand in JSON as they are.
constexpr std::array resolutions{forTranslation("standard"), forTranslation("superfine"),
                                 forTranslation("fine")};
constexpr std::array speeds{"4800", "14.4", "super-g3"};

template <class Words>
std::string wordAt(const Words& words, int position)
{
    const bool known = position >= 0 && static_cast<std::size_t>(position) < words.size();
    return known ? words[static_cast<std::size_t>(position)] : std::string();
}

std::string shownNames(const std::vector<JobRecipient>& recipients)
{
    constexpr std::size_t most = 3;
    std::string names;
    for (std::size_t i = 0; i < std::min(most, recipients.size()); ++i)
        names += (i == 0 ? "" : ", ") + shownRecipient(recipients[i]);
    return recipients.size() > most ? names + ", ..." : names;
}

std::string pagesLine(const JobSummary& summary)
{
    const std::string document = shownText(summary.document);
    const std::string note = shownText(summary.note);
    if (!summary.pages && summary.hasCoverPage && !note.empty())
        // Translators: a note and a document.
        return localized("a cover sheet with the note \"%s\" and %s, whose pages cannot be counted", note,
                         document);
    if (!summary.pages)
        // Translators: %s is a document.
        return summary.hasCoverPage
                   ? localized("a cover sheet and %s, whose pages cannot be counted", document)
                   : localized("%s, whose pages cannot be counted; no cover sheet", document);
    const std::size_t pages = *summary.pages;
    if (summary.hasCoverPage && !summary.note.empty())
        // Translators: a note, how many pages, and of which document.
        return localizedCount("a cover sheet with the note \"%s\" and %d page of %s",
                              "a cover sheet with the note \"%s\" and %d pages of %s", pages, note, pages,
                              document);
    return summary.hasCoverPage ? localizedCount("a cover sheet and %d page of %s",
                                                 "a cover sheet and %d pages of %s", pages, pages, document)
                                // Translators: how many pages of a document.
                                : localizedCount("%d page of %s; no cover sheet",
                                                 "%d pages of %s; no cover sheet", pages, pages, document);
}

std::string shownSpeed(const std::string& speed)
{
    if (speed == "4800")
        return "4800 bit/s";
    return speed == "14.4" ? "14.4 kbit/s" : "Super G3";
}

std::string qualityLine(const JobSummary& summary)
{
    const std::string resolution = translated(summary.resolution.c_str());
    return summary.hasConfirmation
               // Translators: "fine", "14.4 kbit/s".
               ? localized("resolution %s, at most %s, with a confirmation sheet", resolution,
                           shownSpeed(summary.speed))
               : localized("resolution %s, at most %s, without a confirmation sheet", resolution,
                           shownSpeed(summary.speed));
}

std::string wayLine(const JobPlan& plan, std::time_t now)
{
    if (!plan.target) {
        if (plan.sendAt)
            // Translators: %s is "tomorrow at 04:05" and the like.
            return localized("goes out %s", shownMoment(*plan.sendAt, now));
        return plan.isTimeChosen && !plan.toOutbox ? localized("goes out at once") : std::string();
    }
    const std::string place = shownTarget(*plan.target);
    if (plan.sendAt)
        // Translators: a destination such as "queue fax", and "tomorrow at 04:05" and the like.
        return localized("goes to %s %s", place, shownMoment(*plan.sendAt, now));
    return plan.toOutbox ? localized("waits in the outbox, and goes to %s from there", place)
                         : localized("goes to %s at once", place);
}

std::string timeSentence(const JobPlan& plan)
{
    const bool toQueue = plan.target && std::holds_alternative<QueueTarget>(*plan.target);
    return toQueue && !plan.toOutbox
               ? localized("the device is not told the time; the print queue keeps it, or else the outbox")
               : localized("the device is not told the time; the outbox keeps it");
}

std::vector<std::string> chargesOf(const JobView& view, const Handover& handover)
{
    std::vector<std::string> charges;
    if (!view.prefix.empty() && view.prefixTicked)
        charges.push_back(localized("the dialing prefix %s is dialled", shownText(view.prefix)));
    if (!handover.remarks.empty())
        std::ranges::copy(handover.remarks, std::back_inserter(charges));
    else if (const auto card = cardRemark(view.card); !card.empty())
        charges.push_back(card);
    return charges;
}

} // namespace

JobSummary summaryOf(Driver& driver, const Handover& handover, const Document* document, const JobPlan& plan)
{
    JobView view = viewOfJob(driver);
    view.leavesKeptCard = plan.leavesKeptCard;
    JobSummary summary;
    summary.recipients = handover.recipients;
    if (document != nullptr) {
        summary.document = document->name();
        summary.pages = document->pages();
    }
    summary.hasCoverPage = view.coverGoes;
    if (view.coverGoes)
        summary.note = view.note;
    summary.resolution = wordAt(resolutions, choiceOf(driver, widget_names::lanFaxResolution));
    summary.speed = wordAt(speeds, choiceOf(driver, widget_names::lanFaxSendSpeed));
    summary.hasConfirmation = choiceOf(driver, widget_names::lanFaxConfSheet) == 0;
    summary.dialingPrefix = view.prefix;
    if (!view.card.empty()) {
        summary.card = cardDigits(view.card);
        if (summary.card.empty())
            summary.card = "...";
    }
    summary.charges = chargesOf(view, handover);
    summary.plan = plan;
    if (plan.sendAt)
        summary.notReaching.push_back(timeSentence(plan));
    std::ranges::copy(notReaching(view, summary.recipients), std::back_inserter(summary.notReaching));
    return summary;
}

std::string shownTarget(const JobTarget& target)
{
    if (const auto* device = std::get_if<NetworkAddress>(&target))
        return localized("device %s", toText(*device));
    if (const auto* queue = std::get_if<QueueTarget>(&target))
        return localized("queue %s", oneLine(queue->name));
    const auto& path = std::get<FileTarget>(target).path;
    return path == "-" ? localized("standard output") : oneLine(path);
}

std::vector<std::string> summaryLines(const JobSummary& summary, std::time_t now)
{
    std::vector<std::string> lines;
    const auto add = [&lines](const std::string& line) {
        if (!line.empty())
            lines.push_back(line);
    };
    if (const auto count = summary.recipients.size(); count > 0)
        // Translators: how many, and the first of them with their numbers.
        add(localizedCount("fax to %d recipient: %s", "fax to %d recipients: %s", count, count,
                           shownNames(summary.recipients)));
    if (!summary.document.empty())
        add(pagesLine(summary));
    if (!summary.resolution.empty() && !summary.speed.empty())
        add(qualityLine(summary));
    std::ranges::for_each(summary.charges, add);
    add(wayLine(summary.plan, now));
    std::ranges::for_each(summary.notReaching, add);
    return lines;
}

} // namespace quelm
