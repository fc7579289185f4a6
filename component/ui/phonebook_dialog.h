// The phonebook dialog, "Add Rcpt From PB Window": its phonebook kinds, opening, OK and Cancel.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_PHONEBOOK_DIALOG_H
#define UI_PHONEBOOK_DIALOG_H

/// The kind that "Current PB Type" last loaded into the list; -1 so that the first choice always loads.
extern int shownPBType;

#pragma GCC visibility push(default)
extern "C" {
/// Shows the phonebook that the user chose in "Current PB Type".
void SetCurrentPBType();

/// Opens the dialog and lists the current phonebook.
void T40ShowAddRcptFromPBDialog();

/// The picks join the job's recipients; hides the dialog.
void T40AddRcptFromPBDialogOk();

/// Destroys the picks; hides the dialog.
void T40AddRcptFromPBDialogCancel();
}
#pragma GCC visibility pop

#endif
