// Lists a phonebook's records in "Fax PB List".
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PHONEBOOK_PHONEBOOK_LISTING_H
#define PHONEBOOK_PHONEBOOK_LISTING_H

class GTKObject;
class QuelmLegacyDatabaseIterator;
struct LegacyDBRecord;

/// Open the phonebook if needed (creating the personal one when it is missing, never the shared one),
/// read its file again, make it the current one and list it. A phonebook that cannot be opened leaves
/// the list and the current phonebook as they are.
void PopulatePersonalPBEntries();
void PopulateSharedPBEntries();

/// Empties "Fax PB List" and adds a row for each record, in the iterator's order.
void PopulatePhonebookEntryList(QuelmLegacyDatabaseIterator* records);

/// Adds the row of one record: name and fax number of an entry, "[name]" of a group. A record that
/// cannot be decoded adds none; one of neither kind repeats the row before it.
void AddPBEntryToList(GTKObject* list, LegacyDBRecord* record);

#endif
