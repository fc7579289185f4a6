// Lays texts out and takes their outlines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/pango_drawings.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/drawings/fonts.h"
#include "driver/drawings/glyph_font.h"
#include "driver/drawings/glyph_procedures.h"
#include "driver/drawings/pango_kept_quiet.h"
#include "driver/drawings/program_text.h"
#include "driver/drawings/text_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <set>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t longestText = std::size_t{1} << 17U;
constexpr std::size_t mostLines = 65535;

/// How much smaller a line of this size is drawn, so that its ink keeps to the room: 1 to a half.
double factorFor(const LaidOutLine& line, double size, const Drawings::LineRoom& room)
{
    double factor = 1;
    for (const auto& [reach, most] : {std::pair(line.above, room.above), std::pair(line.below, room.below)})
        if (reach * size > most)
            factor = std::min(factor, most / (reach * size));
    return std::max(factor, 0.5);
}

struct DrawnLine {
    std::string procedure; ///< without the dictionary of the glyphs
    double width = 0;      ///< from the beginning of the line to its right end, in points
};

DrawnLine drawn(const LaidOutLine& line, GlyphProcedures& glyphs, double size, double widest,
                const Drawings::LineRoom& room)
{
    // What is printed is what callers go by, to the last decimal.
    const auto rounded = [](double points) { return std::round(points * 1000) / 1000; };
    const bool endsAtWidest = line.rightToLeft && std::isfinite(widest);
    const double indent = endsAtWidest ? std::max(0.0, widest - line.width * size) : 0;
    const double width = rounded(indent + line.width * size);

    std::vector<Statement> statements{plainStatement("gsave currentpoint translate newpath")};
    if (indent > 0)
        statements.push_back(plainStatement(numberText(indent) + " 0 translate"));
    if (line.rightToLeft && width > room.width) {
        // Far more than a line is high: only what is on the left is to be cut off.
        const double height = 100 * size;
        statements.push_back(plainStatement("0 " + numberText(-height) + ' ' + numberText(room.width) + ' ' +
                                            numberText(2 * height) + " rectclip"));
        statements.push_back(plainStatement(numberText(room.width - width) + " 0 translate"));
    }
    statements.push_back(
        plainStatement(numberText(size) + ' ' + numberText(long{outlineUnitsPerEm}) + " div dup scale"));
    for (const auto& placed : line.glyphs) {
        const auto units = [](double ems) { return numberText(std::lround(ems * outlineUnitsPerEm)); };
        if (const auto name = glyphs.nameOf(placed.font, placed.glyph); !name.empty())
            statements.push_back(
                plainStatement(units(placed.x) + ' ' + units(placed.y) + ' ' + std::string(name)));
    }
    statements.push_back(plainStatement("grestore"));
    statements.push_back(plainStatement(numberText(width) + " 0 rmoveto"));
    return {procedureOf(std::move(statements)), width};
}

} // namespace

struct PangoDrawings::Parts {
    /// The text's layout by fonts with outlines, or, where another has more of its characters, by all fonts.
    TextLayout layOut(std::string_view text, Typeface typeface, double widest)
    {
        const char* const family = typeface == Typeface::serif ? "Times" : "Helvetica";
        if (fonts == nullptr)
            fonts = Fonts::ofThisMachine();
        if (outlines == nullptr)
            outlines = fonts->newFontMap(FontChoice::outlines);
        TextLayout layout(outlines.get(), family, text, widest);
        if (layout.missing().empty())
            return layout;
        if (all == nullptr)
            all = fonts->newFontMap(FontChoice::all);
        TextLayout colourful(all.get(), family, text, widest);
        return colourful.missing().size() < layout.missing().size() ? std::move(colourful)
                                                                    : std::move(layout);
    }

    std::shared_ptr<const Fonts> fonts; // null stands for those of this machine
    FontMapHandle outlines;             // made when a text needs them
    FontMapHandle all;
    GlyphProcedures glyphs;
    std::vector<std::string> lines;
    std::set<gunichar> missing;
};

PangoDrawings::PangoDrawings() : PangoDrawings(nullptr) {}

PangoDrawings::PangoDrawings(std::shared_ptr<const Fonts> fonts) : parts_(std::make_unique<Parts>())
{
    parts_->fonts = std::move(fonts);
}

PangoDrawings::~PangoDrawings() = default;

std::vector<Drawings::Line> PangoDrawings::draw(std::string_view text, Typeface typeface, double size,
                                                double widest, const LineRoom& room)
{
    if (text.size() > longestText)
        throw Error(
            localized("the cover page cannot be drawn: one of its texts is longer than 128 KB; shorten it"));
    const PangoKeptQuiet quiet;
    const auto layout = parts_->layOut(text, typeface, widest / size);
    if (parts_->lines.size() + layout.lines().size() > mostLines)
        throw Error(localized("the cover page cannot be drawn: its texts are too long; shorten them"));

    std::vector<Line> added;
    std::vector<std::string> procedures;
    for (const auto& line : layout.lines()) {
        const double drawnSize = size * factorFor(line, size, room);
        auto [procedure, width] = drawn(line, parts_->glyphs, drawnSize, widest, room);
        constexpr double tolerance = 0.01; // of a point
        const bool isTooTall = line.above * drawnSize > room.above + tolerance ||
                               line.below * drawnSize > room.below + tolerance;
        added.push_back({parts_->lines.size() + procedures.size(), width, isTooTall});
        procedures.push_back(std::move(procedure));
    }
    std::move(procedures.begin(), procedures.end(), std::back_inserter(parts_->lines));

    for (const auto character : layout.missing()) {
        std::array<char, 6> bytes{};
        if (parts_->missing.insert(character).second)
            missing_.append(bytes.data(),
                            static_cast<std::size_t>(g_unichar_to_utf8(character, bytes.data())));
    }
    return added;
}

std::string PangoDrawings::postScript(std::string_view name) const
{
    const std::string array(name);
    const std::string glyphs = array + "Glyphs";
    std::string program = parts_->glyphs.dictionary(glyphs);
    program += inLines("/" + array + " " + std::to_string(parts_->lines.size()) + " array def");

    // The dictionary is found while this is read: the page may have names of its own on top of it by then.
    std::size_t index = 0;
    for (const auto& line : parts_->lines)
        program += inLines(array + " " + std::to_string(index++) + " { //" + glyphs + " begin " + line +
                           " exec end } bind put");
    return program;
}

} // namespace quelm
