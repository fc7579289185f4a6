// Draws a page on its sheet.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/page_view.h"

#include "driver/desktop/toolkit/shown_text.h"

#include <atkmm/object.h>
#include <gdkmm/general.h>
#include <gdkmm/pixbufloader.h>
#include <glibmm/error.h>
#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quelm {
namespace {

constexpr int margin = 8; // around the sheet, for its shadow
constexpr int shadowWidth = 3;

} // namespace

PageView::PageView(int width, int height)
{
    set_size_request(width, height);
    get_accessible()->set_role(Atk::ROLE_IMAGE);
    showWords("");
}

void PageView::nameForTools(const std::string& name) { get_accessible()->set_name(drawable(name)); }

bool PageView::showPage(const std::string& png, const std::string& name)
{
    page_.reset();
    try {
        const auto loader = Gdk::PixbufLoader::create("png");
        loader->write(reinterpret_cast<const guint8*>(png.data()), png.size());
        loader->close();
        page_ = loader->get_pixbuf();
    } catch (const Glib::Error&) {
        page_.reset();
    }
    scaled_.reset();
    words_.clear();
    nameForTools(name);
    queue_draw();
    return hasPage();
}

void PageView::showWords(const std::string& words)
{
    page_.reset();
    scaled_.reset();
    words_ = drawable(words);
    nameForTools(words_);
    queue_draw();
}

bool PageView::on_draw(const Cairo::RefPtr<Cairo::Context>& context)
{
    if (page_)
        drawPage(context);
    else
        drawWords(context);
    return true;
}

void PageView::drawPage(const Cairo::RefPtr<Cairo::Context>& context)
{
    const double width = std::max(1, get_allocated_width() - 2 * margin);
    const double height = std::max(1, get_allocated_height() - 2 * margin);
    const double scale = std::min(width / page_->get_width(), height / page_->get_height());
    const int pageWidth = std::max(1, static_cast<int>(std::lround(page_->get_width() * scale)));
    const int pageHeight = std::max(1, static_cast<int>(std::lround(page_->get_height() * scale)));
    // Drawn in as many pixels as the screen has.
    const int density = get_scale_factor();
    if (!scaled_ || scaled_->get_width() != pageWidth * density ||
        scaled_->get_height() != pageHeight * density)
        scaled_ = page_->scale_simple(pageWidth * density, pageHeight * density, Gdk::INTERP_BILINEAR);
    if (!scaled_)
        return;

    const double left = std::floor((get_allocated_width() - pageWidth) / 2.0);
    const double top = std::floor((get_allocated_height() - pageHeight) / 2.0);
    for (int i = shadowWidth; i > 0; --i) {
        context->set_source_rgba(0, 0, 0, 0.06);
        context->rectangle(left - i + 1, top - i + 2, pageWidth + 2 * i - 2, pageHeight + 2 * i - 2);
        context->fill();
    }
    context->save();
    context->translate(left, top);
    context->scale(1.0 / density, 1.0 / density);
    Gdk::Cairo::set_source_pixbuf(context, scaled_, 0, 0);
    context->paint();
    context->restore();
    context->set_source_rgba(0, 0, 0, 0.25);
    context->set_line_width(1);
    context->rectangle(left - 0.5, top - 0.5, pageWidth + 1, pageHeight + 1);
    context->stroke();
}

void PageView::drawWords(const Cairo::RefPtr<Cairo::Context>& context)
{
    // A sheet that is still empty.
    auto color = get_style_context()->get_color(get_state_flags());
    context->set_source_rgba(color.get_red(), color.get_green(), color.get_blue(), 0.25);
    context->set_line_width(1);
    context->set_dash(std::vector<double>{4, 4}, 0);
    context->rectangle(margin + 0.5, margin + 0.5, get_allocated_width() - 2 * margin - 1,
                       get_allocated_height() - 2 * margin - 1);
    context->stroke();

    const auto layout = create_pango_layout(words_);
    layout->set_alignment(Pango::ALIGN_CENTER);
    layout->set_wrap(Pango::WRAP_WORD_CHAR);
    const int width = std::max(1, get_allocated_width() - 4 * margin);
    layout->set_width(width * Pango::SCALE);
    int textWidth = 0;
    int textHeight = 0;
    layout->get_pixel_size(textWidth, textHeight);
    context->set_source_rgba(color.get_red(), color.get_green(), color.get_blue(), 0.6);
    context->move_to(2 * margin, std::max(0, (get_allocated_height() - textHeight) / 2));
    layout->show_in_cairo_context(context);
}

} // namespace quelm
