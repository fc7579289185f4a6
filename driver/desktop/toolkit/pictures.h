// The pictures of the dialogs, by the names that the definition gives them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_PICTURES_H
#define DRIVER_DESKTOP_TOOLKIT_PICTURES_H

#include <gdkmm/pixbuf.h>

#include <map>
#include <string>

namespace quelm {

/// Loads each picture once.
class Pictures {
public:
    /// The folder that holds icon/.
    explicit Pictures(std::string homeFolder) : home_(std::move(homeFolder)) {}

    /// A picture by its path below the home folder. Null when it cannot be loaded, which is logged once
    /// a picture, or when `file` is empty.
    [[nodiscard]] Glib::RefPtr<Gdk::Pixbuf> load(const std::string& file);

private:
    std::string home_;
    std::map<std::string, Glib::RefPtr<Gdk::Pixbuf>> loaded_;
};

/// What desktops know the program by: the name of its entry in their menus (without ".desktop") and of its
/// icon in their themes, and the class of its windows, by which they find the entry.
inline constexpr const char* desktopId = "net.quelm.Desktop";

/// Gives every window of the program its icon: the theme's where it is installed, or the pictures in icon/.
void useProgramIcon(Pictures& pictures);

} // namespace quelm

#endif
