// The pages about what was received, as it lies below received/.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/translation.h"
#include "device/display/page_picture.h"
#include "device/display/record_words.h"
#include "device/panel/panel_pages.h"

#include <algorithm>
#include <charconv>
#include <functional>

namespace quelm::device {
namespace {

constexpr int numbersPerPage = 24;
constexpr int callsPerPage = 10;
constexpr int firstSheets = 8;
constexpr int sheetsPerPage = 60;

std::string addressOf(const std::string& number) { return "/received/" + number; }
std::string addressOf(const std::string& number, int call)
{
    return addressOf(number) + "/call-" + std::to_string(call);
}

/// 0 for a name that is none of a call's file.
int callOf(const std::string& name)
{
    constexpr std::string_view begin = "call-";
    constexpr std::string_view end = ".tif";
    if (!name.starts_with(begin) || !name.ends_with(end) || name.size() <= begin.size() + end.size())
        return 0;
    int call = 0;
    const char* const last = name.data() + name.size() - end.size();
    const auto result = std::from_chars(name.data() + begin.size(), last, call);
    return result.ec == std::errc() && result.ptr == last ? std::max(call, 0) : 0;
}

/// The numbers of the calls that left a file in the folder, the newest first.
std::vector<int> callsIn(const std::filesystem::path& folder)
{
    std::vector<int> calls;
    std::error_code gone; // a folder that is not there has no calls
    for (const auto& entry : std::filesystem::directory_iterator(folder, gone))
        if (const int call = callOf(entry.path().filename()); call > 0)
            calls.push_back(call);
    std::ranges::sort(calls, std::greater());
    return calls;
}

std::optional<std::filesystem::path> folderOf(const PanelSource& source, const std::string& number)
{
    try {
        return source.folder.receivedCall(number, 1).parent_path();
    } catch (const Error&) {
        return std::nullopt; // no name that an exchange gives
    }
}

std::optional<CallRecord> recordOf(const PanelSource& source, int call)
{
    const auto found = source.log.calls(call + 1, 1);
    return !found.empty() && found[0].number == call ? std::optional(found[0]) : std::nullopt;
}

Html factsOf(const PanelSource& source, const std::string& number, int call)
{
    std::vector<PanelFact> facts;
    if (const auto record = recordOf(source, call)) {
        const std::string job = std::to_string(record->job);
        facts = {{localized("Received"), text(momentText(record->begunAt))},
                 {localized("Job"), link("/jobs/" + job, text(job))},
                 {localized("Duration"), text(lineTimeText(record->duration))},
                 {localized("Result"), text(callResultText(*record))}};
    }
    facts.push_back(
        {localized("File"), link(addressOf(number, call) + ".tif", text(localized("all pages (TIFF)")))});
    return factList(facts);
}

/// A call's first page, and below it its number, a remark and how many pages it has.
Html galleryItem(const PanelSource& source, const std::string& number, int call, const std::string& remark)
{
    const auto file = source.folder.receivedCall(number, call);
    const int pages = pagesIn(file);
    const Html caption = element("span", link(addressOf(number), foreignText(number))) +
                         element("span", text(remark)) + element("span", text(pagesText(pages)));
    const Html picture = element(
        "a", {{"class", "page"}, {"href", addressOf(number, call)}},
        emptyElement("img", {{"src", addressOf(number, call) + "/1-small.png"},
                             {"alt", localized("first page of call %d, received by %s", call, number)},
                             {"width", "160"},
                             {"loading", "lazy"}}));
    return element("li", element("figure", picture + element("figcaption", caption)));
}

} // namespace

std::optional<std::filesystem::path> receivedFile(const PanelSource& source, const std::string& number,
                                                  int call)
{
    if (call < 1 || !folderOf(source, number))
        return std::nullopt;
    const auto file = source.folder.receivedCall(number, call);
    std::error_code unreadable;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(file, unreadable)))
        return std::nullopt;
    return file;
}

Html sheets(const std::filesystem::path& file, const std::string& address, int first, int most)
{
    const int pages = pagesIn(file);
    Html items;
    for (int page = first; page <= pages && page - first < most; ++page)
        items +=
            element("li", element("figure", thumbnail(address, page, localized("page %d", page)) +
                                                element("figcaption", text(localized("page %d", page)))));
    return items.isEmpty() ? items : element("ul", {{"class", "gallery"}}, items);
}

