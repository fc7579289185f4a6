// Takes a font from Pango's size to another.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/glyph_font.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/drawings/text_layout.h"

#include <pango/pangocairo.h>
#include <pango/pangofc-font.h>

namespace quelm {

void requireSuccess(cairo_status_t status)
{
    if (status != CAIRO_STATUS_SUCCESS)
        throw Error(
            localized("the cover page cannot be drawn: one of the machine's fonts cannot be used (%s)",
                      cairo_status_to_string(status)));
}

ScaledFontHandle fontOfSize(PangoFont* font, double size)
{
    cairo_scaled_font_t* const laidOut = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font));
    requireSuccess(laidOut == nullptr ? CAIRO_STATUS_FILE_NOT_FOUND : cairo_scaled_font_status(laidOut));

    // The matrix may hold more than the size: what the user's rules slant or scale stays so.
    cairo_matrix_t matrix;
    cairo_scaled_font_get_font_matrix(laidOut, &matrix);
    const double factor = size / layoutPixelsPerEm;
    cairo_matrix_scale(&matrix, factor, factor);

    cairo_matrix_t identity;
    cairo_matrix_init_identity(&identity);
    const FontOptionsHandle options(cairo_font_options_create());
    cairo_scaled_font_get_font_options(laidOut, options.get());
    setWithoutScreen(*options);
    ScaledFontHandle scaled(cairo_scaled_font_create(cairo_scaled_font_get_font_face(laidOut), &matrix,
                                                     &identity, options.get()));
    requireSuccess(cairo_scaled_font_status(scaled.get()));
    return scaled;
}

cairo_glyph_t glyphAt(PangoGlyph glyph, double x, double y) { return {glyph, x, y}; }

bool isColoured(PangoFont* font)
{
    FcBool coloured = FcFalse;
    return FcPatternGetBool(pango_fc_font_get_pattern(PANGO_FC_FONT(font)), FC_COLOR, 0, &coloured) ==
               FcResultMatch &&
           coloured == FcTrue;
}

} // namespace quelm
