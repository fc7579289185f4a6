// Puts what was read into lines and into JSON. The digits of a card stand in neither.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/reading_answer.h"

#include "base/error.h"
#include "base/terminal/columns.h"
#include "base/texts.h"
#include "base/translation.h"
#include "device/calls/job_rendering.h"
#include "device/display/record_words.h"
#include "device/jobs/dial_keys.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quelm::device {
namespace {

using nlohmann::ordered_json;

/// The keys that are pressed for a number; empty for a number of a refused job that cannot be dialled.
std::string keysOrNone(const std::string& number)
{
    try {
        return keysFor(number);
    } catch (const Error&) {
        return "";
    }
}

std::string formText(JobForm form)
{
    switch (form) {
    case JobForm::dsc:
        return localized("DSC: comments of the document");
    case JobForm::pjl:
        return localized("PJL: comments of the printer's job language");
    case JobForm::plain:
        break;
    }
    return localized("PostScript without attribute lines");
}

std::string yesOrNo(bool value) { return value ? localized("yes") : localized("no"); }

std::string cardText(const std::string& card)
{
    if (card.empty())
        return localized("none");
    const auto keys = keysOrNone(card).size();
    // Translators: stars in the place of a card's digits, and how many there are.
    return localizedCount("%s (%d key)", "%s (%d keys)", keys, std::string(keys, '*'), keys);
}

void addSettings(std::vector<std::vector<std::string>>& rows, const ReceivedJob& job)
{
    rows.push_back({localized("Resolution:"), resolutionText(job.resolution)});
    rows.push_back({localized("Speed:"), speedText(job.speed)});
    rows.push_back({localized("Cover sheet:"), yesOrNo(job.coverSheet)});
    rows.push_back({localized("Confirmation sheet:"), yesOrNo(job.confirmationSheet)});
    rows.push_back({localized("Credit card:"), cardText(job.creditCard)});
}

std::string indented(const std::string& lines)
{
    std::string text;
    for (std::size_t begin = 0; begin < lines.size();) {
        const auto end = std::min(lines.find('\n', begin), lines.size());
        text += "  " + lines.substr(begin, end - begin) + "\n";
        begin = end + 1;
    }
    return text;
}

std::string recipientLines(const ReceivedJob& job)
{
    std::vector<std::vector<std::string>> rows;
    for (const auto& destination : job.destinations) {
        rows.push_back({destination.number,
                        // Translators: the keys that are pressed on a telephone.
                        localized("dials %s", keysOrNone(destination.number))});
        if (!destination.mailbox.empty())
            rows.back().push_back(localized("mailbox %s", destination.mailbox));
    }
    return indented(alignedColumns(rows));
}

std::string remarkText(const Remark& remark)
{
    // Translators: the number of a line, and what is wrong there.
    return remark.line == 0 ? remark.text : localized("line %d: %s", remark.line, remark.text);
}

std::string remarkLines(const std::vector<Remark>& remarks)
{
    std::string text;
    for (const auto& remark : remarks)
        text += "  " + oneLine(remarkText(remark)) + "\n";
    return text;
}

std::string jobText(const JobReading& reading)
{
    const auto& job = reading.job;
    std::vector<std::vector<std::string>> rows{
        {localized("Form:"), formText(job.form)},
        {localized("Title:"), job.title.empty() ? localized("none") : job.title},
        {localized("Pages:"), reading.pages ? pagesText(*reading.pages) : localized("not known")}};
    std::string text;
    if (job.isFax)
        addSettings(rows, job);
    text += alignedColumns(rows);
    if (job.isFax)
        text += localizedCount("Fax to %d recipient:", "Fax to %d recipients:", job.destinations.size(),
                               job.destinations.size()) +
                "\n" + recipientLines(job);
    else
        text += localized("No fax: the job is printed.") + "\n";
    if (job.isRefused())
        text += localized("The device refuses the job:") + "\n" + remarkLines(job.refusals);
    if (!job.objections.empty())
        text += localized("Passed over:") + "\n" + remarkLines(job.objections);
    return text;
}

ordered_json remarksJson(const std::vector<Remark>& remarks)
{
    auto list = ordered_json::array();
    for (const auto& remark : remarks)
        list.push_back(
            {{"line", remark.line == 0 ? ordered_json() : ordered_json(remark.line)}, {"text", remark.text}});
    return list;
}

ordered_json recipientsJson(const ReceivedJob& job)
{
    auto list = ordered_json::array();
    for (const auto& destination : job.destinations)
        list.push_back(
            {{"line", destination.line},
             {"number", destination.number},
             {"keys", keysOrNone(destination.number)},
             {"mailbox", destination.mailbox.empty() ? ordered_json() : ordered_json(destination.mailbox)}});
    return list;
}

std::string formName(JobForm form)
{
    switch (form) {
    case JobForm::dsc:
        return "dsc";
    case JobForm::pjl:
        return "pjl";
    case JobForm::plain:
        break;
    }
    return "plain";
}

std::string resolutionName(Resolution resolution)
{
    switch (resolution) {
    case Resolution::fine:
        return "fine";
    case Resolution::superfine:
        return "superfine";
    case Resolution::standard:
        break;
    }
    return "standard";
}

std::string speedName(Speed speed)
{
    switch (speed) {
    case Speed::forced4800:
        return "4800";
    case Speed::upTo14400:
        return "14400";
    case Speed::automatic:
        break;
    }
    return "automatic";
}

ordered_json settingsJson(const ReceivedJob& job)
{
    const auto density = densityOf(job.resolution);
    return {{"recipients", recipientsJson(job)},
            {"resolution", resolutionName(job.resolution)},
            {"dotsPerInch", {density.across, density.down}},
            {"speed", speedName(job.speed)},
            {"coverSheet", job.coverSheet},
            {"confirmationSheet", job.confirmationSheet},
            {"creditCardKeys", keysOrNone(job.creditCard).size()}};
}

ordered_json jobJson(const JobReading& reading)
{
    const auto& job = reading.job;
    ordered_json json{{"form", formName(job.form)},
                      {"title", job.title},
                      {"fax", job.isFax},
                      {"taken", !job.isRefused()},
                      {"pages", reading.pages ? ordered_json(*reading.pages) : ordered_json()}};
    if (job.isFax)
        json.update(settingsJson(job));
    json.update({{"begin", reading.begin},
                 {"end", reading.begin + job.size},
                 {"postScriptBegin", job.postScriptBegin},
                 {"postScriptEnd", job.postScriptEnd},
                 {"refusals", remarksJson(job.refusals)},
                 {"objections", remarksJson(job.objections)}});
    return json;
}

} // namespace

