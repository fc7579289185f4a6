// The window with a job's pages as they will be sent, cover page first.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_PAGES_PAGE_PREVIEW_H
#define DRIVER_DESKTOP_PAGES_PAGE_PREVIEW_H

#include "driver/desktop/pages/page_rendering.h"
#include "driver/desktop/pages/page_view.h"
#include "driver/desktop/sending/job_sending.h"
#include "driver/desktop/toolkit/background_task.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/spinner.h>
#include <gtkmm/window.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace quelm {

/// What stands below a page: "Cover page (1 of 3)", "Page 2 of 3"; without "of" while the pages are
/// still being drawn and their number is not known. `page` counts from 0.
std::string pageCaption(std::size_t page, std::size_t pageCount, bool coverFirst, bool complete);

/// Writes the job as sending it would, and shows its pages as Ghostscript draws them. Nothing is left of
/// it when the window closes.
class PagePreview : public Gtk::Window {
public:
    explicit PagePreview(Gtk::Window& parent);

    /// Shows the pages of the order's job; its destination plays no part.
    void showJob(JobOrder order);

    /// How many pages are there to be looked at, and whether that is all.
    std::size_t pageCount() const { return pages_.size(); }
    bool complete() const { return complete_; }

protected:
    bool on_key_press_event(GdkEventKey* event) override;
    void on_hide() override;

private:
    struct WrittenJob;

    void draw(const WrittenJob& job);
    void addPage(std::string png);
    void end(const std::string& trouble);
    void turnTo(std::size_t page);
    void showState();

    Gtk::Box box_{Gtk::ORIENTATION_VERTICAL};
    Gtk::Box bar_{Gtk::ORIENTATION_HORIZONTAL};
    PageView view_;
    Gtk::Button previous_;
    Gtk::Button next_;
    Gtk::Button close_;
    Gtk::Label caption_;
    Gtk::Label trouble_;
    Gtk::Spinner spinner_;

    BackgroundTask writing_;
    PageRendering rendering_;
    std::vector<std::string> pages_; ///< PNG files' bytes
    std::size_t shown_ = 0;
    bool coverFirst_ = false;
    bool complete_ = false;
};

} // namespace quelm

#endif
