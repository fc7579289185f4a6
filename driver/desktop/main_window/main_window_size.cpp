// The main window's size: what the user made it, without what passing parts need of it.
#include "driver/desktop/main_window/main_window.h"

#include <algorithm>

namespace quelm {

void MainWindow::on_size_allocate(Gtk::Allocation& allocation)
{
    Gtk::ApplicationWindow::on_size_allocate(allocation);
    followHeight();
}

/// The message and the progress make a window higher that has no room for them. Such a height is not the
/// user's.
void MainWindow::followHeight()
{
    if (is_maximized())
        return;
    int width = 0;
    int height = 0;
    get_size(width, height);
    if (height == height_)
        return;
    height_ = height;
    Gtk::Requisition least;
    Gtk::Requisition natural;
    get_preferred_size(least, natural);
    const bool passing = messages_.get_visible() || progressBox_.get_visible();
    if (heightAtRest_ == 0 || !passing || get_allocated_height() > least.height)
        heightAtRest_ = height;
}

void MainWindow::giveHeightBack()
{
    int width = 0;
    int height = 0;
    get_size(width, height);
    if (get_mapped() && !is_maximized() && height > heightAtRest_)
        resize(width, heightAtRest_);
}

DesktopChoices MainWindow::choices() const
{
    DesktopChoices choices = kept_;
    choices.destination = destinationPanel_.choice();
    if (!is_maximized()) {
        get_size(choices.width, choices.height);
        if (heightAtRest_ > 0)
            choices.height = std::min(choices.height, heightAtRest_);
    }
    return choices;
}

} // namespace quelm
