// The component's dialogs on a screen, and a person in front of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DESKTOP_DESKTOP_FIXTURE_H
#define TESTS_DRIVER_DESKTOP_DESKTOP_FIXTURE_H

#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/widgets/widget_tree.h"
#include "tests/driver/desktop/main_loop.h"
#include "tests/driver/desktop/toolkit.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"

#include <atkmm/object.h>
#include <gtest/gtest.h>
#include <gtkmm/button.h>
#include <gtkmm/combobox.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/treeview.h>
#include <gtkmm/window.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A person named ann at the dialogs of the real component.
class DesktopTest : public DriverTest {
protected:
    DesktopTest() : DriverTest(build_paths::componentLibrary())
    {
        std::filesystem::create_directory_symlink(build_paths::inProject("icon"), folder / "home/icon");
        mainWindow.show();
        dialogs = std::make_unique<quelm::DialogWindows>(driver(), mainWindow);
    }

    ~DesktopTest() override
    {
        dialogs.reset();
        loopUntilIdle();
    }

    quelm::Widget& tree(const std::string& name) { return *driver().widgets().find(name); }

    /// The toolkit's widget for one of the tree's.
    template <class Kind = Gtk::Widget>
    Kind& screen(const std::string& name)
    {
        auto* widget = dynamic_cast<Kind*>(dialogs->onScreen(tree(name)));
        if (widget == nullptr)
            throw std::runtime_error(name + " is not on the screen as that");
        return *widget;
    }

    bool isOpen(const std::string& window)
    {
        Gtk::Widget* shown = dialogs->onScreen(tree(window));
        return shown != nullptr && shown->get_mapped();
    }

    /// Waits for a window to come, with its content laid out.
    bool opens(const std::string& window)
    {
        return loopUntil([&] {
            return isOpen(window) && dialogs->onScreen(tree(window))->get_allocated_width() > 1 &&
                   screen<Gtk::Window>(window).is_active();
        });
    }

    bool closes(const std::string& window)
    {
        return loopUntil([&] { return !isOpen(window); });
    }

    void openFaxDialog()
    {
        dialogs->act([this] { driver().call("T40InvokeFaxDialog"); });
        ASSERT_TRUE(opens("Lan Fax Window"));
    }

    void click(const std::string& button) { screen<Gtk::Button>(button).clicked(); }

    /// What a person types, in place of what the field holds.
    void typeInto(const std::string& field, const std::string& text)
    {
        screen<Gtk::Entry>(field).set_text(text);
        loopUntilIdle();
    }

    void addRecipient(const std::string& name, const std::string& number)
    {
        click("AddFaxRcpt");
        ASSERT_TRUE(opens("LanFax Add Recipient Window"));
        typeInto("RecipientName", name);
        typeInto("RecipientNumber", number);
        click("LanFaxAddRcpt OK Button");
        ASSERT_TRUE(closes("LanFax Add Recipient Window"));
    }

    /// The cells of the first column, as the list shows them.
    std::vector<std::string> shownNames(const std::string& list)
    {
        std::vector<std::string> names;
        for (const Gtk::TreeRow& row : screen<Gtk::TreeView>(list).get_model()->children()) {
            Glib::ustring name;
            row.get_value(0, name);
            names.push_back(name);
        }
        return names;
    }

    /// What a window says while it refuses something; empty when it does not.
    std::string message(const std::string& window)
    {
        std::string said;
        const std::function<void(Gtk::Widget&)> look = [&](Gtk::Widget& widget) {
            if (widget.get_accessible()->get_description() == "Dialog Message" && widget.is_visible())
                said = dynamic_cast<Gtk::Label&>(widget).get_text();
            else if (auto* container = dynamic_cast<Gtk::Container*>(&widget))
                container->foreach (look);
        };
        look(screen(window));
        return said;
    }

    /// The question on the screen, null when there is none.
    static Gtk::MessageDialog* question()
    {
        for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
            auto* dialog = dynamic_cast<Gtk::MessageDialog*>(window);
            if (dialog != nullptr && dialog->get_mapped())
                return dialog;
        }
        return nullptr;
    }

    /// A key press in a window that has the focus, as the window manager delivers it.
    static void press(Gtk::Window& window, guint key, guint state = 0)
    {
        GdkEvent* event = gdk_event_new(GDK_KEY_PRESS);
        event->key.window = GDK_WINDOW(g_object_ref(window.get_window()->gobj()));
        event->key.send_event = TRUE;
        event->key.time = GDK_CURRENT_TIME;
        event->key.keyval = key;
        event->key.state = state;
        GdkKeymapKey* keys = nullptr;
        gint count = 0;
        GdkKeymap* keymap = gdk_keymap_get_for_display(gdk_display_get_default());
        if (gdk_keymap_get_entries_for_keyval(keymap, key, &keys, &count) != FALSE && count > 0) {
            event->key.hardware_keycode = static_cast<guint16>(keys[0].keycode);
            event->key.group = static_cast<guint8>(keys[0].group);
        }
        g_free(keys);
        gdk_event_set_device(event,
                             gdk_seat_get_keyboard(gdk_display_get_default_seat(gdk_display_get_default())));
        gtk_main_do_event(event);
        gdk_event_free(event);
        loopUntilIdle();
    }

    Toolkit toolkit;
    Gtk::Window mainWindow;
    std::unique_ptr<quelm::DialogWindows> dialogs;
};

#endif
