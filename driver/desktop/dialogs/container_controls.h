// Controls that hold others: containers, and the set of tabs.
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
    Gtk::Widget* onScreen() override { return &widget; }

protected:
    void show() override { showState(widget); }

private:
    Gtk::Widget& widget;
};

/// A set of tabs with their pages.
class NotebookControl : public Control {
public:
    NotebookControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &notebook; }

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

    Gtk::Notebook& notebook;
    std::vector<Page> pages;
};

} // namespace quelm

#endif
