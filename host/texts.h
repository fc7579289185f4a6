// The host's text helpers: checks of what a user typed, token lists, formatted copies.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_TEXTS_H
#define HOST_TEXTS_H

#pragma GCC visibility push(default)

extern "C" {
/// A text without characters that the host owns. The component hands it out where a list row
/// needs a text and the field is empty; nobody writes through it. Never null.
extern char* pEmptyString;

/// Checks a name or a telephone number that a user typed. `allowed` lists the characters that
/// are acceptable beside letters and digits (of a name) or digits (of a number). Returns null
/// when the text is acceptable; otherwise a message for the user, allocated with `new[]`, which
/// the caller releases with `delete[]`.
char* ValidateName(char* text, char* allowed);
char* ValidatePhoneNumber(char* text, char* allowed);

/// Formats `argument` by the printf-style `format`, which holds one "%s". Returns a text that was
/// allocated with `new[]` and that the caller releases with `delete[]`.
char* SaveString(char* format, void* argument);

/// The 1-based position of `token` in `list` (",A,B,C," for the delimiter ','), 0 when it is
/// absent. Whole tokens are compared byte for byte.
int GetTokenNum(char* list, char* token, char delimiter, bool flag);

/// The decimal text of a number. The host owns it; it stays valid until the next call.
char* itoa(int number);
}

#pragma GCC visibility pop

#endif
