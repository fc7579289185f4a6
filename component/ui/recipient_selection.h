// Selecting and removing recipients in the job's list and among the picks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_RECIPIENT_SELECTION_H
#define UI_RECIPIENT_SELECTION_H

struct _GtkDialog;

/// Answers to the removal questions.
void RemoveSingleRcptResponseCB(_GtkDialog* dialog, int response);
void RemoveMultipleRcptsResponseCB(_GtkDialog* dialog, int response);
void RemoveTmpRcptResponseCB(_GtkDialog* dialog, int response);

#pragma GCC visibility push(default)
extern "C" {
/// Keep the buttons beside a list sensitive only when they can act on its selection.
void T40SelectFaxRecipient();
void T40SelectTmpFaxRecipient();

/// Removes the selected recipients of the job, after a question if the user wants to be asked. Asks
/// as for several recipients whenever the selection can be counted, also when it counts one.
void T40RemoveFaxRecipientTest();
void T40RemoveSingleFaxRecipientTest();
void T40RemoveSingleFaxRecipient();
void T40RemoveMultipleFaxRecipientsTest(int count);
void T40RemoveMultipleFaxRecipients();

/// Removes the selected pick, after a question if the user wants to be asked.
void T40RemoveTmpFaxRecipientTest();
void T40RemoveTmpFaxRecipient();

/// Empties the job's recipient list. No widget calls it; hosts may.
void T40RemoveAllFaxRecipients();
}
#pragma GCC visibility pop

#endif
