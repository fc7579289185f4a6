// A dialog's controls as a program would show them that has nothing but the toolkit.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_DESKTOP_PLAIN_WINDOW_H
#define BENCH_DESKTOP_PLAIN_WINDOW_H

#include "driver/widgets/widget.h"

#include <gtkmm/container.h>
#include <gtkmm/radiobutton.h>
#include <gtkmm/window.h>

#include <string>

namespace bench {

/// A window with the toolkit's controls for all that stands in a dialog of the tree, at the same places
/// and with the same texts and pictures. They do nothing, follow nothing and are not moved apart where
/// their texts need more room.
class PlainWindow {
public:
    /// `iconFolder` holds icon/.
    PlainWindow(const quelm::Widget& dialog, std::string iconFolder);

    Gtk::Window& onScreen() { return window_; }

    /// Shows it, modal over another window.
    void present(Gtk::Window& over);

private:
    Gtk::Widget* make(const quelm::Widget& widget);
    Gtk::Widget* makeControl(const quelm::Widget& widget);
    Gtk::Widget* makeList(const quelm::Widget& list);
    Gtk::Widget* makeTabs(const quelm::Widget& tabs);
    Gtk::Widget* makePicture(const quelm::Widget& picture);
    Gtk::Widget* makeContainer(const quelm::Widget& container);
    void putAll(const quelm::Widget& container, Gtk::Container& into);
    void put(const quelm::Widget& widget, Gtk::Widget& made, Gtk::Container& into);

    Gtk::Window window_;
    std::string home_;
};

} // namespace bench

#endif
