// The first page: what the device is doing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/translation.h"
#include "device/display/record_words.h"
#include "device/panel/panel_pages.h"

#include <algorithm>

namespace quelm::device {
namespace {

constexpr int latestJobs = 8;
constexpr int latestReceived = 6;
constexpr int latestCalls = 60; // among which those that were received are looked for
constexpr std::size_t mostCalls = 32;

/// Where a call is: the page that is on its way, out of how many.
Html progressOf(const PanelProgress& progress, int pages)
{
    const int page = std::min(progress.pagesSent + 1, std::max(pages, 1));
    const std::string words = localized("page %d of %d", page, pages);
    return element("progress",
                   {{"value", std::to_string(std::clamp(progress.pagesSent, 0, std::max(pages, 1)))},
                    {"max", std::to_string(std::max(pages, 1))},
                    {"aria-label", words}},
                   text(words)) +
           text(" ") + text(words);
}

Html callsUnderWay(const PanelSource& source)
{
    const auto progress =
        source.settings.progress ? source.settings.progress() : std::map<int, PanelProgress>();
    Html rows;
    std::size_t shown = 0;
    for (const auto& [number, far] : progress) {
        if (shown++ == mostCalls)
            break;
        const auto found = source.log.calls(number + 1, 1);
        if (found.empty() || found[0].number != number)
            continue;
        const auto& call = found[0];
        const auto job = source.log.job(call.job);
        if (!job)
            continue;
        const auto recipient = std::ranges::find(job->recipients, call.position, &RecipientRecord::position);
        rows += tableRow({text(std::to_string(number)),
                          link("/jobs/" + std::to_string(call.job), tableTitle(titleText(*job))),
                          foreignText(recipient == job->recipients.end() ? "" : recipient->number),
                          text(std::to_string(call.attempt)), progressOf(far, job->pages),
                          text(lineTimeText(far.lineTime))});
    }
    if (rows.isEmpty())
        return nothing(localized("The lines are free."));
    return table(localized("Calls under way"),
                 {localized("Call"), localized("Job"), localized("Number"), localized("Attempt"),
                  localized("Progress"), localized("Line time")},
                 rows);
}

} // namespace

bool isUnderWay(const PanelSource& source)
{
    const auto load = source.log.load();
    return load.runningCalls > 0 || load.waitingJobs > 0;
}

std::string partAddress(const std::string& address, int part, std::size_t count, int perPart)
{
    if (static_cast<std::size_t>(part - 1) * static_cast<std::size_t>(perPart) >= count)
        return "";
    return address + "?part=" + std::to_string(part);
}

PanelPage statusPage(const PanelSource& source)
{
    const auto load = source.log.load();
    PanelPage page{localized("Status"), "/", {}, load.runningCalls > 0 || load.waitingJobs > 0};
    std::vector<PanelFact> facts = {
        {localized("Jobs that wait"), text(std::to_string(load.waitingJobs))},
        {localized("Calls under way"), text(std::to_string(load.runningCalls))},
    };
    if (load.nextAttempt)
        facts.push_back({localized("Next call"), text(momentText(*load.nextAttempt))});
    if (source.settings.now)
        facts.push_back({localized("The device's clock"), text(momentText(source.settings.now()))});
    page.content = factList(facts) + section(localized("Calls under way"), callsUnderWay(source));

    const auto jobs = source.log.jobs(0, latestJobs);
    page.content += section(localized("Latest jobs"),
                            jobs.empty() ? nothing(localized("No job has come yet.")) : jobTable(jobs));
    const Html received = receivedGallery(source, source.log.calls(0, latestCalls), latestReceived);
    page.content +=
        section(localized("Latest received"),
                received.isEmpty() ? nothing(localized("Nothing has been received yet.")) : received);
    return page;
}

} // namespace quelm::device