Html receivedGallery(const PanelSource& source, const std::vector<CallRecord>& calls, int most)
{
    Html items;
    int shown = 0;
    for (const auto& call : calls) {
        if (shown == most)
            break;
        if (!receivedFile(source, call.receiver, call.number))
            continue;
        ++shown;
        items += galleryItem(source, call.receiver, call.number, momentText(call.begunAt));
    }
    return items.isEmpty() ? items : element("ul", {{"class", "gallery"}}, items);
}

PanelPage receivedPage(const PanelSource& source, int part)
{
    std::vector<std::string> numbers;
    std::error_code gone;
    for (const auto& entry : std::filesystem::directory_iterator(source.folder.path() / "received", gone)) {
        std::string number = entry.path().filename();
        if (folderOf(source, number) && !callsIn(entry.path()).empty())
            numbers.push_back(std::move(number));
    }
    std::ranges::sort(numbers);

    PanelPage page{localized("Received"), "/received", {}, isUnderWay(source)};
    Html items;
    const auto first = static_cast<std::size_t>(part - 1) * numbersPerPage;
    for (std::size_t i = first; i < std::min(numbers.size(), first + numbersPerPage); ++i) {
        const auto calls = callsIn(*folderOf(source, numbers[i]));
        if (calls.empty())
            continue;
        items += galleryItem(source, numbers[i], calls.front(),
                             localizedCount("%d fax", "%d faxes", calls.size(), calls.size()));
    }
    if (items.isEmpty()) {
        page.content = nothing(localized("Nothing has been received yet."));
        return page;
    }
    page.content =
        element("p", text(localized(
                         "What each telephone number received, with the first page of the latest fax."))) +
        element("ul", {{"class", "gallery"}}, items) +
        pageLinks(part > 1 ? "/received" : "",
                  partAddress("/received", part + 1, numbers.size(), numbersPerPage));
    return page;
}

std::optional<PanelPage> receivedNumberPage(const PanelSource& source, const std::string& number, int part)
{
    const auto folder = folderOf(source, number);
    if (!folder)
        return std::nullopt;
    const auto calls = callsIn(*folder);
    const auto first = static_cast<std::size_t>(part - 1) * callsPerPage;
    if (first >= calls.size())
        return std::nullopt;
    PanelPage page{localized("Received by %s", number), "/received", {}, false};
    for (std::size_t i = first; i < std::min(calls.size(), first + callsPerPage); ++i) {
        const auto file = source.folder.receivedCall(number, calls[i]);
        Html content =
            factsOf(source, number, calls[i]) + sheets(file, addressOf(number, calls[i]), 1, firstSheets);
        if (const int pages = pagesIn(file); pages > firstSheets)
            content +=
                element("p", link(addressOf(number, calls[i]), text(localized("all %d pages", pages))));
        page.content += section(localized("Call %d", calls[i]), content);
    }
    page.content += pageLinks(part > 1 ? addressOf(number) : "",
                              partAddress(addressOf(number), part + 1, calls.size(), callsPerPage));
    return page;
}

std::optional<PanelPage> receivedCallPage(const PanelSource& source, const std::string& number, int call,
                                          int part)
{
    const auto file = receivedFile(source, number, call);
    if (!file)
        return std::nullopt;
    const Html pictures =
        sheets(*file, addressOf(number, call), (part - 1) * sheetsPerPage + 1, sheetsPerPage);
    if (pictures.isEmpty() && part > 1)
        return std::nullopt;
    PanelPage page{localized("Call %d, received by %s", call, number), "/received", {}, false};
    page.content = element("p", link(addressOf(number), text(localized("All that this number received")))) +
                   factsOf(source, number, call) +
                   (pictures.isEmpty() ? nothing(localized("The file cannot be shown.")) : pictures) +
                   pageLinks(part > 1 ? addressOf(number, call) : "",
                             partAddress(addressOf(number, call), part + 1,
                                         static_cast<std::size_t>(pagesIn(*file)), sheetsPerPage));
    return page;
}

} // namespace quelm::device
