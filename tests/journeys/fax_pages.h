// The pages of fax files, dot by dot.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_FAX_PAGES_H
#define TESTS_JOURNEYS_FAX_PAGES_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace journeys {

/// A page as any reader of TIFF sees it.
struct FaxPage {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int across = 0; ///< dots in an inch
    int down = 0;
    std::vector<std::uint8_t> dots; ///< a row of whole bytes behind the other, black is 1

    bool operator==(const FaxPage&) const = default;
};

void PrintTo(const FaxPage& page, std::ostream* stream);

/// Throws std::runtime_error when the file is no TIFF file of black and white pages.
std::vector<FaxPage> faxPagesIn(const std::string& file);

/// What Ghostscript itself makes of a print job at a density. Throws std::runtime_error when it fails.
std::vector<FaxPage> renderedPages(const std::string& job, const std::string& density,
                                   const std::string& tiff);

} // namespace journeys

#endif
