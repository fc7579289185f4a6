// The dialog in which the user chooses a document.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_DOCUMENT_CHOOSER_H
#define DRIVER_DESKTOP_MAIN_WINDOW_DOCUMENT_CHOOSER_H

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/window.h>

#include <string>

namespace quelm {

/// Offers PostScript and PDF documents, or all files, beginning in `folder`, unless there is no such folder.
/// Its response is Gtk::RESPONSE_ACCEPT when one was chosen. Its fixed name is "Main Document Chooser".
class DocumentChooser : public Gtk::FileChooserDialog {
public:
    DocumentChooser(Gtk::Window& parent, const std::string& folder);
};

} // namespace quelm

#endif
