// The pages of a job as a fax sends them: black and white, at the density of a resolution, in one TIFF file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PAGES_PAGE_FILE_H
#define DEVICE_PAGES_PAGE_FILE_H

#include "device/pages/page_bounds.h"

#include <cstdint>
#include <string>

namespace quelm::device {

/// Dots in an inch.
struct PageDensity {
    int across = 204;
    int down = 98;
};

/// Renders PostScript (a part of a file) into a TIFF file of T.6 pages (class F), each 1,728 dots wide, which
/// every fax machine takes, and as long as the document says. Dots are those that Ghostscript's fax devices
/// draw. A narrower page has white at its right. A wider one is drawn again, smaller as a whole. One that is
/// wider than high and would lose more than 15 % of its width by that is turned instead, and made smaller
/// only as far as it must. Nothing becomes larger.
///
/// Returns the number of pages, which is at least 1. `tiff` appears whole, and may replace another. Throws
/// quelm::Error, with one line that says what is wrong with the document, when it is no PostScript, fails,
/// has no page or too many, one without size or longer than 2 m, or a bound was reached; NoRoom when a disk
/// is full. `tiff` is as it was then. What killed renderings left beside `tiff` is removed.
int renderPages(const std::string& file, std::uint64_t begin, std::uint64_t end, const PageDensity& density,
                const std::string& tiff, const PageBounds& bounds = {});

/// The same for a job that is printed: 300 dots in an inch both ways, and each page of its own size.
int printPages(const std::string& file, std::uint64_t begin, std::uint64_t end, const std::string& tiff,
               const PageBounds& bounds = {});

} // namespace quelm::device

#endif
