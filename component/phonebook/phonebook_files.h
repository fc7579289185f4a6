// Choosing the phonebook files and opening them in the phonebook program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PHONEBOOK_PHONEBOOK_FILES_H
#define PHONEBOOK_PHONEBOOK_FILES_H

class GTKObject;

// The file choosers; made on first use and kept.
extern GTKObject* personalPBFileDialog;
extern GTKObject* sharedPBFileDialog;

#pragma GCC visibility push(default)
extern "C" {
/// Show the chooser, which stands over the fax dialog.
void InvokePersonalSelectFileDialog();
void InvokeSharedSelectFileDialog();

/// Take the chosen path. A phonebook that is open is closed when the path is another one; the next
/// listing opens the new file.
void PersonalSelectFileDialogOk();
void SharedSelectFileDialogOk();

/// Hide the chooser.
void PersonalSelectFileDialogCancel();
void SharedSelectFileDialogCancel();

/// Run the phonebook program on the file and wait until it ends.
void OpenPersonalPB();
void OpenSharedPB();
}
#pragma GCC visibility pop

#endif
