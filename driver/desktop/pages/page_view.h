// Shows the picture of one page, as large as its place allows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_PAGES_PAGE_VIEW_H
#define DRIVER_DESKTOP_PAGES_PAGE_VIEW_H

#include <gdkmm/pixbuf.h>
#include <gtkmm/drawingarea.h>

#include <string>

namespace quelm {

/// A white sheet with a page on it, or with nothing. Its shape follows the page's.
class PageView : public Gtk::DrawingArea {
public:
    /// `width` and `height`: the least that it asks for, in pixels.
    PageView(int width, int height);

    /// Shows a PNG file's bytes; `name` says what is seen for those who do not see it. False, and nothing
    /// is shown, when the bytes are no picture.
    [[nodiscard]] bool showPage(const std::string& png, const std::string& name);

    /// Shows nothing but the words, such as "No document", in the middle.
    void showWords(const std::string& words);

    bool hasPage() const { return static_cast<bool>(page_); }

protected:
    bool on_draw(const Cairo::RefPtr<Cairo::Context>& context) override;

private:
    void drawPage(const Cairo::RefPtr<Cairo::Context>& context);
    void drawWords(const Cairo::RefPtr<Cairo::Context>& context);
    void nameForTools(const std::string& name);

    Glib::RefPtr<Gdk::Pixbuf> page_;
    Glib::RefPtr<Gdk::Pixbuf> scaled_; ///< the page in the size in which it was drawn last
    std::string words_;
};

} // namespace quelm

#endif
