// The document in the main window: its first page, its name and what is known of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_PAGES_DOCUMENT_PANEL_H
#define DRIVER_DESKTOP_PAGES_DOCUMENT_PANEL_H

#include "driver/desktop/pages/page_rendering.h"
#include "driver/desktop/pages/page_view.h"
#include "driver/desktop/sending/document_loading.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <memory>
#include <string>

namespace quelm {

/// "3 pages"; empty for a number that is not known.
std::string pageCountText(int pages);

/// The first page, and beside it, wherever the window puts them, name and number of pages. The page is
/// drawn, and the pages are counted, while the window goes on.
class DocumentPanel : public Gtk::Box {
public:
    DocumentPanel();

    /// The document's name above what is known of it. Belongs to the panel.
    Gtk::Widget& facts() { return facts_; }

    void showNothing();
    void showLoading(const std::string& name);
    void showDocument(const std::shared_ptr<const LoadedDocument>& document);

private:
    void showCaption();
    void showTrouble(const std::string& trouble);

    PageView view_;
    Gtk::Box facts_{Gtk::ORIENTATION_VERTICAL};
    Gtk::Label name_;
    Gtk::Label caption_;
    Gtk::Label trouble_;
    std::string pages_;
    PageRendering firstPage_;
    PageRendering counting_;
};

} // namespace quelm

#endif
