// A container whose children stand at the positions of a dialog definition, without overlapping.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_PLACED_CONTAINER_H
#define DRIVER_DESKTOP_DIALOGS_PLACED_CONTAINER_H

#include "driver/desktop/dialogs/placement.h"

#include <gtkmm/container.h>

#include <vector>

namespace quelm {

/// What a child asks for besides its natural size.
struct PlacedChild {
    PlacedRectangle asked;
    bool widens = false;
    bool heightens = false;
    bool isButton = false;
};

/// Gives every visible child at least its natural size. The Tab key visits the children in the order in
/// which they were added. In a language written from right to left everything stands mirrored.
class PlacedContainer : public Gtk::Container {
public:
    /// The size that the positions were made for; 0: as large as the children need.
    explicit PlacedContainer(PlacedSize size = {});
    ~PlacedContainer() override;

    /// Adds a child, which the caller keeps alive or has made with Gtk::make_managed.
    void put(Gtk::Widget& child, const PlacedChild& placing);

protected:
    void on_add(Gtk::Widget* child) override;
    void on_remove(Gtk::Widget* child) override;
    void forall_vfunc(gboolean includeInternals, GtkCallback callback, gpointer data) override;
    GType child_type_vfunc() const override;
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void get_preferred_width_vfunc(int& minimum, int& natural) const override;
    void get_preferred_height_vfunc(int& minimum, int& natural) const override;
    void on_size_allocate(Gtk::Allocation& allocation) override;
    bool on_focus(Gtk::DirectionType direction) override;

private:
    struct Child {
        Gtk::Widget* widget;
        PlacedChild placing;
    };

    Placement placed(PlacedSize available) const;

    PlacedSize asked_;
    std::vector<Child> children_;
};

} // namespace quelm

#endif
