// Finds the program's widgets as assistive tools do, by their accessible descriptions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DESKTOP_ON_SCREEN_H
#define TESTS_DRIVER_DESKTOP_ON_SCREEN_H

#include <gtk/gtk.h>

#include <functional>
#include <string>

/// Calls `visit` for every widget of every window, internal ones included.
void forEachWidget(const std::function<void(GtkWidget*)>& visit);

/// The widget of that description which can be seen, null when there is none.
GtkWidget* onScreen(const std::string& description);

std::string descriptionOf(GtkWidget* widget);
std::string spokenNameOf(GtkWidget* widget);

/// What a label shows; empty when it cannot be seen.
std::string shownText(const std::string& description);

/// Whether a control can be seen and used.
bool isUsable(const std::string& description);

/// Presses a button that can be seen and used, and fails the test when there is none.
void pressButton(const std::string& description);

/// Replaces what a text field holds.
void enterText(const std::string& description, const std::string& text);

/// Chooses an item of a combo box.
void chooseItem(const std::string& description, int item);

#endif
