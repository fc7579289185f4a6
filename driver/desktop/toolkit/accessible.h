// What assistive tools and tests know a widget by.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_ACCESSIBLE_H
#define DRIVER_DESKTOP_TOOLKIT_ACCESSIBLE_H

#include <atkmm/object.h>
#include <gtkmm/widget.h>

#include <string>

namespace quelm {

/// Gives a widget the fixed name that it keeps in every language ("Main Open Button"), as its accessible
/// description; and, where its own text does not say it, the name that is read aloud.
inline void describe(Gtk::Widget& widget, const std::string& fixedName, const std::string& spokenName = {})
{
    const auto accessible = widget.get_accessible();
    accessible->set_description(fixedName);
    if (!spokenName.empty())
        accessible->set_name(spokenName);
}

} // namespace quelm

#endif
