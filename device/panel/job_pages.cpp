// The pages about jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/translation.h"
#include "device/display/page_picture.h"
#include "device/display/record_words.h"
#include "device/panel/panel_pages.h"

#include <algorithm>

namespace quelm::device {
namespace {

constexpr int jobsPerPage = 25;
constexpr int recipientsPerPage = 100;
constexpr int firstSheets = 8;
constexpr int sheetsPerPage = 60;

const char* kindOf(JobState state)
{
    switch (state) {
    case JobState::received:
    case JobState::calling:
        return "busy";
    case JobState::done:
    case JobState::printed:
        return "good";
    case JobState::refused:
    case JobState::failed:
        break;
    }
    return "bad";
}

const char* kindOf(RecipientState state)
{
    switch (state) {
    case RecipientState::waiting:
        return "quiet";
    case RecipientState::calling:
        return "busy";
    case RecipientState::sent:
        return "good";
    case RecipientState::failed:
        break;
    }
    return "bad";
}

std::size_t sentOf(const JobRecord& job)
{
    return static_cast<std::size_t>(
        std::ranges::count(job.recipients, RecipientState::sent, &RecipientRecord::state));
}

/// A job that is done is well done only when everybody received it.
Html stateOf(const JobRecord& job)
{
    const std::size_t sent = sentOf(job);
    const std::size_t failed = job.recipients.size() - sent;
    if (job.state != JobState::done || failed == 0)
        return badge(jobStateText(job.state), kindOf(job.state));
    // Translators: the state of a job: all calls are made, and so many of its recipients did not receive it.
    return badge(sent > 0 ? localizedCount("done, %d failed", "done, %d failed", failed, failed)
                          : localized("done, none sent"),
                 "bad");
}

std::string recipientsText(const JobRecord& job)
{
    if (job.recipients.empty())
        return "-";
    // Translators: of a job's recipients, so many received it.
    return localized("%d of %d sent", sentOf(job), job.recipients.size());
}

std::string addressOf(int job) { return "/jobs/" + std::to_string(job); }

Html recipientTable(const JobRecord& job, const std::vector<RecipientRecord>& recipients,
                    const std::vector<CallRecord>& calls)
{
    Html rows;
    for (const auto& recipient : recipients) {
        const CallRecord* last = nullptr;
        for (const auto& call : calls)
            if (call.position == recipient.position && (last == nullptr || last->number < call.number))
                last = &call;
        Html result = foreignText(recipientResultText(recipient, last));
        if (recipient.state == RecipientState::waiting && recipient.nextAttempt)
            result += text(" ") +
                      element("small", text(localized("again at %s", momentText(*recipient.nextAttempt))));
        rows += tableRow({text(std::to_string(recipient.position)), foreignText(recipient.number),
                          foreignText(recipient.mailbox),
                          badge(recipientStateText(recipient.state), kindOf(recipient.state)), result,
                          unbroken(pagesOfText(recipient.pagesSent, job.pages)),
                          text(std::to_string(recipient.attempts)),
                          unbroken(recipient.lastCallAt ? momentText(*recipient.lastCallAt) : "-"),
                          text(recipient.lastCallAt ? lineTimeText(recipient.lastDuration) : "-")});
    }
    return table(localized("Recipients"),
                 {localized("No."), localized("Number"), localized("Mailbox"), localized("State"),
                  localized("Result"), localized("Pages"), localized("Calls"), localized("Last call"),
                  localized("Duration")},
                 rows);
}

Html remarkList(const std::vector<Remark>& remarks)
{
    constexpr std::size_t most = 100;
    Html items;
    for (std::size_t i = 0; i < std::min(remarks.size(), most); ++i) {
        const auto& remark = remarks[i];
        const Html words = foreignText(remark.text);
        items += element(
            "li", remark.line == 0 ? words : text(localized("line %d:", remark.line)) + text(" ") + words);
    }
    if (remarks.size() > most)
        items += element("li", text(localizedCount("and %d more", "and %d more", remarks.size() - most,
                                                   remarks.size() - most)));
    return element("ul", items);
}

Html factsOf(const JobRecord& job)
{
    const std::string address = "/reports/" + std::to_string(job.number);
    std::vector<PanelFact> facts = {{localized("State"), stateOf(job)},
                                    {localized("Received"), text(momentText(job.receivedAt))},
                                    {localized("From"), foreignText(job.from)}};
    if (job.pages > 0)
        facts.push_back({localized("Pages"), text(std::to_string(job.pages))});
    if (job.reading.isFax) {
        const auto yesOrNo = [](bool yes) { return text(yes ? localized("yes") : localized("no")); };
        facts.push_back({localized("Resolution"), text(resolutionText(job.reading.resolution))});
        facts.push_back({localized("Speed"), text(speedText(job.reading.speed))});
        facts.push_back({localized("Cover sheet"), yesOrNo(job.reading.coverSheet)});
        facts.push_back({localized("Credit card"), yesOrNo(!job.reading.creditCard.empty())});
        facts.push_back({localized("Confirmation"),
                         job.hasReport ? link(address + ".pdf", text(localized("sheet (PDF)"))) + text(" ") +
                                             link(address + ".txt", text(localized("as text")))
                         : job.reading.confirmationSheet && job.state == JobState::refused
                             ? text(localized("no sheet: nobody was called"))
                             : yesOrNo(job.reading.confirmationSheet)});
    }
    if (!job.problem.empty())
        facts.push_back({localized("Problem"), foreignText(job.problem)});
    return factList(facts);
}

} // namespace

Html jobTable(const std::vector<JobRecord>& jobs)
{
    Html rows;
    for (const auto& job : jobs)
        rows += tableRow({link(addressOf(job.number), text(std::to_string(job.number))),
                          link(addressOf(job.number), tableTitle(titleText(job))),
                          unbroken(momentText(job.receivedAt)), text(recipientsText(job)),
                          text(job.pages > 0 ? std::to_string(job.pages) : "-"), stateOf(job)});
    return table(localized("Jobs"),
                 {localized("Job"), localized("Title"), localized("Received"), localized("Recipients"),
                  localized("Pages"), localized("State")},
                 rows);
}

PanelPage jobsPage(const PanelSource& source, int before)
{
    auto jobs = source.log.jobs(before, jobsPerPage + 1);
    const bool more = jobs.size() > jobsPerPage;
    if (more)
        jobs.pop_back();
    PanelPage page{localized("Jobs"), "/jobs", {}, isUnderWay(source)};
    if (jobs.empty()) {
        page.content = nothing(localized("No job has come yet."));
        return page;
    }
    page.content =
        jobTable(jobs) + pageLinks(before > 0 ? "/jobs" : "",
                                   more ? "/jobs?before=" + std::to_string(jobs.back().number) : "");
    return page;
}

std::filesystem::path pagesOf(const PanelSource& source, const JobRecord& job)
{
    return job.state == JobState::printed ? source.folder.printedFile(job.number)
                                          : source.folder.pagesFile(job.number);
}

std::optional<PanelPage> jobPage(const PanelSource& source, int number, int part)
{
    const auto job = source.log.job(number);
    const auto first = static_cast<std::size_t>(part - 1) * recipientsPerPage;
    if (!job || (part > 1 && first >= job->recipients.size()))
        return std::nullopt;
    // Translators: a fax job: its number and its title.
    PanelPage page{localized("Job %d: %s", number, titleText(*job)), "/jobs", factsOf(*job), false};
    page.refreshes = job->state == JobState::received || job->state == JobState::calling;
    if (!job->reading.refusals.empty())
        page.content += section(localized("Why it was refused"), remarkList(job->reading.refusals));
    if (!job->reading.objections.empty())
        page.content += section(localized("What was passed over"), remarkList(job->reading.objections));

    if (!job->recipients.empty()) {
        const auto end = std::min(first + recipientsPerPage, job->recipients.size());
        const std::vector<RecipientRecord> shown(job->recipients.begin() + static_cast<std::ptrdiff_t>(first),
                                                 job->recipients.begin() + static_cast<std::ptrdiff_t>(end));
        auto calls = source.log.callsOf(number);
        std::erase_if(calls, [&](const CallRecord& call) {
            return call.position < shown.front().position || call.position > shown.back().position;
        });
        page.content += section(localized("Recipients"),
                                recipientTable(*job, shown, calls) +
                                    pageLinks(part > 1 ? addressOf(number) : "",
                                              partAddress(addressOf(number), part + 1, job->recipients.size(),
                                                          recipientsPerPage)));
        std::ranges::sort(calls, std::greater(), &CallRecord::number);
        if (!calls.empty())
            page.content += section(localized("Calls"), callTable(source, calls));
    }

    const std::string sheetAddress = addressOf(number) + "/pages";
    Html pictures = sheets(pagesOf(source, *job), sheetAddress, 1, firstSheets);
    if (job->pages > firstSheets)
        pictures += element("p", link(sheetAddress, text(localized("all %d pages", job->pages))));
    if (!pictures.isEmpty())
        page.content += section(localized("Pages"), pictures);
    return page;
}

std::optional<PanelPage> jobSheetsPage(const PanelSource& source, int number, int part)
{
    const auto job = source.log.job(number);
    if (!job)
        return std::nullopt;
    const std::string address = addressOf(number) + "/pages";
    const auto file = pagesOf(source, *job);
    const Html pictures = sheets(file, address, (part - 1) * sheetsPerPage + 1, sheetsPerPage);
    if (pictures.isEmpty())
        return std::nullopt;
    PanelPage page{localized("Pages of job %d: %s", number, titleText(*job)), "/jobs", {}, false};
    page.content = element("p", link(addressOf(number), text(localized("To the job")))) + pictures +
                   pageLinks(part > 1 ? address : "",
                             partAddress(address, part + 1, static_cast<std::size_t>(std::max(0, job->pages)),
                                         sheetsPerPage));
    return page;
}

} // namespace quelm::device
