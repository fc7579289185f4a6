// Opens phonebooks and lists their records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/phonebook_listing.h"

#include "common/list_cells.h"
#include "common/module_state.h"
#include "host/calls.h"
#include "phonebook/phonebook_state.h"
#include "phonebook/record_format.h"

#include <array>

namespace {

void closeAndForget(QuelmLegacyDatabase*& database)
{
    delete database;
    database = nullptr;
}

/// Creates the personal phonebook's file, which could not be opened. On false the database is gone,
/// except when not even the first directory could be made: then it is kept, unopened, and later
/// listings read it again.
bool createPersonalPhonebook()
{
    std::string directory = std::string(pDriverGlobals->getExecutableLocation()) + "/db/phonebook";
    if (!ensurePhonebookDirectory(directory))
        return false;
    directory += "/user";
    if (!ensurePhonebookDirectory(directory) ||
        !host::createDatabase(*personalPBDatabase, *personalPBPath, newPhonebookFlags)) {
        closeAndForget(personalPBDatabase);
        return false;
    }
    return true;
}

bool openPersonalPhonebook()
{
    personalPBDatabase = new QuelmLegacyDatabase;
    return host::openDatabase(*personalPBDatabase, *personalPBPath, "r+") || createPersonalPhonebook();
}

bool openSharedPhonebook()
{
    sharedPBDatabase = new QuelmLegacyDatabase;
    if (host::openDatabase(*sharedPBDatabase, *sharedPBPath, "r"))
        return true;
    closeAndForget(sharedPBDatabase);
    return false;
}

void list(int type, QuelmLegacyDatabase* database, QuelmLegacyDatabaseIterator*& iterator)
{
    database->reopenDatabase();
    delete iterator;
    iterator = new QuelmLegacyDatabaseIterator(database);
    SetCurrentPBInfo(type);
    PopulatePhonebookEntryList(iterator);
}

/// What a row shows. Kept from row to row, so that a record of neither kind repeats the row before it.
struct RowTexts {
    bool filled = false;
    std::string name;
    std::string faxNumber;
};

} // namespace

void PopulatePersonalPBEntries()
{
    if (personalPBPath == nullptr || personalPBPath->empty())
        return;
    if (personalPBDatabase != nullptr || openPersonalPhonebook())
        list(personalPhonebook, personalPBDatabase, personalPBIterator);
}

void PopulateSharedPBEntries()
{
    if (sharedPBPath == nullptr || sharedPBPath->empty())
        return;
    if (sharedPBDatabase != nullptr || openSharedPhonebook())
        list(sharedPhonebook, sharedPBDatabase, sharedPBIterator);
}

void PopulatePhonebookEntryList(QuelmLegacyDatabaseIterator* records)
{
    pbListWidget->clearListItems();
    for (LegacyDBRecord* record = records->getNextRecord(true); record != nullptr;
         record = records->getNextRecord(false))
        AddPBEntryToList(pbListWidget, record);
}

void AddPBEntryToList(GTKObject* listWidget, LegacyDBRecord* record)
{
    static LegacyDBRecipient recipient;
    static RowTexts row;
    static GTKObject* pbRowFactory = nullptr; // creates these rows alone; kept until the process ends

    ClearLegacyDBRecipientInfo(recipient);
    if (!ParseLegacyPBEntry(record, recipient))
        return;
    // Assigned text by text: a phonebook has many rows, and each so uses the memory of the one before.
    if (recipient.type == 1) {
        row.filled = true;
        row.name = recipient.name;
        row.faxNumber = recipient.faxNumber;
    } else if (recipient.type == 2) {
        row.filled = true;
        row.name.assign("[").append(recipient.name).append("]");
        row.faxNumber.clear();
    }

    std::array<const char*, 7> columns{}; // before the first filled row there is nothing to repeat
    if (row.filled)
        columns = {listCell(row.name),
                   listCell(row.faxNumber),
                   pEmptyString,
                   pEmptyString,
                   pEmptyString,
                   pEmptyString,
                   nullptr};
    if (pbRowFactory == nullptr)
        pbRowFactory = new GTKObject;
    host::addListRow(*pbRowFactory, listWidget, columns.data());
}
