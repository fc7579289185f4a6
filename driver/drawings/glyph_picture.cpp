// Draws a glyph, and writes its pixels as PostScript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/glyph_picture.h"

#include "driver/drawings/glyph_font.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace quelm {
namespace {

/// How a picture is written.
struct Form {
    double pixelsPerEm;
    std::size_t pixelsPerDigit; ///< of four bits
    const char* kind;           ///< what stands ahead of the matrix
    const char* operation;      ///< what draws it
};

/// What coloured fonts have, about, and little enough for a device's memory: 128 rows of 16 grays are 8 KB.
constexpr Form grays = {128, 1, "4", "image"};

/// As fine as a fax at any size of text.
constexpr Form stencil = {256, 4, "true", "imagemask"};

/// How many digits a picture has at most: a string of PostScript has room for 65,535 bytes, of two digits
/// each.
constexpr double mostDigits = 120000;

/// A glyph's pixels, from left to right and from the top down, from black to white. `left` and `top` are
/// counted from its origin, downwards.
struct Pixels {
    double perEm = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> values;
};

/// Measures the glyph. Its values are not there yet.
Pixels measured(cairo_scaled_font_t* font, PangoGlyph glyph, double perEm)
{
    const auto placed = glyphAt(glyph, 0, 0);
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(font, &placed, 1, &extents);
    requireSuccess(cairo_scaled_font_status(font));
    const auto whole = [](double value) { return static_cast<int>(std::clamp(value, -1e6, 1e6)); };
    const int left = whole(std::floor(extents.x_bearing));
    const int top = whole(std::floor(extents.y_bearing));
    return {perEm,
            left,
            top,
            whole(std::ceil(extents.x_bearing + extents.width)) - left,
            whole(std::ceil(extents.y_bearing + extents.height)) - top,
            {}};
}

void draw(cairo_scaled_font_t* font, PangoGlyph glyph, Pixels& pixels)
{
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels.width, pixels.height));
    const CairoHandle cairo(cairo_create(surface.get()));
    cairo_set_source_rgb(cairo.get(), 1, 1, 1);
    cairo_paint(cairo.get());
    cairo_set_source_rgb(cairo.get(), 0, 0, 0);
    cairo_set_scaled_font(cairo.get(), font);
    const auto placed = glyphAt(glyph, -pixels.left, -pixels.top);
    cairo_show_glyphs(cairo.get(), &placed, 1);
    requireSuccess(cairo_status(cairo.get()));
    cairo_surface_flush(surface.get());

    const auto rowSize = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    const std::span bytes(cairo_image_surface_get_data(surface.get()),
                          rowSize * static_cast<std::size_t>(pixels.height));
    for (std::size_t row = 0; row < bytes.size(); row += rowSize) {
        for (std::size_t column = 0; column < static_cast<std::size_t>(pixels.width); ++column) {
            std::uint32_t colour = 0; // 0xRRGGBB
            std::memcpy(&colour, &bytes[row + column * sizeof colour], sizeof colour);
            const auto part = [colour](unsigned int shift) { return (colour >> shift) & 0xFFU; };
            pixels.values.push_back(
                static_cast<std::uint8_t>((part(16) * 299 + part(8) * 587 + part(0) * 114) / 1000));
        }
    }
}

/// The glyph's pixels, in a coarser grid where it is so large that they would be too many.
Pixels pixelsOf(PangoFont* font, PangoGlyph glyph, const Form& form)
{
    const double most = mostDigits * static_cast<double>(form.pixelsPerDigit);
    for (double perEm = form.pixelsPerEm;; perEm /= 2) {
        const auto scaled = fontOfSize(font, perEm);
        Pixels pixels = measured(scaled.get(), glyph, perEm);
        if (static_cast<double>(pixels.width) * pixels.height > most)
            continue;
        if (pixels.width > 0 && pixels.height > 0)
            draw(scaled.get(), glyph, pixels);
        return pixels;
    }
}

/// The value of a digit for the pixels that it stands for, of which the last row's end may have fewer.
unsigned int digitOf(std::span<const std::uint8_t> values, const Form& form)
{
    if (form.pixelsPerDigit == 1)
        return values[0] / 16U;
    unsigned int digit = 0;
    for (std::size_t i = 0; i < form.pixelsPerDigit; ++i)
        digit = digit * 2 + (i < values.size() && values[i] < 128 ? 1 : 0);
    return digit;
}

/// The pixels as a string of PostScript, each row in tokens of its own and in whole bytes.
std::string stringOf(const Pixels& pixels, const Form& form)
{
    constexpr std::size_t tokenLength = 80;
    std::string text = "<";
    const auto width = static_cast<std::size_t>(pixels.width);
    for (std::span values(pixels.values); !values.empty(); values = values.subspan(width)) {
        std::string digits;
        for (std::size_t i = 0; i < width; i += form.pixelsPerDigit)
            digits += "0123456789abcdef"[digitOf(values.subspan(i, std::min(form.pixelsPerDigit, width - i)),
                                                 form)];
        digits.append(digits.size() % 2, '0');
        for (std::size_t i = 0; i < digits.size(); i += tokenLength)
            text += ' ' + digits.substr(i, tokenLength);
    }
    return text + " >";
}

std::vector<Statement> statementsFor(PangoFont* font, PangoGlyph glyph, const Form& form)
{
    const Pixels pixels = pixelsOf(font, glyph, form);
    if (pixels.values.empty())
        return {};
    const auto units = [&](int count) { return numberText(count * outlineUnitsPerEm / pixels.perEm); };
    const std::string width = numberText(long{pixels.width});
    const std::string height = numberText(long{pixels.height});
    return {
        plainStatement(units(pixels.left) + ' ' + units(-pixels.top - pixels.height) + " translate"),
        plainStatement(units(pixels.width) + ' ' + units(pixels.height) + " scale"),
        plainStatement(width + ' ' + height + ' ' + form.kind + " [ " + width + " 0 0 -" + height + " 0 " +
                       height + " ]"),
        {stringOf(pixels, form) + ' ' + form.operation, 2},
    };
}

} // namespace

std::vector<Statement> pictureOf(PangoFont* font, PangoGlyph glyph)
{
    return statementsFor(font, glyph, grays);
}

std::vector<Statement> stencilOf(PangoFont* font, PangoGlyph glyph)
{
    return statementsFor(font, glyph, stencil);
}

} // namespace quelm
