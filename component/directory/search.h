// Searching the device's directory for recipients.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIRECTORY_SEARCH_H
#define DIRECTORY_SEARCH_H

class GTKObject;

/// Creates the rows of results; made on the first one and kept until the process ends.
extern GTKObject* ldapRowFactory;

/// Lists the persons whose surname starts with `text` in "Fax PB List" and reports their number in
/// "Search Status". The text goes into the filter unchanged. Returns 0, and the list keeps its
/// rows, when the search could not be made.
int PerformLDAPSearch(char* text);

#pragma GCC visibility push(default)
extern "C" {
/// Searches for "Search String" when the directory is the current phonebook.
void PBSearch();

/// Adds the selected result to the picks. No question is asked, and a result without a fax number is
/// added too. A row whose name cannot be read adds nobody.
void T40AddFaxRecLDAP();
}
#pragma GCC visibility pop

#endif
