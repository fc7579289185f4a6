// The cover sheet dialog and the sender dialog that it opens.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_COVER_SHEET_DIALOG_H
#define UI_COVER_SHEET_DIALOG_H

#pragma GCC visibility push(default)
extern "C" {
/// Copies the sender fields into the job and shows them as a summary in the cover sheet dialog.
void T40UpdateCoverSheetSenderInfoSummary();

/// Opens the cover sheet dialog; what Cancel returns to is the state of this moment.
void T40ShowFaxCoverSheetSetupDialog();

/// Hides the dialog and takes its choices into the job.
void T40FaxCoverSheetSetupDialogOk();

/// Returns to the options of the last snapshot and hides the dialog. The job is not changed.
void T40FaxCoverSheetSetupDialogCancel();

/// Shows the sender dialog.
void T40FaxSenderSetupInvoke();

/// Takes the sender fields into the job. A later Cancel of the cover sheet dialog keeps them.
void T40FaxSenderSetupOk();

/// Returns to the sender fields of the last snapshot and hides the sender dialog.
void T40FaxSenderSetupCancel();
}
#pragma GCC visibility pop

#endif
