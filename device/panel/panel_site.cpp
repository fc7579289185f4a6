// Takes addresses apart, and has the pages written.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/panel_site.h"

#include "base/error.h"
#include "base/translation.h"
#include "device/display/page_picture.h"
#include "device/panel/style_sheet.h"

#include <charconv>
#include <string_view>
#include <vector>

namespace quelm::device {
namespace {

using Path = std::vector<std::string>;

constexpr std::size_t longestPath = 200;
constexpr int thumbnailWidth = 320; // shown half as wide: screens may have two dots to a pixel
constexpr int pictureWidth = 1728;  // dots of a fax

/// "/jobs/12" has the segments "jobs" and "12"; a slash at the end adds none.
Path segmentsOf(std::string_view path)
{
    Path segments;
    while (!path.empty() && path != "/") {
        path.remove_prefix(1);
        const auto end = std::min(path.find('/'), path.size());
        segments.emplace_back(path.substr(0, end));
        path.remove_prefix(end);
    }
    return segments;
}

/// A number from 1 to 999,999,999 as addresses write it; 0 for all else.
int numberIn(std::string_view text)
{
    int number = 0;
    if (text.empty() || text.size() > 9 || text.front() < '1' || text.front() > '9')
        return 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ptr == text.data() + text.size() ? number : 0;
}

/// The number between a beginning and an end; 0 for all else.
int numberWithin(std::string_view text, std::string_view begin, std::string_view end)
{
    if (text.size() < begin.size() + end.size() || !text.starts_with(begin) || !text.ends_with(end))
        return 0;
    text.remove_prefix(begin.size());
    text.remove_suffix(end.size());
    return numberIn(text);
}

PanelAnswer html(const PanelPage& page, int status = 200)
{
    return {status, "text/html; charset=utf-8", documentOf(page), {}};
}

PanelAnswer htmlOrNothing(const std::optional<PanelPage>& page) { return page ? html(*page) : refusal(404); }

PanelAnswer fileOrNothing(const std::filesystem::path& file, const char* type)
{
    std::error_code unreadable;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(file, unreadable)))
        return refusal(404);
    return {200, type, "", file};
}

/// "3.png" is a whole page, "3-small.png" its thumbnail. A page that cannot be shown is a blank sheet.
PanelAnswer picture(const std::filesystem::path& file, const std::string& name)
{
    const int small = numberWithin(name, "", "-small.png");
    const int page = small > 0 ? small : numberWithin(name, "", ".png");
    if (page == 0 || page > std::max(1, pagesIn(file)))
        return refusal(404);
    const int width = small > 0 ? thumbnailWidth : pictureWidth;
    const auto drawn = pictureOf(file, page, width);
    return {200, "image/png", pngOf(drawn ? *drawn : blankPage(width)), {}};
}

/// What belongs to a job: "/jobs/12", "/jobs/12/pages", "/jobs/12/pages/3.png".
PanelAnswer answerAboutJob(const PanelSource& source, const Path& path, int part)
{
    const int number = numberIn(path[1]);
    if (number == 0)
        return refusal(404);
    if (path.size() == 2)
        return htmlOrNothing(jobPage(source, number, part));
    if (path[2] != "pages" || path.size() > 4)
        return refusal(404);
    if (path.size() == 3)
        return htmlOrNothing(jobSheetsPage(source, number, part));
    const auto job = source.log.job(number);
    return job && job->pages > 0 ? picture(pagesOf(source, *job), path[3]) : refusal(404);
}

/// What a telephone number received: "/received/555", "/received/555/call-3", "/received/555/call-3.tif",
/// "/received/555/call-3/1.png".
PanelAnswer answerAboutReceived(const PanelSource& source, const Path& path, int part)
{
    const auto& number = path[1];
    if (path.size() == 2)
        return htmlOrNothing(receivedNumberPage(source, number, part));
    if (path.size() > 4)
        return refusal(404);
    if (const int call = numberWithin(path[2], "call-", ".tif"); call > 0 && path.size() == 3) {
        const auto file = receivedFile(source, number, call);
        return file ? fileOrNothing(*file, "image/tiff") : refusal(404);
    }
    const int call = numberWithin(path[2], "call-", "");
    if (path.size() == 3)
        return htmlOrNothing(receivedCallPage(source, number, call, part));
    const auto file = receivedFile(source, number, call);
    return file ? picture(*file, path[3]) : refusal(404);
}

PanelAnswer answerAboutReports(const PanelSource& source, const Path& path)
{
    if (path.size() != 2)
        return refusal(404);
    if (const int job = numberWithin(path[1], "", ".pdf"); job > 0)
        return fileOrNothing(source.folder.reportPdf(job), "application/pdf");
    if (const int job = numberWithin(path[1], "", ".txt"); job > 0)
        return fileOrNothing(source.folder.reportText(job), "text/plain; charset=utf-8");
    return refusal(404);
}

PanelAnswer route(const PanelSource& source, const PanelRequest& request)
{
    const int before = request.before.empty() ? 0 : numberIn(request.before);
    const int part = request.part.empty() ? 1 : numberIn(request.part);
    constexpr int mostParts = 1'000'000; // what is multiplied stays a number
    if ((!request.before.empty() && before == 0) || part == 0 || part > mostParts)
        return refusal(404);
    const Path path = segmentsOf(request.path);
    if (path.empty())
        return html(statusPage(source));
    const auto& first = path[0];
    if (path.size() == 1) {
        if (first == "style.css")
            return {200, "text/css; charset=utf-8", styleSheet, {}};
        if (first == "jobs")
            return html(jobsPage(source, before));
        if (first == "calls")
            return html(callsPage(source, before));
        if (first == "received")
            return html(receivedPage(source, part));
        return refusal(404);
    }
    if (first == "jobs")
        return answerAboutJob(source, path, part);
    if (first == "received")
        return answerAboutReceived(source, path, part);
    if (first == "reports")
        return answerAboutReports(source, path);
    return refusal(404);
}

} // namespace

PanelAnswer refusal(int status)
{
    switch (status) {
    case 404:
        return html(refusalPage(localized("Not found"), localized("There is no such page.")), status);
    case 405:
        return html(refusalPage(localized("Not allowed"),
                                localized("These pages only show: GET and HEAD are all they answer to.")),
                    status);
    case 421:
        return html(
            refusalPage(localized("Wrong address"),
                        localized("Call these pages by the address that the device said when it started.")),
            status);
    case 431:
        return html(refusalPage(localized("Too long"), localized("The request is too long.")), status);
    default:
        return html(refusalPage(localized("Not understood"), localized("The request is malformed.")), status);
    }
}

PanelAnswer answerTo(const PanelSource& source, const PanelRequest& request)
{
    if (request.path.empty() || request.path.front() != '/' || request.path.size() > longestPath)
        return refusal(404);
    try {
        return route(source, request);
    } catch (const Error& error) {
        return html(refusalPage(localized("Failed"), error.what()), 500);
    }
}

} // namespace quelm::device
