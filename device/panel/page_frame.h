// What all status pages have around their content.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_PAGE_FRAME_H
#define DEVICE_PANEL_PAGE_FRAME_H

#include "device/panel/html.h"

#include <string>
#include <vector>

namespace quelm::device {

/// A page: its heading, which its window's title begins with, and what stands below it.
struct PanelPage {
    std::string heading;
    std::string section; ///< the address of the part that it belongs to: "/jobs"
    Html content;
    bool refreshes = false; ///< something is under way: the browser is to ask again
};

/// The page as an HTML document.
[[nodiscard]] std::string documentOf(const PanelPage& page);

/// A page for a request that cannot be met: `words` are a sentence.
[[nodiscard]] PanelPage refusalPage(const std::string& heading, const std::string& words);

/// A part of a page with a heading of its own.
[[nodiscard]] Html section(const std::string& heading, const Html& content);

/// A line that says that there is nothing.
[[nodiscard]] Html nothing(const std::string& words);

/// A table that may be scrolled sideways on narrow screens. `caption` is for those who do not see it; `rows`
/// are made by `tableRow`.
[[nodiscard]] Html table(const std::string& caption, const std::vector<std::string>& heads, const Html& rows);
[[nodiscard]] Html tableRow(const std::vector<Html>& cells);

/// A title for a table: a long one is cut, and shown whole to whoever points at it.
[[nodiscard]] Html tableTitle(const std::string& title);

/// A text in one line, as moments are.
[[nodiscard]] Html unbroken(const std::string& words);

/// A remark below what stands in a cell; nothing without words.
[[nodiscard]] Html remarkBelow(const std::string& words);

/// Names and values, one below the other.
struct PanelFact {
    std::string name;
    Html value;
};
[[nodiscard]] Html factList(const std::vector<PanelFact>& facts);

/// Links to the pages beside a part of a list: an address that is empty has no link.
[[nodiscard]] Html pageLinks(const std::string& newer, const std::string& older);

/// A state's word in its colour: `kind` is "good", "bad", "busy" or "quiet".
[[nodiscard]] Html badge(const std::string& word, const char* kind);

/// The picture of a page, which leads to the whole page.
[[nodiscard]] Html thumbnail(const std::string& folder, int page, const std::string& description);

} // namespace quelm::device

#endif
