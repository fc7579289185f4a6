// The height that the user gave a window, apart from what passing parts make of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_WINDOW_HEIGHT_H
#define DRIVER_DESKTOP_MAIN_WINDOW_WINDOW_HEIGHT_H

#include <gtkmm/window.h>
#include <sigc++/trackable.h>

#include <vector>

namespace quelm {

/// Follows the height of a window with parts that come and go, such as a message. Such a part makes a window
/// higher that has no room for it; that height is not the user's, and is given back when the part goes.
/// Nothing happens to a window that is maximized.
class WindowHeight : public sigc::trackable {
public:
    /// The window outlives this.
    explicit WindowHeight(Gtk::Window& window);
    WindowHeight(const WindowHeight&) = delete;
    WindowHeight& operator=(const WindowHeight&) = delete;

    /// Names a part of the window that comes and goes. It lives as long as this.
    void addPassing(Gtk::Widget& part);

    /// How high the window is in pixels, or would be without the passing parts: what to keep of its height.
    int atRest() const;

private:
    void follow(const Gtk::Allocation& allocation);
    void giveBack();

    Gtk::Window& window_;
    std::vector<Gtk::Widget*> passing_;
    int height_ = 0; ///< of the window, in pixels
    int atRest_ = 0; ///< the same without what passing parts need; 0 until the window is on the screen
};

} // namespace quelm

#endif
