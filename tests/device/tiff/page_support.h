// Pages for tests, written and read with the TIFF library alone.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_TIFF_PAGE_SUPPORT_H
#define TESTS_DEVICE_TIFF_PAGE_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace quelm::device::tests {

/// A page as any reader of TIFF sees it.
struct Page {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int across = 0; ///< dots in an inch
    int down = 0;
    std::vector<std::uint8_t> dots; ///< a row of whole bytes behind the other, black is 1

    bool operator==(const Page&) const = default;
};

void PrintTo(const Page& page, std::ostream* stream);

/// Throws std::runtime_error when the file is no TIFF file of black and white pages.
std::vector<Page> pagesIn(const std::string& file);

/// Writes pages as Ghostscript does: T.6, 1,728 dots wide.
void writePages(const std::string& file, const std::vector<Page>& pages);

/// A page with some lines on it that differ from those of other numbers.
Page samplePage(int number, int down = 98, std::uint32_t height = 200);

} // namespace quelm::device::tests

#endif
