// The main fax dialog, "Lan Fax Window".
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_FAX_DIALOG_H
#define UI_FAX_DIALOG_H

struct _GtkWidget;
class GTKObject;

#pragma GCC visibility push(default)
extern "C" {
/// Shows the dialog at its first tab; with a device session also connects to the device's directory.
void T40InvokeFaxDialog();

/// Takes the cover sheet choice, notes, dialing prefix and credit card into the job; hides the dialog.
void T40LanFaxDialogOk();

/// Hides the dialog. Nothing is undone.
void T40FaxDialogCancel();

/// Records a preference box of the dialog (`object`) in the job.
void T40LanFaxPreferencesCB(_GtkWidget* widget, GTKObject* object);
}
#pragma GCC visibility pop

#endif
