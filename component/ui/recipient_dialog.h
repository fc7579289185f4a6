// The recipient dialog, "LanFax Add Recipient Window": adds a recipient, or edits the selected one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_RECIPIENT_DIALOG_H
#define UI_RECIPIENT_DIALOG_H

struct _GtkDialog;

/// While 1, OK changes the selected recipient of the job instead of adding one, and asks no
/// duplicate question. Opening the dialog does not clear it; OK and Cancel do.
extern int editCurrentRecipient;

/// Answer to the duplicate question of this dialog.
void DupAddRcptResponseCB(_GtkDialog* dialog, int response);

#pragma GCC visibility push(default)
extern "C" {
/// Opens the dialog empty.
void T40ShowFaxRecipientDialog();

/// OK: checks the fields, asks about a duplicate, stores.
void T40AddFaxRecipientTest();

/// Checks the fields and stores the recipient. 1 when it was stored; 0 when a field was refused or
/// there is no selected recipient to edit, and then the dialog stays open.
int T40AddFaxRecipient();

/// Hides the dialog and stores nothing. The phonebook box keeps its state.
void T40CancelFaxRecipientDialog();
}
#pragma GCC visibility pop

#endif
