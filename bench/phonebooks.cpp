// Changes the personal phonebook from one scenario to the next.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/phonebooks.h"

#include "bench/comparison.h"
#include "common/module_state.h"
#include "host/record_database.h"
#include "phonebook/phonebook_listing.h"
#include "phonebook/phonebook_state.h"

namespace bench {

void closePhonebook()
{
    delete personalPBIterator;
    personalPBIterator = nullptr;
    delete personalPBDatabase;
    personalPBDatabase = nullptr;
    currentPBDatabase = nullptr;
    currentPBIterator = nullptr;
    pbListWidget->clearListItems();
}

void usePhonebook(const std::string& name, void (*fill)(QuelmLegacyDatabase&, int), int count)
{
    closePhonebook();
    personalPBPath->replace(personalPBPath->rfind('/') + 1, std::string::npos,
                            name + std::to_string(count) + ".xdb");
    PopulatePersonalPBEntries();
    int present = 0;
    require(personalPBDatabase != nullptr && personalPBDatabase->getNumberOfRecords(present),
            "the phonebook does not open");
    if (present > 0)
        return;
    fill(*personalPBDatabase, count);
    require(personalPBDatabase->serializeDatabase(), "the phonebook was not written");
    PopulatePersonalPBEntries();
}

} // namespace bench
