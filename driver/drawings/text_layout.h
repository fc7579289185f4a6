// Lays a text out: which glyph of which font stands where.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_TEXT_LAYOUT_H
#define DRIVER_DRAWINGS_TEXT_LAYOUT_H

#include "driver/drawings/handles.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// How many of Pango's pixels an em is laid out with. Positions are kept in 1/1024 of a pixel; a line of
/// 100,000 characters has to fit into what Pango counts with.
inline constexpr int layoutPixelsPerEm = 16;

/// A glyph on its line. Lengths are in ems, so that one layout does for every size.
struct PlacedGlyph {
    PangoFont* font = nullptr; ///< of the layout
    PangoGlyph glyph = 0;
    double x = 0; ///< from the beginning of the line
    double y = 0; ///< above the base line
};

struct LaidOutLine {
    std::vector<PlacedGlyph> glyphs; ///< from left to right; without those that no font has
    double width = 0;                ///< in ems
    double above = 0;                ///< how far its ink reaches above the base line, in ems
    double below = 0;                ///< and below it
    bool rightToLeft = false;        ///< its text is read from right to left as a whole
};

/// Takes out of the options what belongs to a screen: glyphs keep their shape and width at every size.
void setWithoutScreen(cairo_font_options_t& options);

/// One paragraph of text, laid out with the fonts of `fontMap` that go with `family` in lines of at most
/// `widest` ems; a single character that is wider makes a line of its own. Screens and their settings change
/// nothing. Control characters, and separators of lines and paragraphs, are laid out as blanks, what is no
/// UTF-8 as U+FFFD.
class TextLayout {
public:
    TextLayout(PangoFontMap* fontMap, const char* family, std::string_view text, double widest);

    [[nodiscard]] const std::vector<LaidOutLine>& lines() const { return lines_; }

    /// The characters that none of the fonts has, in the order of the lines; those that show as nothing
    /// are not among them.
    [[nodiscard]] const std::vector<gunichar>& missing() const { return missing_; }

private:
    void addLinesOf(const std::string& content);
    void keepDirection(const LaidOutLine& line); // for the text that follows
    void addLine(PangoLayoutLine& line);
    void addRun(LaidOutLine& line, const PangoGlyphItem& run);

    LayoutHandle layout_;
    std::vector<FontHandle> fonts_; // of the lines
    std::vector<LaidOutLine> lines_;
    std::vector<gunichar> missing_;
};

} // namespace quelm

#endif
