// Opening recipients for editing: "_Details..." of the job's list, and the properties of a pick.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_RECIPIENT_DETAILS_H
#define UI_RECIPIENT_DETAILS_H

#pragma GCC visibility push(default)
extern "C" {
/// Opens the selected recipient: a single one in the recipient dialog, a group in the group dialog.
/// The edit flag that it sets is cleared by the recipient dialog alone, so after a group the next OK
/// there changes the selected recipient.
void T40EditFaxRecipient();

/// Shows the selected pick's properties.
void T40ViewPBRcptProperties();

/// Stores the properties in the selected pick. No duplicate question is asked.
void T40FaxRcptPropsOk();

/// Hides the properties; nothing is stored.
void T40FaxRcptPropsCancel();
}
#pragma GCC visibility pop

#endif
