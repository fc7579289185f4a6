// One line at the top of the main window that says how something ended.
#ifndef DRIVER_DESKTOP_TOOLKIT_MESSAGE_BAR_H
#define DRIVER_DESKTOP_TOOLKIT_MESSAGE_BAR_H

#include <gtkmm/button.h>
#include <gtkmm/infobar.h>
#include <gtkmm/label.h>

#include <string>

namespace quelm {

/// Hidden until there is something to say; the user can close it.
class MessageBar : public Gtk::InfoBar {
public:
    MessageBar();

    /// `line` may hold any bytes: names of files do.
    void tell(Gtk::MessageType type, const std::string& line);
    void clear();

private:
    Gtk::Label label_;
    Gtk::Button close_;
};

} // namespace quelm

#endif
