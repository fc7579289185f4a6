// Fills the toolkit's file chooser.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/document_chooser.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"

#include <gtkmm/filefilter.h>

#include <filesystem>

namespace quelm {

DocumentChooser::DocumentChooser(Gtk::Window& parent, const std::string& folder)
    : Gtk::FileChooserDialog(parent, translated("Open a Document"))
{
    add_button(translated("_Cancel"), Gtk::RESPONSE_CANCEL);
    add_button(translated("_Open"), Gtk::RESPONSE_ACCEPT);
    set_default_response(Gtk::RESPONSE_ACCEPT);
    set_modal();
    describe(*this, "Main Document Chooser");
    const auto documents = Gtk::FileFilter::create();
    documents->set_name(translated("Documents (PostScript, PDF)"));
    for (const auto* pattern : {"*.ps", "*.eps", "*.pdf", "*.prn", "*.PS", "*.EPS", "*.PDF", "*.PRN"})
        documents->add_pattern(pattern);
    add_filter(documents);
    const auto everything = Gtk::FileFilter::create();
    everything->set_name(translated("All files"));
    everything->add_pattern("*");
    add_filter(everything);
    std::error_code failure;
    if (std::filesystem::is_directory(folder, failure))
        set_current_folder(folder);
}

} // namespace quelm
