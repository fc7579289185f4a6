// What stands at the top of the main window: how something ended, and what else the user should know.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_MESSAGE_BAR_H
#define DRIVER_DESKTOP_TOOLKIT_MESSAGE_BAR_H

#include <gtkmm/button.h>
#include <gtkmm/infobar.h>
#include <gtkmm/label.h>

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// Hidden until there is something to say; the user can close it.
class MessageBar : public Gtk::InfoBar {
public:
    MessageBar();

    /// Shows one line in place of all that stands here. It may hold any bytes: names of files do.
    void tell(Gtk::MessageType type, const std::string& line);

    /// Shows a line together with what stands here already, the worst first. Of more than ten lines the
    /// oldest of those that weigh least go, and the bar says how many did.
    void tellBeside(Gtk::MessageType type, const std::string& line);

    void clear();

private:
    void forget();

    struct Line {
        Gtk::MessageType type;
        std::string text;
    };

    std::vector<Line> lines_;
    unsigned long leftOut_ = 0; ///< lines that had to go
    Gtk::Label label_;
    Gtk::Button close_;
};

} // namespace quelm

#endif
