// Runs the main loop while a program runs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/program_wait.h"

#include <gtk/gtk.h>

#include <memory>
#include <utility>
#include <vector>

namespace quelm {

namespace {

struct Release {
    void operator()(void* object) const { g_object_unref(object); }
};

/// A window that takes nothing, and the widget that had its keyboard focus.
struct Window {
    std::unique_ptr<GtkWidget, Release> widget;
    std::unique_ptr<GtkWidget, Release> focus;
};

GtkWidget* kept(GtkWidget* widget)
{
    return widget == nullptr ? nullptr : static_cast<GtkWidget*>(g_object_ref(widget));
}

/// Makes the windows insensitive for as long as it lives. One may leave the screen meanwhile.
class Insensitivity {
public:
    Insensitivity()
    {
        GList* all = gtk_window_list_toplevels();
        for (const GList* next = all; next != nullptr; next = next->next) {
            auto* widget = static_cast<GtkWidget*>(next->data);
            if (gtk_widget_get_visible(widget) == FALSE || gtk_widget_get_sensitive(widget) == FALSE)
                continue;
            auto* focus = gtk_window_get_focus(reinterpret_cast<GtkWindow*>(widget));
            windows_.push_back({std::unique_ptr<GtkWidget, Release>(kept(widget)),
                                std::unique_ptr<GtkWidget, Release>(kept(focus))});
            gtk_widget_set_sensitive(widget, FALSE);
        }
        g_list_free(all);
    }
    ~Insensitivity()
    {
        for (const auto& [widget, focus] : windows_) {
            gtk_widget_set_sensitive(widget.get(), TRUE);
            if (focus != nullptr && gtk_widget_get_toplevel(focus.get()) == widget.get())
                gtk_window_set_focus(reinterpret_cast<GtkWindow*>(widget.get()), focus.get());
        }
    }
    Insensitivity(const Insensitivity&) = delete;
    Insensitivity& operator=(const Insensitivity&) = delete;

private:
    std::vector<Window> windows_;
};

} // namespace

int ProgramWait::forProgram(pid_t program)
{
    const Insensitivity insensitivity;
    const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(g_main_loop_new(nullptr, FALSE),
                                                                        g_main_loop_unref);
    loop_ = loop.get();
    status_ = -1;
    const guint watch = g_child_watch_add(program, ended, this);
    g_main_loop_run(loop.get());
    if (std::exchange(loop_, nullptr) == nullptr)
        g_source_remove(watch);
    return status_;
}

void ProgramWait::giveUp()
{
    if (loop_ != nullptr)
        g_main_loop_quit(std::exchange(loop_, nullptr));
}

void ProgramWait::ended(GPid /*program*/, gint status, gpointer self)
{
    auto& wait = *static_cast<ProgramWait*>(self);
    wait.status_ = status;
    if (wait.loop_ != nullptr)
        g_main_loop_quit(wait.loop_);
}

} // namespace quelm
