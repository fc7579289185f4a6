// Which phonebooks there are, which one is shown, and how their files come to be.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PHONEBOOK_PHONEBOOK_STATE_H
#define PHONEBOOK_PHONEBOOK_STATE_H

#include <string>

class QuelmLegacyDatabase;
class QuelmLegacyDatabaseIterator;

// Start-up makes the paths and opens the personal phonebook; the rest is made on first need. Nothing
// is freed at unload. A database that another file replaces is closed and kept: others may hold it.
extern std::string* personalPBPath; ///< full path of the personal phonebook's file
extern std::string* sharedPBPath;   ///< full path of the shared phonebook's file; empty until one is chosen
extern QuelmLegacyDatabase* personalPBDatabase;
extern QuelmLegacyDatabase* sharedPBDatabase;
extern QuelmLegacyDatabaseIterator* personalPBIterator; ///< made anew at each listing
extern QuelmLegacyDatabaseIterator* sharedPBIterator;

/// The phonebook behind "Fax PB List": row i of the list is record i + 1 of the iterator.
extern QuelmLegacyDatabase* currentPBDatabase;
extern QuelmLegacyDatabaseIterator* currentPBIterator;

/// Makes the personal (0) or shared (1) phonebook the current one; other values change nothing.
void SetCurrentPBInfo(int type);

/// Hosts create a phonebook file for these flags.
inline constexpr int newPhonebookFlags = 2;

/// Creates the directory unless it exists. The mode goes to the host as the decimal number 777.
[[nodiscard]] bool ensurePhonebookDirectory(const std::string& path);

#endif
