// Controls that hold others: containers, and the set of tabs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_CONTAINER_CONTROLS_H
#define DRIVER_DESKTOP_DIALOGS_CONTAINER_CONTROLS_H

#include "driver/desktop/dialogs/control.h"

#include <gtkmm/label.h>
#include <gtkmm/notebook.h>

#include <vector>

namespace quelm {

/// A container of any kind: all that changes about it is whether it is visible and sensitive.
class ContainerControl : public Control {
public:
    ContainerControl(Widget& treeWidget, DesktopContext& desktopContext, Gtk::Widget& container);
    Gtk::Widget* onScreen() override { return &widget_; }

protected:
    void show() override { showState(widget_); }

private:
    Gtk::Widget& widget_;
};

/// A set of tabs with their pages.
class NotebookControl : public Control {
public:
    NotebookControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &notebook_; }

    /// Adds the page of the set's next item.
    void addPage(Widget& page, Gtk::Widget& content);

protected:
    void show() override;

private:
    struct Page {
        Widget* tree;
        Gtk::Widget* content;
        Gtk::Label* tab;
    };

    Gtk::Notebook& notebook_;
    std::vector<Page> pages_;
};

} // namespace quelm

#endif
