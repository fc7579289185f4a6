// A host's own gettext, which has nothing to do with the library's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LIBRARY_HOST_GETTEXT_H
#define TESTS_LIBRARY_HOST_GETTEXT_H

/// What the host's `gettext` answers to everything.
extern const char hostGettextAnswer[];

/// How often the host's `gettext` was called.
int hostGettextCalls();

/// Calls the host's `gettext` by its plain name, as the host's code does.
const char* callHostGettext(const char* text);

#endif
