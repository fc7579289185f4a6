// The question that every dialog asks before a recipient is added a second time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_DUPLICATE_QUESTION_H
#define UI_DUPLICATE_QUESTION_H

struct _GtkWidget;

/// Asks when a recipient of that name and fax number is in the job or among the picks and the user
/// wants to be asked. Returns true when the question is on the screen: the caller stops, and
/// `response` (really a `void(_GtkDialog*, int)`) finishes the work. False: the caller goes on.
[[nodiscard]] bool TestForDuplicateRecipient(void (*response)(_GtkWidget*, void*), char* name,
                                             char* faxNumber);

#endif
