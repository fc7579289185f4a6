// One of the component's file choosers as a window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_FILE_CHOOSER_WINDOW_H
#define DRIVER_DESKTOP_DIALOGS_FILE_CHOOSER_WINDOW_H

#include "driver/desktop/dialogs/top_level.h"

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/label.h>

namespace quelm {

/// What a file chooser's text asks for: the component starts it with a pattern such as
/// "/opt/quelm/db/phonebook/*.xdb", and later it holds the path chosen last.
struct FileStart {
    std::string folder;
    std::string pattern; ///< "*.xdb"; empty when the text is a path
    std::string file;    ///< empty when the text is a pattern
};

FileStart fileStartOf(const std::string& text);

/// The folder that a chooser opens with: that of its pattern, or, when no file there matches it, the folder
/// "shared" in that one, if there is one. Each user's folder has it: it leads to the phonebooks that the
/// machine's users share.
std::string firstFolder(const FileStart& start);

/// `path` with the ending of `pattern` ("*.xdb") when its name has none of its own and no such file exists.
std::string withEnding(const std::string& path, const std::string& pattern);

/// Its OK types the path into the tree's chooser and presses that. What is no phonebook is
/// refused, and so is, in the chooser that takes new files, one that is not the user's to change; the chooser
/// then stays open to show why.
class FileChooserWindow : public TopLevel {
public:
    FileChooserWindow(Widget& treeWidget, DesktopContext& desktopContext);
    ~FileChooserWindow() override { mute(); }

    Gtk::Window* onScreen() override { return &dialog_; }
    void present(Gtk::Window& over) override;
    void showTrouble(const std::string& message) override;
    void clearTrouble() override;

protected:
    void show() override;

private:
    void respond(int response);
    void addFilters();
    void centre(Gtk::Window& over);

    Gtk::FileChooserDialog dialog_;
    Gtk::Label trouble_;
    std::string pattern_;
};

} // namespace quelm

#endif
