// Reads the pages of the help: headings, paragraphs and lists in plain text files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_HELP_HELP_PAGE_H
#define DRIVER_DESKTOP_HELP_HELP_PAGE_H

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// A piece of running text.
struct HelpSpan {
    std::string text;
    bool strong = false;

    bool operator==(const HelpSpan&) const = default;
};

/// A heading, a paragraph or an item of a list.
struct HelpBlock {
    enum class Kind { title, heading, paragraph, bullet, step };
    Kind kind = Kind::paragraph;
    std::vector<HelpSpan> spans;
    std::string number;              ///< of a step: "1."
    std::vector<std::string> places; ///< of a heading: what in the dialogs it is about

    bool operator==(const HelpBlock&) const = default;
};

using HelpPage = std::vector<HelpBlock>;

/// Reads a page. Lines of a paragraph stand together; an empty line ends it.
///
///     # Title                   the page's title
///     ## Heading                a section
///     <!-- about: NAME -->      ahead of a heading: it is about the window or tab of that name
///     - item                    an item of a list; indented lines go on with it
///     1. step                   a numbered item
///     **text**                  strong text, within one block
///
/// Everything is text: there is no wrong page.
HelpPage parseHelpPage(std::string_view text);

/// The text of a block without its marks.
std::string plainText(const HelpBlock& block);

/// The index of the heading that is about the first of `places` for which there is one; 0 when none is.
std::size_t blockAbout(const HelpPage& page, const std::vector<std::string>& places);

} // namespace quelm

#endif
