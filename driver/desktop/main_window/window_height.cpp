// Tells a height that a passing part needs from one that the user wants.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/window_height.h"

#include <sigc++/functors/mem_fun.h>

#include <algorithm>

namespace quelm {
namespace {

int heightOf(const Gtk::Window& window)
{
    int width = 0;
    int height = 0;
    window.get_size(width, height);
    return height;
}

} // namespace

WindowHeight::WindowHeight(Gtk::Window& window) : window_(window)
{
    window_.signal_size_allocate().connect(sigc::mem_fun(*this, &WindowHeight::follow));
}

void WindowHeight::addPassing(Gtk::Widget& part)
{
    passing_.push_back(&part);
    part.signal_hide().connect(sigc::mem_fun(*this, &WindowHeight::giveBack));
}

int WindowHeight::atRest() const
{
    const int height = heightOf(window_);
    return atRest_ > 0 ? std::min(height, atRest_) : height;
}

void WindowHeight::follow(const Gtk::Allocation&)
{
    const int height = heightOf(window_);
    if (window_.is_maximized() || height == height_)
        return;
    height_ = height;
    Gtk::Requisition least;
    Gtk::Requisition natural;
    window_.get_preferred_size(least, natural);
    const bool passing = std::ranges::any_of(passing_, [](const auto* part) { return part->get_visible(); });
    if (atRest_ == 0 || !passing || window_.get_allocated_height() > least.height)
        atRest_ = height;
}

void WindowHeight::giveBack()
{
    int width = 0;
    int height = 0;
    window_.get_size(width, height);
    if (window_.get_mapped() && !window_.is_maximized() && height > atRest_)
        window_.resize(width, atRest_);
}

} // namespace quelm
