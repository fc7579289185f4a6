// The glyphs of a page, each as a procedure of PostScript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_GLYPH_PROCEDURES_H
#define DRIVER_DRAWINGS_GLYPH_PROCEDURES_H

#include "driver/drawings/handles.h"
#include "driver/drawings/program_text.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {

/// Collects the glyphs of a page, and defines each once, in whatever texts, sizes and fonts it occurs.
class GlyphProcedures {
public:
    /// The name of the procedure that draws the glyph at the position on the operand stack, in units of which
    /// an em has `outlineUnitsPerEm`; empty for a blank. Throws quelm::Error when the font cannot be read.
    [[nodiscard]] std::string_view nameOf(PangoFont* font, PangoGlyph glyph);

    /// The definition of a dictionary of this name, which holds the procedures. It has to be on the
    /// dictionary stack when they run.
    [[nodiscard]] std::string dictionary(std::string_view name) const;

private:
    std::string_view procedureFor(std::vector<Statement> drawing);

    std::vector<FontHandle> fonts_; // so that each address stands for one font
    std::map<std::pair<PangoFont*, PangoGlyph>, std::string_view> names_;
    std::map<std::string, std::string> nameOfProcedure_;
    std::vector<const std::pair<const std::string, std::string>*> procedures_; // in the order of their names
};

} // namespace quelm

#endif
