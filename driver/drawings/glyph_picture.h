// A glyph as a picture.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_GLYPH_PICTURE_H
#define DRIVER_DRAWINGS_GLYPH_PICTURE_H

#include "driver/drawings/program_text.h"

#include <pango/pango.h>

#include <vector>

namespace quelm {

/// Statements that draw a glyph of a coloured font in grays on white, its origin being the origin of the
/// coordinates, of which an em has `outlineUnitsPerEm`; none for a blank. Throws quelm::Error when the font
/// cannot be read.
[[nodiscard]] std::vector<Statement> pictureOf(PangoFont* font, PangoGlyph glyph);

/// The same in the current colour, and nothing beside the glyph.
[[nodiscard]] std::vector<Statement> stencilOf(PangoFont* font, PangoGlyph glyph);

} // namespace quelm

#endif
