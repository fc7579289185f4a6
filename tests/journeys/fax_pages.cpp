// Reads fax files by libtiff, and has Ghostscript make some.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/fax_pages.h"

#include "tests/journeys/run_program.h"

#include <tiffio.h>

#include <cmath>
#include <memory>
#include <ostream>
#include <stdexcept>

namespace journeys {
namespace {

FaxPage readPage(TIFF* file)
{
    FaxPage page;
    float across = 0;
    float down = 0;
    std::uint16_t bits = 1;
    std::uint16_t photometric = PHOTOMETRIC_MINISWHITE;
    TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &page.width);
    TIFFGetField(file, TIFFTAG_IMAGELENGTH, &page.height);
    TIFFGetField(file, TIFFTAG_XRESOLUTION, &across);
    TIFFGetField(file, TIFFTAG_YRESOLUTION, &down);
    TIFFGetFieldDefaulted(file, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(file, TIFFTAG_PHOTOMETRIC, &photometric);
    if (bits != 1)
        throw std::runtime_error("the page is not black and white");
    page.across = static_cast<int>(std::lround(across));
    page.down = static_cast<int>(std::lround(down));
    const auto size = static_cast<std::size_t>(TIFFScanlineSize(file));
    page.dots.resize(size * page.height);
    for (std::uint32_t row = 0; row < page.height; ++row)
        if (TIFFReadScanline(file, page.dots.data() + size * row, row) < 0)
            throw std::runtime_error("the page ends early");
    if (photometric == PHOTOMETRIC_MINISBLACK)
        for (auto& dots : page.dots)
            dots = static_cast<std::uint8_t>(~dots);
    return page;
}

} // namespace

void PrintTo(const FaxPage& page, std::ostream* stream)
{
    std::size_t black = 0;
    for (const auto dots : page.dots)
        black += static_cast<std::size_t>(__builtin_popcount(dots));
    *stream << page.width << "x" << page.height << " at " << page.across << "x" << page.down << ", " << black
            << " black dots";
}

std::vector<FaxPage> faxPagesIn(const std::string& file)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), &TIFFClose);
    if (!tiff)
        throw std::runtime_error(file + " is no TIFF file");
    std::vector<FaxPage> pages;
    do
        pages.push_back(readPage(tiff.get()));
    while (TIFFReadDirectory(tiff.get()) != 0);
    return pages;
}

std::vector<FaxPage> renderedPages(const std::string& job, const std::string& density,
                                   const std::string& tiff)
{
    Request request;
    request.arguments = {"gs",
                         "-q",
                         "-dSAFER",
                         "-dBATCH",
                         "-dNOPAUSE",
                         "-sDEVICE=tiffg4",
                         "-r" + density,
                         "-sOutputFile=" + tiff,
                         job};
    const auto result = runProgram(request);
    if (result.status != 0)
        throw std::runtime_error("Ghostscript failed: " + result.output + result.errors);
    return faxPagesIn(tiff);
}

} // namespace journeys
