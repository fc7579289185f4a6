// Writes and reads pages for tests.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/tiff/page_support.h"

#include <tiffio.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <memory>
#include <ostream>
#include <stdexcept>

namespace quelm::device::tests {
namespace {

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

constexpr std::uint32_t pageWidth = 1728;

Page readPage(TIFF* tiff)
{
    Page page;
    std::uint16_t bits = 1;
    std::uint16_t meaning = PHOTOMETRIC_MINISWHITE;
    float across = 0;
    float down = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &page.width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &page.height);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &meaning);
    TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &across);
    TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &down);
    page.across = static_cast<int>(std::lround(across));
    page.down = static_cast<int>(std::lround(down));
    if (bits != 1)
        throw std::runtime_error("no black and white page");
    const std::size_t rowSize = (page.width + 7) / 8;
    page.dots.resize(rowSize * page.height);
    for (std::uint32_t row = 0; row < page.height; ++row)
        if (TIFFReadScanline(tiff, page.dots.data() + rowSize * row, row) < 0)
            throw std::runtime_error("unreadable row");
    if (meaning == PHOTOMETRIC_MINISBLACK)
        for (std::uint8_t& byte : page.dots)
            byte = static_cast<std::uint8_t>(~byte);
    return page;
}

} // namespace

void PrintTo(const Page& page, std::ostream* stream)
{
    std::size_t black = 0;
    for (const std::uint8_t dots : page.dots)
        black += static_cast<std::size_t>(std::popcount(dots));
    *stream << page.width << " x " << page.height << " dots, " << page.across << " x " << page.down
            << " dpi, " << black << " of them black";
}

std::vector<Page> pagesIn(const std::string& file)
{
    const Tiff tiff(TIFFOpen(file.c_str(), "r"));
    if (tiff == nullptr)
        throw std::runtime_error(file + ": no TIFF file");
    std::vector<Page> pages;
    do
        pages.push_back(readPage(tiff.get()));
    while (TIFFReadDirectory(tiff.get()) != 0);
    return pages;
}

void writePages(const std::string& file, const std::vector<Page>& pages)
{
    const Tiff tiff(TIFFOpen(file.c_str(), "w"));
    if (tiff == nullptr)
        throw std::runtime_error(file + ": cannot be written");
    for (const Page& page : pages) {
        TIFFSetField(tiff.get(), TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, page.width);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, page.height);
        TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_CCITT_T6);
        TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
        TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, page.height);
        TIFFSetField(tiff.get(), TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        TIFFSetField(tiff.get(), TIFFTAG_XRESOLUTION, static_cast<float>(page.across));
        TIFFSetField(tiff.get(), TIFFTAG_YRESOLUTION, static_cast<float>(page.down));
        std::vector<std::uint8_t> row((page.width + 7) / 8);
        for (std::uint32_t number = 0; number < page.height; ++number) {
            std::copy_n(page.dots.begin() + static_cast<std::ptrdiff_t>(row.size() * number), row.size(),
                        row.begin());
            TIFFWriteScanline(tiff.get(), row.data(), number);
        }
        TIFFWriteDirectory(tiff.get());
    }
}

Page samplePage(int number, int down, std::uint32_t height)
{
    Page page{.width = pageWidth, .height = height, .across = 204, .down = down, .dots = {}};
    page.dots.resize(std::size_t{pageWidth / 8} * height);
    // Some lines of "text", at places that the page's number decides.
    std::uint32_t state = static_cast<std::uint32_t>(number) * 2654435761U + 1;
    for (std::uint32_t row = 10; row < height; row += 10)
        for (std::size_t column = 20; column < 60; ++column) {
            state = state * 1664525U + 1013904223U;
            page.dots[row * (pageWidth / 8) + column] = static_cast<std::uint8_t>(state >> 24U);
        }
    return page;
}

} // namespace quelm::device::tests
