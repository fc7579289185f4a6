// Shows a file chooser and takes what is chosen in it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/file_chooser_window.h"

#include "base/translation.h"
#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/store/phonebook_file.h"

#include <gtkmm/filefilter.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quelm {

namespace {

constexpr int usualWidth = 680;
constexpr int usualHeight = 440;

} // namespace

FileStart fileStartOf(const std::string& text)
{
    const std::size_t slash = text.rfind('/');
    const std::string last = slash == std::string::npos ? text : text.substr(slash + 1);
    FileStart start;
    start.folder = slash == std::string::npos ? "" : text.substr(0, slash);
    if (last.find_first_of("*?[") != std::string::npos)
        start.pattern = last;
    else if (!last.empty())
        start.file = text;
    return start;
}

std::string firstFolder(const FileStart& start)
{
    namespace fs = std::filesystem;
    if (!start.pattern.starts_with('*') || start.pattern.find_first_of("*?[", 1) != std::string::npos)
        return start.folder;
    const std::string ending = start.pattern.substr(1);
    std::error_code failure;
    for (const auto& entry : fs::directory_iterator(start.folder, failure))
        if (entry.path().filename().string().ends_with(ending) && entry.is_regular_file(failure))
            return start.folder;
    const std::string shared = start.folder + "/shared";
    return fs::is_directory(shared, failure) ? shared : start.folder;
}

std::string withEnding(const std::string& path, const std::string& pattern)
{
    const bool hasEnding = path.find('.', path.rfind('/') + 1) != std::string::npos;
    const bool isEnding = pattern.starts_with("*.") && pattern.find_first_of("*?[", 1) == std::string::npos;
    std::error_code failure;
    const bool isTaken = path.empty() || hasEnding || std::filesystem::exists(path, failure);
    return isTaken || !isEnding ? path : path + pattern.substr(1);
}

FileChooserWindow::FileChooserWindow(Widget& treeWidget, DesktopContext& desktopContext)
    : TopLevel(treeWidget, desktopContext),
      dialog_("", takesNewFiles(treeWidget) ? Gtk::FILE_CHOOSER_ACTION_SAVE : Gtk::FILE_CHOOSER_ACTION_OPEN)
{
    Gtk::Button& cancel = *dialog_.add_button(localized("_Cancel"), Gtk::RESPONSE_CANCEL);
    Gtk::Button& open = *dialog_.add_button(localized("_Open"), Gtk::RESPONSE_ACCEPT);
    dialog_.set_default_response(Gtk::RESPONSE_ACCEPT);
    dialog_.set_create_folders(false);
    dialog_.set_local_only(true);
    trouble_.set_line_wrap(true);
    trouble_.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    trouble_.set_max_width_chars(60);
    trouble_.set_xalign(0);
    dialog_.set_extra_widget(trouble_);
    dialog_.signal_response().connect([this](int response) { respond(response); });
    dialog_.signal_delete_event().connect([](GdkEventAny*) { return true; }, false);
    describe(dialog_, tree.name());
    describe(cancel, tree.name() + " Cancel");
    describe(open, tree.name() + " Open");
    describe(trouble_, "Dialog Message");
    refresh();
}

void FileChooserWindow::show()
{
    dialog_.set_title(shownText(tree));
    const FileStart start = fileStartOf(tree.text());
    if (!start.pattern.empty() && start.pattern != pattern_) {
        pattern_ = start.pattern;
        addFilters();
    }
}

void FileChooserWindow::addFilters()
{
    const auto matching = Gtk::FileFilter::create();
    matching->set_name(localized("Phonebooks (%s)", drawable(pattern_)));
    matching->add_pattern(pattern_);
    const auto all = Gtk::FileFilter::create();
    all->set_name(localized("All Files"));
    all->add_pattern("*");
    for (const auto& filter : dialog_.list_filters())
        dialog_.remove_filter(filter);
    dialog_.add_filter(matching);
    dialog_.add_filter(all);
    dialog_.set_filter(matching);
}

void FileChooserWindow::present(Gtk::Window& over)
{
    clearTrouble();
    const FileStart start = fileStartOf(tree.text());
    if (!start.file.empty())
        dialog_.set_filename(start.file);
    else if (!start.folder.empty())
        dialog_.set_current_folder(firstFolder(start));
    const bool isNew = !dialog_.get_realized();
    TopLevel::present(over);
    if (isNew) {
        // The toolkit would make it as large as most of the screen, and centres it by that size.
        dialog_.resize(usualWidth, usualHeight);
        centre(over);
    }
}

void FileChooserWindow::centre(Gtk::Window& over)
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    over.get_position(left, top);
    over.get_size(width, height);
    dialog_.move(std::max(0, left + (width - usualWidth) / 2), std::max(0, top + (height - usualHeight) / 2));
}

void FileChooserWindow::respond(int response)
{
    if (response != Gtk::RESPONSE_ACCEPT) {
        act([&chooser = tree](UserActions& actions) { actions.closeWindow(chooser); });
        return;
    }
    const bool mayBeNew = takesNewFiles(tree);
    const std::string chosen = dialog_.get_filename();
    const std::string path = mayBeNew ? withEnding(chosen, pattern_) : chosen;
    act([&chooser = tree, mayBeNew, path](UserActions& actions) {
        // The component would take it all the same, and list nothing.
        std::error_code failure;
        using phonebook_file::Whose;
        if (!mayBeNew && !path.empty())
            static_cast<void>(phonebook_file::requirePhonebook(path, Whose::anybodys));
        else if (mayBeNew && std::filesystem::exists(std::filesystem::symlink_status(path, failure)))
            static_cast<void>(phonebook_file::requirePhonebook(path, Whose::own));
        actions.type(chooser, path);
        actions.press(chooser);
    });
}

void FileChooserWindow::showTrouble(const std::string& message)
{
    trouble_.set_text(shownMessage(message));
    trouble_.show();
}

void FileChooserWindow::clearTrouble() { trouble_.hide(); }

} // namespace quelm
