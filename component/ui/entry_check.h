// The one check of a typed name and fax number, and its error window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_ENTRY_CHECK_H
#define UI_ENTRY_CHECK_H

/// Characters that names and numbers may hold beside what the host always accepts.
extern const char nameCharacters[];
extern const char numberCharacters[];

/// Reads the two text fields into the out-texts (4,096 bytes each) and checks them. A null widget
/// name leaves that field out. A field that the host's check rejects is emptied; `required` also
/// refuses an empty one. Returns true when both are acceptable; otherwise the error window shows
/// the first message, and the number was not looked at when the name failed.
[[nodiscard]] bool ValidateFaxEntry(char* nameWidget, char* numberWidget, char* nameOut, char* numberOut,
                                    bool required);

#pragma GCC visibility push(default)
extern "C" {
/// Hides the error window.
void T40HideFaxRecipientErrorDialog();
}
#pragma GCC visibility pop

#endif
