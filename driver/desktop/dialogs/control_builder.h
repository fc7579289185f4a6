// Makes the controls of a window from the widget tree.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_CONTROL_BUILDER_H
#define DRIVER_DESKTOP_DIALOGS_CONTROL_BUILDER_H

#include "driver/desktop/dialogs/choice_controls.h"
#include "driver/desktop/dialogs/container_controls.h"
#include "driver/desktop/dialogs/control.h"
#include "driver/desktop/dialogs/list_control.h"
#include "driver/desktop/dialogs/placed_container.h"

#include <gtkmm/sizegroup.h>

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace quelm {

/// What a window is made of.
struct ControlSet {
    std::vector<std::unique_ptr<Control>> controls;
    /// The control that shows a widget; items and pages are shown by the control of their group or set.
    std::unordered_map<const Widget*, Control*> shownBy;
};

/// Builds controls into a set. The toolkit's widgets belong to the container that the caller puts the
/// result in.
class ControlBuilder {
public:
    ControlBuilder(DesktopContext& desktopContext, ControlSet& controlSet)
        : context_(desktopContext), set_(controlSet)
    {
    }

    /// The content of a window of the given size.
    Gtk::Widget& contentOf(Widget& window, PlacedSize size);

private:
    Gtk::Widget& control(Widget& widget, PlacedSize frame);
    Gtk::Widget& container(Widget& widget, PlacedSize frame);
    Gtk::Widget& placed(Widget& widget, PlacedSize frame);
    Gtk::Widget& sideBySide(Widget& widget);
    Gtk::Widget& notebook(Widget& widget, PlacedSize frame);
    void putAll(Widget& widget, PlacedContainer& into, PlacedSize frame);
    void putRadioItems(Widget& group, const std::function<void(Widget&, Gtk::Widget&)>& put);
    void alignColumn(const Widget& row, std::size_t column, Gtk::Widget& cell);

    template <class Made, class... Arguments>
    Made& make(Widget& widget, Arguments&&... arguments);

    DesktopContext& context_;
    ControlSet& set_;
    /// Rows of side-by-side widgets that begin at one place have their columns in line.
    std::map<std::string, Glib::RefPtr<Gtk::SizeGroup>> columns_;
};

} // namespace quelm

#endif
