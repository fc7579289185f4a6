// Draws by Cairo what Pango lays out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/report/sheet_canvas.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <cairo-pdf.h>
#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

#include <numbers>

#if defined(__has_feature)
#    if __has_feature(address_sanitizer)
// Fontconfig reaches what it keeps for the process by offsets, which the search for leaks does not follow.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#    endif
#endif

namespace quelm::device {
namespace {

using AttributesHandle = std::unique_ptr<PangoAttrList, ReleasedBy<pango_attr_list_unref>>;
using FontHandle = std::unique_ptr<PangoFontDescription, ReleasedBy<pango_font_description_free>>;
using FontOptionsHandle = std::unique_ptr<cairo_font_options_t, ReleasedBy<cairo_font_options_destroy>>;
using SurfaceHandle = std::unique_ptr<cairo_surface_t, ReleasedBy<cairo_surface_destroy>>;

/// Ghostscript brings the first; whatever the machine has stands in for it and for scripts that it lacks.
constexpr const char* families = "Nimbus Sans,sans";

/// How many characters of a text are laid out at most: more than any place on a sheet shows.
constexpr std::size_t longestText = 1000;

cairo_status_t append(void* pdf, const unsigned char* bytes, unsigned size)
{
    static_cast<std::string*>(pdf)->append(reinterpret_cast<const char*>(bytes), size);
    return CAIRO_STATUS_SUCCESS;
}

/// Pango ends the program when it finds no font.
void checkFonts()
{
    FcInit();
    const FcFontSet* const fonts = FcConfigGetFonts(nullptr, FcSetSystem);
    if (fonts == nullptr || fonts->nfont == 0)
        throw Error(localized("the confirmation sheet cannot be drawn: no font is installed on this machine; "
                              "install one, such as DejaVu Sans"));
}

} // namespace

SheetCanvas::SheetCanvas(const std::string& title)
{
    checkFonts();
    surface_.reset(cairo_pdf_surface_create_for_stream(append, &pdf_, pageWidth, pageHeight));
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_TITLE,
                                   shownText(title, longestText).c_str());
    cairo_.reset(cairo_create(surface_.get()));

    // A font map of this object's own: Pango's default one belongs to a thread.
    fonts_.reset(pango_cairo_font_map_new());
    context_.reset(pango_font_map_create_context(fonts_.get()));
    const FontOptionsHandle options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_.get(), options.get());
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
    layout_.reset(pango_layout_new(context_.get()));
    pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
    pango_layout_set_wrap(layout_.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_line_spacing(layout_.get(), 1.2F);
    // Words are to be found in the document as they are written.
    const AttributesHandle attributes(pango_attr_list_new());
    pango_attr_list_insert(attributes.get(), pango_attr_font_features_new("liga=0"));
    pango_layout_set_attributes(layout_.get(), attributes.get());
    pango_layout_set_ellipsize(layout_.get(), PANGO_ELLIPSIZE_END);
}

void SheetCanvas::layOut(const std::string& text, double width, const TextStyle& style)
{
    const FontHandle font(pango_font_description_new());
    pango_font_description_set_family(font.get(), families);
    pango_font_description_set_absolute_size(font.get(), style.size * PANGO_SCALE);
    pango_font_description_set_weight(font.get(), style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout_.get(), font.get());
    pango_layout_set_alignment(layout_.get(), style.alignment);
    pango_layout_set_width(layout_.get(), static_cast<int>(width * PANGO_SCALE));
    pango_layout_set_height(layout_.get(), -style.mostLines);
    const std::string shown = shownText(text, longestText);
    pango_layout_set_text(layout_.get(), shown.data(), static_cast<int>(shown.size()));
}

double SheetCanvas::heightOf(const std::string& text, double width, const TextStyle& style)
{
    layOut(text, width, style);
    int height = 0;
    pango_layout_get_size(layout_.get(), nullptr, &height);
    return static_cast<double>(height) / PANGO_SCALE;
}

double SheetCanvas::drawText(const std::string& text, double x, double y, double width,
                             const TextStyle& style)
{
    const double height = heightOf(text, width, style);
    use(style.ink);
    cairo_move_to(cairo_.get(), x, y);
    pango_cairo_show_layout(cairo_.get(), layout_.get());
    return height;
}

void SheetCanvas::fill(const Box& box, const Ink& ink, double radius)
{
    constexpr double quarter = std::numbers::pi / 2;
    use(ink);
    cairo_new_path(cairo_.get());
    const double left = box.x + radius;
    const double right = box.x + box.width - radius;
    const double top = box.y + radius;
    const double bottom = box.y + box.height - radius;
    cairo_arc(cairo_.get(), right, top, radius, -quarter, 0);
    cairo_arc(cairo_.get(), right, bottom, radius, 0, quarter);
    cairo_arc(cairo_.get(), left, bottom, radius, quarter, 2 * quarter);
    cairo_arc(cairo_.get(), left, top, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(cairo_.get());
    cairo_fill(cairo_.get());
}

void SheetCanvas::drawPicture(const PagePicture& picture, const Box& box)
{
    const SurfaceHandle image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, picture.width, picture.height));
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS)
        return;
    const int stride = cairo_image_surface_get_stride(image.get());
    unsigned char* line = cairo_image_surface_get_data(image.get());
    const std::uint8_t* shade = picture.shades.data();
    for (int y = 0; y < picture.height; ++y, line += stride)
        for (int x = 0; x < picture.width; ++x, ++shade)
            reinterpret_cast<std::uint32_t*>(line)[x] = *shade * 0x010101U;
    cairo_surface_mark_dirty(image.get());

    cairo_save(cairo_.get());
    cairo_translate(cairo_.get(), box.x, box.y);
    cairo_scale(cairo_.get(), box.width / picture.width, box.height / picture.height);
    cairo_set_source_surface(cairo_.get(), image.get(), 0, 0);
    cairo_paint(cairo_.get());
    cairo_restore(cairo_.get());
}

void SheetCanvas::endPage() { cairo_show_page(cairo_.get()); }

std::string SheetCanvas::finish()
{
    cairo_surface_finish(surface_.get());
    cairo_status_t status = cairo_status(cairo_.get());
    if (status == CAIRO_STATUS_SUCCESS)
        status = cairo_surface_status(surface_.get());
    if (status != CAIRO_STATUS_SUCCESS)
        throw Error(localized("the confirmation sheet cannot be drawn: %s", cairo_status_to_string(status)));
    return std::move(pdf_);
}

void SheetCanvas::use(const Ink& ink) { cairo_set_source_rgb(cairo_.get(), ink.red, ink.green, ink.blue); }

} // namespace quelm::device