std::string readingText(const std::vector<JobReading>& jobs)
{
    std::string text;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (jobs.size() > 1)
            text += (i == 0 ? "" : "\n") + localized("Job %d of %d", i + 1, jobs.size()) + "\n";
        text += jobText(jobs[i]);
    }
    return text;
}

std::string readingJson(const std::vector<JobReading>& jobs)
{
    auto list = ordered_json::array();
    for (const auto& reading : jobs)
        list.push_back(jobJson(reading));
    return ordered_json{{"jobs", list}}.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::string refusalLine(const std::vector<JobReading>& jobs)
{
    const auto isRefused = [](const JobReading& reading) { return reading.job.isRefused(); };
    const auto refused = std::ranges::count_if(jobs, isRefused);
    if (refused == 0)
        return "";
    if (jobs.size() > 1)
        return localized("the device refuses %d of %d jobs", refused, jobs.size());
    const auto& refusals = jobs.front().job.refusals;
    const auto count = jobs.front().job.refusalCount();
    if (count == 1)
        // Translators: why, which may begin with the number of a line.
        return localized("the device refuses the job: %s", remarkText(refusals.front()));
    return localized("the device refuses the job for %d reasons, the first of them: %s", count,
                     remarkText(refusals.front()));
}

} // namespace quelm::device
