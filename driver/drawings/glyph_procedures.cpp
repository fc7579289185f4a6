// Gives each glyph of a page its procedure and its name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/glyph_procedures.h"

#include "driver/drawings/glyph_font.h"
#include "driver/drawings/glyph_outline.h"
#include "driver/drawings/glyph_picture.h"

#include <array>
#include <iterator>

namespace quelm {
namespace {

/// The operators of outlines, by names that take little room: a page may have some 10,000 of them.
constexpr std::array<std::pair<const char*, const char*>, 5> shortNames = {
    {{"m", "moveto"}, {"l", "lineto"}, {"c", "curveto"}, {"h", "closepath"}, {"f", "fill"}}};

} // namespace

std::string_view GlyphProcedures::nameOf(PangoFont* font, PangoGlyph glyph)
{
    if (const auto known = names_.find({font, glyph}); known != names_.end())
        return known->second;
    const std::string_view name =
        procedureFor(isColoured(font) ? pictureOf(font, glyph) : outlineOf(font, glyph));
    fonts_.emplace_back(static_cast<PangoFont*>(g_object_ref(font)));
    names_.emplace(std::pair(font, glyph), name);
    return name;
}

std::string_view GlyphProcedures::procedureFor(std::vector<Statement> drawing)
{
    if (drawing.empty())
        return {};
    std::vector<Statement> statements{plainStatement("gsave translate")};
    std::move(drawing.begin(), drawing.end(), std::back_inserter(statements));
    statements.push_back(plainStatement("grestore"));

    const auto [procedure, isFirst] = nameOfProcedure_.try_emplace(procedureOf(std::move(statements)));
    if (isFirst) {
        procedure->second = "g" + std::to_string(procedures_.size());
        procedures_.push_back(&*procedure);
    }
    return procedure->second;
}

std::string GlyphProcedures::dictionary(std::string_view name) const
{
    const std::string dictionary(name);
    std::string program =
        inLines("/" + dictionary + " " + std::to_string(shortNames.size() + procedures_.size()) +
                " dict def " + dictionary + " begin");
    for (const auto& [shortName, operation] : shortNames)
        program += inLines(std::string("/") + shortName + " /" + operation + " load def");
    for (const auto* procedure : procedures_)
        program += inLines("/" + procedure->second + " " + procedure->first + " bind def");
    return program + "end\n";
}

} // namespace quelm
