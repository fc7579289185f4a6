// Walks over the windows of the program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/desktop/on_screen.h"

#include <gtest/gtest.h>

namespace {

using Visit = std::function<void(GtkWidget*)>;

void visitAll(GtkWidget* widget, gpointer visit)
{
    (*static_cast<const Visit*>(visit))(widget);
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), &visitAll, visit);
}

std::string textOr(const gchar* text) { return text == nullptr ? "" : text; }

} // namespace

void forEachWidget(const std::function<void(GtkWidget*)>& visit)
{
    auto visitor = visit;
    GList* windows = gtk_window_list_toplevels();
    for (GList* window = windows; window != nullptr; window = window->next)
        visitAll(GTK_WIDGET(window->data), &visitor);
    g_list_free(windows);
}

std::string descriptionOf(GtkWidget* widget)
{
    return textOr(atk_object_get_description(gtk_widget_get_accessible(widget)));
}

std::string spokenNameOf(GtkWidget* widget)
{
    return textOr(atk_object_get_name(gtk_widget_get_accessible(widget)));
}

GtkWidget* onScreen(const std::string& description)
{
    GtkWidget* found = nullptr;
    forEachWidget([&](GtkWidget* widget) {
        if (gtk_widget_get_mapped(widget) != FALSE && descriptionOf(widget) == description)
            found = widget;
    });
    return found;
}

std::string shownText(const std::string& description)
{
    GtkWidget* label = onScreen(description);
    return GTK_IS_LABEL(label) ? textOr(gtk_label_get_text(GTK_LABEL(label))) : "";
}

bool isUsable(const std::string& description)
{
    GtkWidget* widget = onScreen(description);
    return widget != nullptr && gtk_widget_is_sensitive(widget) != FALSE;
}

void pressButton(const std::string& description)
{
    ASSERT_TRUE(isUsable(description)) << description;
    gtk_button_clicked(GTK_BUTTON(onScreen(description)));
}

void enterText(const std::string& description, const std::string& text)
{
    GtkWidget* field = onScreen(description);
    ASSERT_TRUE(GTK_IS_ENTRY(field)) << description;
    gtk_entry_set_text(GTK_ENTRY(field), text.c_str());
}

void chooseItem(const std::string& description, int item)
{
    GtkWidget* box = onScreen(description);
    ASSERT_TRUE(GTK_IS_COMBO_BOX(box)) << description;
    gtk_combo_box_set_active(GTK_COMBO_BOX(box), item);
}
