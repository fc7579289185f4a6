// The toolkit, as the tests on a screen need it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DESKTOP_TOOLKIT_H
#define TESTS_DRIVER_DESKTOP_TOOLKIT_H

#include <gtk/gtk.h>
#include <gtkmm/application.h>

/// Starts the toolkit with the first of its kind, for as long as the process runs: it can be started only
/// once. The user's language stays out of it.
class Toolkit {
public:
    Toolkit() { static const auto application = start(); }

private:
    static Glib::RefPtr<Gtk::Application> start()
    {
        gtk_disable_setlocale();
        return Gtk::Application::create("org.example.desktop_tests", Gio::APPLICATION_NON_UNIQUE);
    }
};

#endif
