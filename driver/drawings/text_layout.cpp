// Has Pango lay a text out, free of what belongs to screens.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/text_layout.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <limits>

namespace quelm {
namespace {

constexpr double unitsPerEm = layoutPixelsPerEm * double{PANGO_SCALE};

/// How many bytes of text are broken into lines at a time. For each line, Pango goes over all that follows.
constexpr std::size_t pieceOfText = 1024;

bool showsAsBlank(gunichar character)
{
    const auto type = g_unichar_type(character);
    return type == G_UNICODE_CONTROL || type == G_UNICODE_LINE_SEPARATOR ||
           type == G_UNICODE_PARAGRAPH_SEPARATOR;
}

/// The text as valid UTF-8, with blanks for what Pango would break lines at.
std::string layoutText(std::string_view text)
{
    const std::unique_ptr<char, ReleasedBy<g_free>> valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string result;
    for (const char* at = valid.get(); *at != '\0'; at = g_utf8_next_char(at))
        if (showsAsBlank(g_utf8_get_char(at)))
            result += ' ';
        else
            result.append(at, static_cast<const char*>(g_utf8_next_char(at)));
    return result;
}

/// The beginning of `text`, of about `size` bytes, without a part of a character.
std::string_view wholeCharacters(std::string_view text, std::size_t size)
{
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        ++size;
    return text.substr(0, size);
}

/// A part of the characters that Unicode has shown as nothing where a font lacks them
/// (Default_Ignorable_Code_Point): joiners, marks of direction, selectors of variants, fillers, tags. Others
/// that format a text, such as the Arabic sign at the end of a verse, have ink.
struct Ignorables {
    gunichar first;
    gunichar last;
};

constexpr std::array<Ignorables, 17> ignorables{{
    {0x00AD, 0x00AD},
    {0x034F, 0x034F},
    {0x061C, 0x061C},
    {0x115F, 0x1160},
    {0x17B4, 0x17B5},
    {0x180B, 0x180F},
    {0x200B, 0x200F},
    {0x202A, 0x202E},
    {0x2060, 0x206F},
    {0x3164, 0x3164},
    {0xFE00, 0xFE0F},
    {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0},
    {0xFFF0, 0xFFF8},
    {0x1BCA0, 0x1BCA3},
    {0x1D173, 0x1D17A},
    {0xE0000, 0xE0FFF},
}};

bool isIgnorable(gunichar character)
{
    return std::ranges::any_of(ignorables, [&](const Ignorables& range) {
        return range.first <= character && character <= range.last;
    });
}

bool isUnknown(PangoGlyph glyph) { return glyph == 0 || (glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0; }

/// The character that Pango has no glyph for: it stands in the glyph's number, or at the beginning of its
/// cluster.
gunichar unknownCharacter(PangoGlyph glyph, const char* cluster)
{
    const gunichar character = glyph & ~PANGO_GLYPH_UNKNOWN_FLAG;
    return character != 0 && g_unichar_validate(character) != FALSE ? character : g_utf8_get_char(cluster);
}

LayoutHandle newLayout(PangoFontMap* fontMap, const char* family)
{
    const ContextHandle context(pango_font_map_create_context(fontMap));
    const FontOptionsHandle options(cairo_font_options_create());
    setWithoutScreen(*options);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), FALSE);

    LayoutHandle layout(pango_layout_new(context.get()));
    const FontDescriptionHandle font(pango_font_description_new());
    pango_font_description_set_family(font.get(), family);
    pango_font_description_set_absolute_size(font.get(), unitsPerEm);
    pango_layout_set_font_description(layout.get(), font.get());

    const AttributesHandle attributes(pango_attr_list_new());
    pango_attr_list_insert(attributes.get(), pango_attr_insert_hyphens_new(FALSE));
    pango_layout_set_attributes(layout.get(), attributes.get());

    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    return layout;
}

} // namespace

void setWithoutScreen(cairo_font_options_t& options)
{
    cairo_font_options_set_antialias(&options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(&options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(&options, CAIRO_HINT_METRICS_OFF);
}

TextLayout::TextLayout(PangoFontMap* fontMap, const char* family, std::string_view text, double widest)
    : layout_(newLayout(fontMap, family))
{
    const double width = widest * unitsPerEm;
    if (width < std::numeric_limits<int>::max() / 2.0)
        pango_layout_set_width(layout_.get(), static_cast<int>(std::max(0.0, width)));
    addLinesOf(layoutText(text));
}

void TextLayout::addLinesOf(const std::string& content)
{
    const bool hasWidth = pango_layout_get_width(layout_.get()) >= 0;
    std::size_t size = hasWidth ? pieceOfText : content.size();
    for (std::size_t begin = 0;;) {
        const std::string_view piece = wholeCharacters(std::string_view(content).substr(begin), size);
        pango_layout_set_text(layout_.get(), piece.data(), static_cast<int>(piece.size()));
        const bool isLast = begin + piece.size() == content.size();
        const int lines = pango_layout_get_line_count(layout_.get());
        if (!isLast && lines == 1) {
            size *= 2; // one line takes more than that
            continue;
        }

        // The end of a piece is not the end of its last line.
        for (int i = 0; i < (isLast ? lines : lines - 1); ++i)
            addLine(*pango_layout_get_line_readonly(layout_.get(), i));
        if (isLast)
            return;
        keepDirection(lines_.front());
        begin +=
            static_cast<std::size_t>(pango_layout_get_line_readonly(layout_.get(), lines - 1)->start_index);
    }
}

void TextLayout::keepDirection(const LaidOutLine& line)
{
    pango_layout_set_auto_dir(layout_.get(), FALSE);
    pango_context_set_base_dir(pango_layout_get_context(layout_.get()),
                               line.rightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
    pango_layout_context_changed(layout_.get());
}

void TextLayout::addLine(PangoLayoutLine& line)
{
    PangoRectangle ink;
    pango_layout_line_get_extents(&line, &ink, nullptr);
    LaidOutLine added;
    added.above = std::max(0.0, -ink.y / unitsPerEm);
    added.below = std::max(0.0, (ink.y + ink.height) / unitsPerEm);
    added.rightToLeft = line.resolved_dir == PANGO_DIRECTION_RTL;
    for (const GSList* run = line.runs; run != nullptr; run = run->next)
        addRun(added, *static_cast<const PangoGlyphItem*>(run->data));
    lines_.push_back(std::move(added));
}

void TextLayout::addRun(LaidOutLine& line, const PangoGlyphItem& run)
{
    if (run.item->analysis.font != nullptr)
        fonts_.emplace_back(static_cast<PangoFont*>(g_object_ref(run.item->analysis.font)));
    const char* const runText = pango_layout_get_text(layout_.get()) + run.item->offset;
    for (int i = 0; i < run.glyphs->num_glyphs; ++i) {
        const auto& placed = run.glyphs->glyphs[i];
        double width = placed.geometry.width / unitsPerEm;
        if (isUnknown(placed.glyph) || run.item->analysis.font == nullptr) {
            const auto character = unknownCharacter(placed.glyph, runText + run.glyphs->log_clusters[i]);
            if (isIgnorable(character))
                width = 0;
            else
                missing_.push_back(character);
        } else if (placed.glyph != PANGO_GLYPH_EMPTY) {
            line.glyphs.push_back({run.item->analysis.font, placed.glyph,
                                   line.width + placed.geometry.x_offset / unitsPerEm,
                                   -placed.geometry.y_offset / unitsPerEm});
        }
        line.width += width;
    }
}

} // namespace quelm
