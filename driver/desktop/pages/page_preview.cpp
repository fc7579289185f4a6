// Writes the job into an unnamed file, and turns its pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/page_preview.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/documents/file_sink.h"

#include <utility>

namespace quelm {
namespace {

constexpr int viewWidth = 420;
constexpr int viewHeight = 540;
constexpr int space = 8;

} // namespace

struct PagePreview::WrittenJob {
    FileHandle file;
    std::string trouble;
};

std::string pageCaption(std::size_t page, std::size_t pageCount, bool coverFirst, bool complete)
{
    const bool cover = coverFirst && page == 0;
    if (!complete)
        return cover ? translated("Cover page") : localized("Page %d", page + 1);
    return cover ? localized("Cover page (1 of %d)", pageCount)
                 : localized("Page %d of %d", page + 1, pageCount);
}

PagePreview::PagePreview(Gtk::Window& parent)
    : view_(viewWidth, viewHeight), previous_(translated("_Previous"), true),
      next_(translated("_Next"), true), close_(translated("_Close"), true)
{
    set_transient_for(parent);
    set_title(translated("Preview of the Fax Job"));
    set_default_size(viewWidth + 4 * space, viewHeight + 60);
    set_border_width(space);
    set_position(Gtk::WIN_POS_CENTER_ON_PARENT);
    describe(*this, "Preview Window");

    trouble_.set_line_wrap();
    trouble_.set_xalign(0);
    trouble_.set_no_show_all();
    box_.set_spacing(space);
    box_.pack_start(view_, Gtk::PACK_EXPAND_WIDGET);
    box_.pack_start(trouble_, Gtk::PACK_SHRINK);
    bar_.set_spacing(space);
    bar_.pack_start(previous_, Gtk::PACK_SHRINK);
    bar_.pack_start(next_, Gtk::PACK_SHRINK);
    bar_.pack_start(caption_, Gtk::PACK_SHRINK);
    bar_.pack_start(spinner_, Gtk::PACK_SHRINK);
    bar_.pack_end(close_, Gtk::PACK_SHRINK);
    box_.pack_start(bar_, Gtk::PACK_SHRINK);
    add(box_);
    box_.show_all();

    describe(view_, "Preview Page");
    describe(previous_, "Preview Previous Button");
    describe(next_, "Preview Next Button");
    describe(caption_, "Preview Caption");
    describe(trouble_, "Preview Trouble");
    describe(close_, "Preview Close Button");

    previous_.signal_clicked().connect([this] { turnTo(shown_ - 1); });
    next_.signal_clicked().connect([this] { turnTo(shown_ + 1); });
    close_.signal_clicked().connect([this] { hide(); });
}

void PagePreview::showJob(JobOrder order)
{
    rendering_.cancel();
    pages_.clear();
    shown_ = 0;
    complete_ = false;
    coverFirst_ = order.job.withCoverPage;
    trouble_.hide();
    view_.showWords("");
    showState();
    present();

    const auto written = std::make_shared<WrittenJob>();
    writing_.start(
        [order = std::move(order), written](const std::stop_token& stop) {
            try {
                written->file = makeUnnamedFile();
                FileSink sink(written->file, localized("the temporary copy of the job"));
                writeJob(order, sink, [&stop] { return stop.stop_requested(); });
            } catch (const std::exception& error) {
                written->trouble = error.what();
            }
        },
        [this, written] { draw(*written); });
}

void PagePreview::draw(const WrittenJob& job)
{
    if (!job.trouble.empty())
        return end(job.trouble);
    RenderingRequest request;
    request.timeLimit = std::chrono::minutes(5);
    rendering_.start(
        job.file, request, [this](std::string png) { addPage(std::move(png)); },
        [this](const RenderingEnd& outcome) { end(outcome.trouble); });
}

void PagePreview::addPage(std::string png)
{
    pages_.push_back(std::move(png));
    if (pages_.size() == 1)
        turnTo(0);
    else
        showState();
}

void PagePreview::end(const std::string& trouble)
{
    complete_ = true;
    std::string line = trouble;
    if (line.empty() && pages_.empty())
        line = translated("The job has no pages.");
    trouble_.set_text(oneLine(drawable(line)));
    trouble_.set_visible(!line.empty());
    showState();
}

void PagePreview::turnTo(std::size_t page)
{
    if (page >= pages_.size())
        return;
    shown_ = page;
    if (!view_.showPage(pages_[page], pageCaption(page, pages_.size(), coverFirst_, complete_)))
        view_.showWords(translated("This page cannot be shown."));
    showState();
}

void PagePreview::showState()
{
    previous_.set_sensitive(shown_ > 0);
    next_.set_sensitive(shown_ + 1 < pages_.size());
    caption_.set_text(!pages_.empty() ? pageCaption(shown_, pages_.size(), coverFirst_, complete_)
                      : complete_     ? std::string()
                                      : translated("Drawing the pages..."));
    if (complete_)
        spinner_.stop();
    else
        spinner_.start();
    spinner_.set_visible(!complete_);
}

bool PagePreview::on_key_press_event(GdkEventKey* event)
{
    switch (event->keyval) {
    case GDK_KEY_Page_Up:
    case GDK_KEY_Left:
        turnTo(shown_ - 1);
        return true;
    case GDK_KEY_Page_Down:
    case GDK_KEY_Right:
        turnTo(shown_ + 1);
        return true;
    case GDK_KEY_Home:
        turnTo(0);
        return true;
    case GDK_KEY_End:
        turnTo(pages_.size() - 1);
        return true;
    case GDK_KEY_Escape:
        hide();
        return true;
    default:
        return Gtk::Window::on_key_press_event(event);
    }
}

void PagePreview::on_hide()
{
    writing_.giveUp();
    rendering_.cancel();
    pages_.clear();
    pages_.shrink_to_fit();
    view_.showWords("");
    Gtk::Window::on_hide();
}

} // namespace quelm
