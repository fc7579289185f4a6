// Writes what all status pages have in common.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/page_frame.h"

#include "base/texts.h"
#include "base/translation.h"

#include <array>

namespace quelm::device {
namespace {

struct Part {
    const char* address;
    const char* name;
};

constexpr std::array<Part, 4> parts = {{
    {"/", forTranslation("Status")},
    {"/jobs", forTranslation("Jobs")},
    {"/calls", forTranslation("Calls")},
    {"/received", forTranslation("Received")},
}};

Html head(const PanelPage& page)
{
    Html content =
        emptyElement("meta", {{"charset", "utf-8"}}) +
        emptyElement("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}}) +
        emptyElement("meta", {{"name", "color-scheme"}, {"content", "light dark"}});
    if (page.refreshes)
        content += emptyElement("meta", {{"http-equiv", "refresh"}, {"content", "2"}});
    // Translators: the title of a window: a page of the emulated fax device.
    content += element("title", text(localized("%s - fax device", page.heading)));
    content += emptyElement("link", {{"rel", "stylesheet"}, {"href", "/style.css"}});
    return element("head", content);
}

Html navigation(const PanelPage& page)
{
    Html items;
    for (const auto& part : parts)
        items += element("li", element("a",
                                       {{"href", part.address},
                                        {"aria-current", page.section == part.address ? "page" : ""}},
                                       text(translated(part.name))));
    return element("nav", {{"aria-label", localized("Pages")}}, element("ul", items));
}

} // namespace

std::string documentOf(const PanelPage& page)
{
    const Html top =
        element("a", {{"class", "skip"}, {"href", "#content"}}, text(localized("To the content"))) +
        element("header", element("p", {{"class", "brand"}}, link("/", text(localized("Fax device")))) +
                              navigation(page));
    const Html main =
        element("main", {{"id", "content"}}, element("h1", foreignText(page.heading)) + page.content);
    const Html document = element("html",
                                  {// Translators: the code of the language that you translate to: "de", "fr".
                                   {"lang", localized("en")}},
                                  head(page) + element("body", top + main));
    return "<!DOCTYPE html>\n" + document.markup() + "\n";
}

PanelPage refusalPage(const std::string& heading, const std::string& words)
{
    return {heading, "",
            element("p", text(words)) + element("p", link("/", text(localized("To the status")))), false};
}

Html section(const std::string& heading, const Html& content)
{
    return element("section", element("h2", text(heading)) + content);
}

Html nothing(const std::string& words) { return element("p", {{"class", "nothing"}}, text(words)); }

Html table(const std::string& caption, const std::vector<std::string>& heads, const Html& rows)
{
    Html head;
    for (const auto& name : heads)
        head += element("th", {{"scope", "col"}}, text(name));
    const Html whole =
        element("caption", text(caption)) + element("thead", element("tr", head)) + element("tbody", rows);
    // What scrolls has to be reached by the keyboard.
    return element("div", {{"class", "wide"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", caption}},
                   element("table", whole));
}

Html tableRow(const std::vector<Html>& cells)
{
    Html row;
    for (const auto& cell : cells)
        row += element("td", cell);
    return element("tr", row);
}

Html tableTitle(const std::string& title)
{
    constexpr std::size_t longest = 1000; // that a browser shows
    const std::string shown = shownText(title);
    return element("bdi",
                   {{"class", "title"}, {"title", shown == oneLine(title) ? "" : shownText(title, longest)}},
                   text(shown));
}

Html unbroken(const std::string& words) { return element("span", {{"class", "unbroken"}}, text(words)); }

Html remarkBelow(const std::string& words)
{
    return words.empty() ? Html() : text(" ") + element("small", {{"class", "below"}}, foreignText(words));
}

Html factList(const std::vector<PanelFact>& facts)
{
    Html list;
    for (const auto& fact : facts)
        list += element("dt", text(fact.name)) + element("dd", fact.value);
    return element("dl", list);
}

Html pageLinks(const std::string& newer, const std::string& older)
{
    Html links;
    if (!newer.empty())
        links += element("li", link(newer, text(localized("to the first"))));
    if (!older.empty())
        links += element("li", link(older, text(localized("more"))));
    if (links.isEmpty())
        return links;
    return element("nav", {{"class", "more"}, {"aria-label", localized("More of this list")}},
                   element("ul", links));
}

Html badge(const std::string& word, const char* kind)
{
    constexpr std::size_t shortWord = 32; // bytes: a sentence needs room to be read in a few lines
    return element("span",
                   {{"class", std::string("badge ") + kind + (word.size() > shortWord ? " long" : "")}},
                   text(word));
}

Html thumbnail(const std::string& folder, int page, const std::string& description)
{
    const std::string picture = folder + "/" + std::to_string(page);
    return element(
        "a", {{"class", "page"}, {"href", picture + ".png"}},
        emptyElement(
            "img",
            {{"src", picture + "-small.png"}, {"alt", description}, {"width", "160"}, {"loading", "lazy"}}));
}

} // namespace quelm::device
