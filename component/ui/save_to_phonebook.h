// Saving a recipient of the job, or all of them as a group, in the personal phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_SAVE_TO_PHONEBOOK_H
#define UI_SAVE_TO_PHONEBOOK_H

#pragma GCC visibility push(default)
extern "C" {
/// Opens the group dialog with the job's recipients as members.
void T40SaveGroup();

/// Writes the group, if it has a name and members, and hides the dialog. Whether the phonebook took
/// it is not reported.
void T40SaveGroupOk();

/// Hides the group dialog.
void T40SaveGroupCancel();

/// Opens the selected recipient in the recipient dialog, whose OK then also writes it.
void T40SaveEntry();
}
#pragma GCC visibility pop

#endif
