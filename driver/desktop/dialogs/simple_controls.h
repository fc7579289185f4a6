// Controls without a value: labels, pictures, buttons.
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
    Gtk::Widget* onScreen() override { return &label; }

protected:
    void show() override;

private:
    Gtk::Label& label;
};

/// Decoration: what it shows, a label says as well.
class PictureControl : public Control {
public:
    PictureControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &image; }

protected:
    void show() override { showState(image); }

private:
    Gtk::Image& image;
};

/// A push button, or a toolbar's large button with a picture.
class ButtonControl : public Control {
public:
    ButtonControl(Widget& treeWidget, DesktopContext& desktopContext);
    Gtk::Widget* onScreen() override { return &button; }

protected:
    void show() override;

private:
    Gtk::Button& button;
};

} // namespace quelm

#endif
