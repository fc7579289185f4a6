// Fills the panel as Ghostscript gets on.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/document_panel.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/shown_text.h"

namespace quelm {
namespace {

constexpr int viewWidth = 240;
constexpr int viewHeight = 310;
constexpr int space = 4;
constexpr int captionCharacters = 30;
constexpr int resolution = 72;

} // namespace

std::string pageCountText(int pages)
{
    if (pages < 0)
        return {};
    return localizedCount("%d page", "%d pages", static_cast<unsigned long>(pages), pages);
}

DocumentPanel::DocumentPanel() : Gtk::Box(Gtk::ORIENTATION_VERTICAL), view_(viewWidth, viewHeight)
{
    set_spacing(space);
    name_.set_ellipsize(Pango::ELLIPSIZE_MIDDLE);
    name_.set_xalign(0);
    caption_.set_xalign(0);
    caption_.set_no_show_all();
    caption_.get_style_context()->add_class("dim-label");
    facts_.set_valign(Gtk::ALIGN_CENTER);
    facts_.pack_start(name_, Gtk::PACK_SHRINK);
    facts_.pack_start(caption_, Gtk::PACK_SHRINK);
    facts_.show_all();
    trouble_.set_line_wrap();
    trouble_.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    trouble_.set_max_width_chars(captionCharacters);
    trouble_.set_justify(Gtk::JUSTIFY_CENTER);
    trouble_.set_no_show_all();
    pack_start(view_, Gtk::PACK_EXPAND_WIDGET);
    pack_start(trouble_, Gtk::PACK_SHRINK);
    describe(view_, "Main Document Page");
    describe(name_, "Main Document Name");
    describe(caption_, "Main Document Pages");
    describe(trouble_, "Main Document Trouble");
    show_all_children();
    showNothing();
}

void DocumentPanel::showNothing()
{
    firstPage_.cancel();
    counting_.cancel();
    pages_.clear();
    view_.showWords(translated("Open a PostScript or PDF document, or drop one here."));
    name_.set_text(translated("No document"));
    name_.set_tooltip_text("");
    showTrouble("");
    showCaption();
}

void DocumentPanel::showLoading(const std::string& name)
{
    showNothing();
    name_.set_text(oneLine(drawable(name)));
    view_.showWords(translated("Opening the document..."));
}

void DocumentPanel::showDocument(const std::shared_ptr<const LoadedDocument>& document)
{
    showNothing();
    const std::string name = oneLine(drawable(document->document.name()));
    name_.set_text(name);
    name_.set_tooltip_text(oneLine(drawable(document->document.path())));
    view_.showWords(translated("Drawing the first page..."));

    RenderingRequest request;
    request.pages = RenderingRequest::Pages::first;
    request.resolution = resolution;
    firstPage_.start(
        document->pages, request,
        [this, name](const std::string& png) {
            if (!view_.showPage(png, localized("The first page of %s", name)))
                view_.showWords(translated("This page cannot be shown."));
        },
        [this](const RenderingEnd& end) {
            if (view_.hasPage())
                return;
            view_.showWords(translated("No preview"));
            showTrouble(end.trouble.empty() ? translated("The document has no pages.") : end.trouble);
        });

    request.pages = RenderingRequest::Pages::count;
    counting_.start(
        document->pages, request, [](const std::string&) {},
        [this](const RenderingEnd& end) {
            pages_ = end.trouble.empty() ? pageCountText(end.pageCount) : std::string();
            showCaption();
        });
}

void DocumentPanel::showCaption()
{
    caption_.set_text(pages_);
    caption_.set_visible(!pages_.empty());
}

void DocumentPanel::showTrouble(const std::string& trouble)
{
    trouble_.set_text(shownMessage(trouble));
    trouble_.set_visible(!trouble.empty());
}

} // namespace quelm
