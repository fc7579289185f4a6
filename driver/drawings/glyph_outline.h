// A glyph as a path to fill.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_GLYPH_OUTLINE_H
#define DRIVER_DRAWINGS_GLYPH_OUTLINE_H

#include "driver/drawings/program_text.h"

#include <pango/pango.h>

#include <vector>

namespace quelm {

/// Statements that fill the glyph's outline, whose origin is the origin of the coordinates; none for a blank.
/// They call `moveto` m, `lineto` l, `curveto` c, `closepath` h, and `fill` f. A few ornaments have more
/// points than a path may have: they become stencils. Throws quelm::Error when the font cannot be read.
[[nodiscard]] std::vector<Statement> outlineOf(PangoFont* font, PangoGlyph glyph);

} // namespace quelm

#endif
