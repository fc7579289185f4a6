// Reads pages by libtiff, makes them smaller line by line, and writes them by Cairo.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/display/page_picture.h"

#include "base/released_by.h"
#include "device/tiff/tiff_handle.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace quelm::device {
namespace {

using SurfaceHandle = std::unique_ptr<cairo_surface_t, ReleasedBy<cairo_surface_destroy>>;

constexpr int mostPages = 100'000;
constexpr std::uint32_t mostAcross = 10'000;   // dots: a sheet of 49 inches
constexpr std::uint64_t mostDots = 40'000'000; // five sheets of the finest: faxes may come on endless paper
constexpr int highestPicture = 20'000;

std::uint16_t tagOf(TIFF& tiff, std::uint32_t tag)
{
    std::uint16_t value = 0;
    TIFFGetFieldDefaulted(&tiff, tag, &value);
    return value;
}

/// Adds lines of dots up, and makes a line of the picture of as many as it covers.
class Shrinker {
public:
    Shrinker(PagePicture& picture, std::uint32_t across, std::uint32_t down, bool oneIsBlack)
        : picture_(picture), across_(across), down_(down), oneIsBlack_(oneIsBlack),
          black_(static_cast<std::size_t>(picture.width)), covered_(black_.size())
    {
        for (std::uint32_t x = 0; x < across; ++x)
            ++covered_[column(x)];
    }

    void add(const std::vector<std::uint8_t>& line)
    {
        for (std::size_t byte = 0; byte * 8 < across_; ++byte) {
            // Most of a page is white.
            const unsigned dots = oneIsBlack_ ? line[byte] : line[byte] ^ 0xFFU;
            if (dots == 0)
                continue;
            const auto first = static_cast<std::uint32_t>(byte * 8);
            for (std::uint32_t i = 0; i < 8 && first + i < across_; ++i)
                if ((dots >> (7 - i) & 1U) != 0)
                    ++black_[column(first + i)];
        }
        ++lines_;
        ++taken_;
        // As far as the lines reach that came, once or, where dots are higher than pixels, more often.
        const int end =
            static_cast<int>(std::uint64_t{taken_} * static_cast<unsigned>(picture_.height) / down_);
        if (end == row_)
            return;
        for (; row_ < end; ++row_)
            writeRow();
        std::ranges::fill(black_, 0);
        lines_ = 0;
    }

private:
    std::size_t column(std::uint32_t x) const
    {
        return static_cast<std::size_t>(std::uint64_t{x} * black_.size() / across_);
    }

    void writeRow()
    {
        auto* out = picture_.shades.data() + static_cast<std::size_t>(row_) * black_.size();
        std::uint8_t shade = 255;
        for (std::size_t x = 0; x < black_.size(); ++x) {
            // A picture that is wider than the page repeats dots.
            if (covered_[x] > 0)
                shade = static_cast<std::uint8_t>(255 - 255 * black_[x] / (covered_[x] * lines_));
            out[x] = shade;
        }
    }

    PagePicture& picture_;
    std::uint32_t across_;
    std::uint32_t down_;
    bool oneIsBlack_;
    std::vector<std::uint64_t> black_;   // dots, of each column of the picture
    std::vector<std::uint64_t> covered_; // dots of a line, of each column
    std::uint64_t lines_ = 0;            // in black_
    std::uint32_t taken_ = 0;
    int row_ = 0;
};

/// How much higher than wide a dot is.
double dotShape(TIFF& tiff)
{
    float across = 0;
    float down = 0;
    if (TIFFGetField(&tiff, TIFFTAG_XRESOLUTION, &across) == 0 ||
        TIFFGetField(&tiff, TIFFTAG_YRESOLUTION, &down) == 0)
        return 1;
    const double shape = double{across} / double{down};
    return std::isfinite(shape) && shape > 0.05 && shape < 20 ? shape : 1;
}

cairo_status_t append(void* png, const unsigned char* bytes, unsigned size)
{
    static_cast<std::string*>(png)->append(reinterpret_cast<const char*>(bytes), size);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

int pagesIn(const std::filesystem::path& path)
{
    const TiffHandle tiff = openForeignTiff(path);
    if (tiff == nullptr)
        return 0;
    int pages = 1;
    while (pages < mostPages && TIFFReadDirectory(tiff.get()) != 0)
        ++pages;
    return pages;
}

std::optional<PagePicture> pictureOf(const std::filesystem::path& path, int page, int width)
{
    const TiffHandle tiff = openForeignTiff(path);
    if (tiff == nullptr || page < 1 || page > mostPages || width < 1)
        return std::nullopt;
    for (int i = 1; i < page; ++i)
        if (TIFFReadDirectory(tiff.get()) == 0)
            return std::nullopt;

    std::uint32_t across = 0;
    std::uint32_t down = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &across);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &down);
    if (across == 0 || down == 0 || across > mostAcross || std::uint64_t{across} * down > mostDots ||
        TIFFIsTiled(tiff.get()) != 0 || tagOf(*tiff, TIFFTAG_BITSPERSAMPLE) != 1 ||
        tagOf(*tiff, TIFFTAG_SAMPLESPERPIXEL) != 1)
        return std::nullopt;

    const double height = std::round(width * dotShape(*tiff) * down / across);
    PagePicture picture;
    picture.width = width;
    picture.height = static_cast<int>(std::clamp(height, 1.0, double{highestPicture}));
    picture.shades.assign(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height),
                          255);

    std::vector<std::uint8_t> line(
        static_cast<std::size_t>(std::max<tmsize_t>(TIFFScanlineSize(tiff.get()), (across + 7) / 8)));
    const bool oneIsBlack = tagOf(*tiff, TIFFTAG_PHOTOMETRIC) == PHOTOMETRIC_MINISWHITE;
    Shrinker shrinker(picture, across, down, oneIsBlack);
    for (std::uint32_t y = 0; y < down; ++y) {
        if (TIFFReadScanline(tiff.get(), line.data(), y, 0) != 1)
            return std::nullopt;
        shrinker.add(line);
    }
    return picture;
}

PagePicture blankPage(int width)
{
    PagePicture picture;
    picture.width = width;
    picture.height = width * 11 / 8;
    picture.shades.assign(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height),
                          240);
    return picture;
}

std::string pngOf(const PagePicture& picture)
{
    // Cairo writes a mask as shades of grey.
    const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_A8, picture.width);
    const auto width = static_cast<std::size_t>(picture.width);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(stride) *
                                     static_cast<std::size_t>(picture.height));
    for (int y = 0; y < picture.height; ++y)
        std::copy_n(picture.shades.data() + static_cast<std::size_t>(y) * width, width,
                    bytes.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(stride));
    const SurfaceHandle surface(cairo_image_surface_create_for_data(bytes.data(), CAIRO_FORMAT_A8,
                                                                    picture.width, picture.height, stride));
    std::string png;
    cairo_surface_write_to_png_stream(surface.get(), append, &png);
    return png;
}

} // namespace quelm::device
