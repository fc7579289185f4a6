// Measures and allocates the children by their placement.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/placed_container.h"

#include <algorithm>
#include <utility>

namespace quelm {

PlacedContainer::PlacedContainer(PlacedSize size) : asked_(size)
{
    set_has_window(false);
    set_redraw_on_allocate(false);
}

PlacedContainer::~PlacedContainer()
{
    while (!children_.empty())
        remove(*children_.back().widget);
}

void PlacedContainer::put(Gtk::Widget& child, const PlacedChild& placing)
{
    children_.push_back({&child, placing});
    child.set_parent(*this);
}

void PlacedContainer::on_add(Gtk::Widget* child) { put(*child, {}); }

void PlacedContainer::on_remove(Gtk::Widget* child)
{
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [child](const Child& entry) { return entry.widget == child; });
    if (found != children_.end()) {
        const bool wasVisible = child->get_visible();
        children_.erase(found);
        child->unparent();
        if (wasVisible)
            queue_resize();
    }
}

void PlacedContainer::forall_vfunc(gboolean /*includeInternals*/, GtkCallback callback, gpointer data)
{
    // The callback may remove the child it is called with.
    const std::vector<Child> all = children_;
    for (const Child& child : all)
        callback(child.widget->gobj(), data);
}

GType PlacedContainer::child_type_vfunc() const { return Gtk::Widget::get_type(); }

Gtk::SizeRequestMode PlacedContainer::get_request_mode_vfunc() const
{
    return Gtk::SIZE_REQUEST_CONSTANT_SIZE;
}

Placement PlacedContainer::placed(PlacedSize available) const
{
    std::vector<PlacementItem> items;
    for (const Child& child : children_) {
        if (!child.widget->get_visible())
            continue;
        Gtk::Requisition least;
        Gtk::Requisition natural;
        child.widget->get_preferred_size(least, natural);
        items.push_back({child.placing.asked,
                         {natural.width, natural.height},
                         child.placing.widens,
                         child.placing.heightens,
                         child.placing.isButton});
    }
    return placeWidgets(items, asked_, available);
}

void PlacedContainer::get_preferred_width_vfunc(int& minimum, int& natural) const
{
    minimum = natural = placed({}).size.width;
}

void PlacedContainer::get_preferred_height_vfunc(int& minimum, int& natural) const
{
    minimum = natural = placed({}).size.height;
}

void PlacedContainer::on_size_allocate(Gtk::Allocation& allocation)
{
    set_allocation(allocation);
    const bool mirrored = get_direction() == Gtk::TEXT_DIR_RTL;
    const Placement placement = placed({allocation.get_width(), allocation.get_height()});
    auto place = placement.places.begin();
    for (const Child& child : children_) {
        if (!child.widget->get_visible())
            continue;
        const int x = mirrored ? allocation.get_width() - place->x - place->width : place->x;
        Gtk::Allocation childAllocation(allocation.get_x() + x, allocation.get_y() + place->y, place->width,
                                        place->height);
        child.widget->size_allocate(childAllocation);
        ++place;
    }
}

bool PlacedContainer::on_focus(Gtk::DirectionType direction)
{
    if (direction != Gtk::DIR_TAB_FORWARD && direction != Gtk::DIR_TAB_BACKWARD)
        return Gtk::Container::on_focus(direction);
    std::vector<Gtk::Widget*> order;
    for (const Child& child : children_)
        order.push_back(child.widget);
    if (direction == Gtk::DIR_TAB_BACKWARD)
        std::reverse(order.begin(), order.end());
    // The child that has the focus goes first: it may hold more places to go to.
    const Gtk::Widget* current = get_focus_child();
    auto next = std::find(order.begin(), order.end(), current);
    if (next == order.end())
        next = order.begin();
    return std::any_of(next, order.end(), [direction](Gtk::Widget* child) {
        return child->get_visible() && child->child_focus(direction);
    });
}

} // namespace quelm
