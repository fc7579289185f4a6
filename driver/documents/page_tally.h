// Counts the pages of PostScript that Ghostscript writes, and sees whether it is whole.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_PAGE_TALLY_H
#define DRIVER_DOCUMENTS_PAGE_TALLY_H

#include <string>
#include <string_view>

namespace quelm {

/// Looks at the structuring comments of a document that comes piece by piece: one that Ghostscript made has a
/// line "%%Page: N N" ahead of each page, and "%%EOF" as its last line.
class PageTally {
public:
    void append(std::string_view bytes);

    /// How many pages there are, numbered one after the other from 1.
    long pages() const { return pages_; }

    /// True when the last line that is not empty is "%%EOF".
    bool atEnd() const { return line_ == endOfFile || (line_.empty() && ended_); }

private:
    static constexpr std::string_view endOfFile = "%%EOF";

    void endLine();

    std::string line_;   ///< the start of the line that is not ended yet
    bool ended_ = false; ///< whether the line ahead of it was the last one
    long pages_ = 0;
};

} // namespace quelm

#endif
