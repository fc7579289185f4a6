// Controls without a value: labels, pictures, buttons.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_SIMPLE_CONTROLS_H
#define DRIVER_DESKTOP_DIALOGS_SIMPLE_CONTROLS_H

#include "driver/desktop/dialogs/control.h"

#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

namespace quelm {

class LabelControl : public Control {
public:
    LabelControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &label_; }

protected:
    void show() override;

private:
    Gtk::Label& label_;
};

/// Decoration: what it shows, a label says as well.
class PictureControl : public Control {
public:
    PictureControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &image_; }

protected:
    void show() override { showState(image_); }

private:
    Gtk::Image& image_;
};

/// A push button, or a toolbar's large button with a picture.
class ButtonControl : public Control {
public:
    ButtonControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &button_; }

protected:
    void show() override;

private:
    Gtk::Button& button_;
};

} // namespace quelm

#endif
