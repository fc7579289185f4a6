// Loads pictures from the installation's icon folder.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/pictures.h"

#include "base/log.h"
#include "base/translation.h"

#include <gtkmm/icontheme.h>
#include <gtkmm/window.h>

#include <vector>

namespace quelm {

Glib::RefPtr<Gdk::Pixbuf> Pictures::load(const std::string& file)
{
    if (file.empty())
        return {};
    const auto [place, isNew] = loaded_.emplace(file, Glib::RefPtr<Gdk::Pixbuf>());
    if (isNew) {
        try {
            place->second = Gdk::Pixbuf::create_from_file(home_ + "/" + file);
        } catch (const Glib::Error& error) {
            log(Severity::warning, "a picture is missing: " + std::string(error.what()));
        }
    }
    return place->second;
}

void useProgramIcon(Pictures& pictures)
{
    if (Gtk::IconTheme::get_default()->has_icon(desktopId)) {
        Gtk::Window::set_default_icon_name(desktopId);
        return;
    }
    std::vector<Glib::RefPtr<Gdk::Pixbuf>> icons;
    for (const char* size : {"16", "32", "48"})
        if (const auto icon = pictures.load(std::string("icon/quelm-driver-") + size + ".png"))
            icons.push_back(icon);
    if (!icons.empty())
        Gtk::Window::set_default_icon_list(icons);
}

} // namespace quelm
