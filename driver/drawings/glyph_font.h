// The font of a laid-out text, at a size at which single glyphs are taken out of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_GLYPH_FONT_H
#define DRIVER_DRAWINGS_GLYPH_FONT_H

#include "driver/drawings/handles.h"

namespace quelm {

/// How many units an em has in drawings: fine enough for any size of text, and whole numbers.
inline constexpr int outlineUnitsPerEm = 2048;

/// Reports that Cairo could not do what a page needs, as quelm::Error, unless `status` is success.
void requireSuccess(cairo_status_t status);

/// `font`, of a text layout, with an em of `size` units and without hinting. Throws quelm::Error when the
/// font cannot be read.
[[nodiscard]] ScaledFontHandle fontOfSize(PangoFont* font, double size);

/// The glyph with its origin at (`x`, `y`).
[[nodiscard]] cairo_glyph_t glyphAt(PangoGlyph glyph, double x, double y);

/// True when the font's glyphs are coloured pictures.
[[nodiscard]] bool isColoured(PangoFont* font);

} // namespace quelm

#endif
