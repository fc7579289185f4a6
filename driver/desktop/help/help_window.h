// Shows the pages of the help.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_HELP_HELP_WINDOW_H
#define DRIVER_DESKTOP_HELP_HELP_WINDOW_H

#include "driver/desktop/help/help_page.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/listbox.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>
#include <gtkmm/window.h>
#include <gtkmm/windowgroup.h>

#include <string>
#include <vector>

namespace quelm {

class Widget;

/// The file of a topic's page below `folder`: TOPIC.md of the first of the user's `languages` ("de_AT",
/// "de") that has a folder with it, or the English one in `folder` itself. Empty when there is no page or
/// `topic` is no plain name.
std::string helpFile(const std::string& folder, const std::string& topic,
                     const std::vector<std::string>& languages);

/// Where a help button of the dialogs stands: its own name, and those of what it stands in, the window's
/// last. Empty for null.
std::vector<std::string> placesAround(const Widget* helpButton);

/// A window with the sections of a page beside its text. It stays usable beside modal dialogs.
class HelpWindow : public Gtk::Window {
public:
    /// `folder` holds the pages.
    HelpWindow(Gtk::Window& parent, std::string folder);
    ~HelpWindow() override;

    /// Shows the page of a topic at the section about the first of `places` for which there is one: names
    /// of windows or tabs in the dialogs. A topic without a page is told in the window.
    void showTopic(const std::string& topic, const std::vector<std::string>& places);

    /// The heading that was last gone to.
    std::string currentSection() const;

protected:
    bool on_key_press_event(GdkEventKey* event) override;

private:
    void load(const std::string& topic);
    void makeTags();
    void fill();
    void addBlock(const HelpBlock& block);
    void goTo(std::size_t block);

    std::string folder_;
    std::string topic_;
    HelpPage page_;
    std::size_t current_ = 0;
    std::vector<Glib::RefPtr<Gtk::TextMark>> marks_; ///< one for each block
    sigc::connection scrolling_;
    Glib::RefPtr<Gtk::WindowGroup> group_;
    Gtk::Box box_{Gtk::ORIENTATION_VERTICAL};
    Gtk::Box columns_{Gtk::ORIENTATION_HORIZONTAL};
    Gtk::Box bar_{Gtk::ORIENTATION_HORIZONTAL};
    Gtk::ScrolledWindow sectionsScroll_;
    Gtk::ListBox sections_;
    Gtk::ScrolledWindow textScroll_;
    Gtk::TextView text_;
    Gtk::Button close_;
};

} // namespace quelm

#endif
