// A phonebook in a folder of the test's own, with entries to start from.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_PHONEBOOK_PHONEBOOK_FOLDER_H
#define TESTS_DRIVER_PHONEBOOK_PHONEBOOK_FOLDER_H

#include "driver/phonebook/actions.h"
#include "driver/phonebook/phonebook.h"
#include "driver/phonebook/settled_contacts.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace quelm {

// What gtest prints of them.
inline void PrintTo(const PhonebookEntry& entry, std::ostream* out)
{
    *out << entry.name << "|" << entry.number << "|" << entry.organization << "|" << entry.phone << "|"
         << entry.email;
}
inline void PrintTo(const PhonebookGroup& group, std::ostream* out)
{
    *out << "[" << group.name << "]";
    for (const auto& member : group.members)
        *out << "|" << member;
}
inline void PrintTo(const UnreadableRecord& record, std::ostream* out)
{
    *out << "unreadable: " << record.reason;
}

namespace test {

/// What of a file's contents can be saved, into a phonebook without any items.
inline SettledContacts settled(Contacts all, const SettlingOptions& options = {})
{
    return settle(std::move(all), {}, options);
}

class PhonebookTest : public testing::Test {
protected:
    /// Puts these into the phonebook, which is made when there is none.
    void fill(const std::vector<PhonebookEntry>& entries, const std::vector<PhonebookGroup>& groups = {})
    {
        Phonebook phonebook(place, Phonebook::Access::create);
        for (const auto& entry : entries)
            phonebook.save(entry);
        for (const auto& group : groups)
            phonebook.save(group);
        phonebook.commit();
    }

    /// Puts a record of any content into it.
    void addRecord(const std::string& key, const std::string& data)
    {
        fill({});
        RecordStore store(place.path, RecordStore::Access::readWrite);
        store.save({key, data});
        store.commit();
    }

    std::vector<RecordContent> contents() const
    {
        std::vector<RecordContent> all;
        for (const auto& item : Phonebook(place, Phonebook::Access::read).items())
            all.push_back(item.content);
        return all;
    }

    std::string list() const { return listPhonebook(place, false).done; }
    bool exists() const { return std::filesystem::exists(place.path); }

    TemporaryFolder folder;
    PhonebookPlace place{folder / "book.xdb"};
};

} // namespace test
} // namespace quelm

#endif
