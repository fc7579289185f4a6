// The host's questions to the user, and plain text out of marked-up text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_MESSAGES_H
#define HOST_MESSAGES_H

#include <string>

struct _GtkWidget;
struct _GtkDialog;

#pragma GCC visibility push(default)

extern "C" {
/// Puts a message on the screen and returns at once. `kind` 3 is the question with the answers
/// yes and no. When the user answers, the host calls `response`, which really is a
/// `void(_GtkDialog*, int)`: it gets the question's dialog and -8 for yes, another value for
/// anything else. The text (UTF-8) is copied. Several questions may be open at once.
void PopupMessageDialog(int kind, void (*response)(_GtkWidget*, void*), char* text);

/// Closes the question whose response callback is running; outside of one, the question asked
/// last. Does nothing when none is open.
void CloseCurrentPopupDialog();

/// Replaces `out` with the plain text of the marked-up `text`, whose first `length` bytes count
/// (the terminator is none of them). A text that is no valid markup stands as it is.
void ParsePangoMarkupString(char* text, int length, std::string& out);
}

#pragma GCC visibility pop

#endif
