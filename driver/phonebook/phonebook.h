// One phonebook file as entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_PHONEBOOK_H
#define DRIVER_PHONEBOOK_PHONEBOOK_H

#include "driver/phonebook/entry.h"
#include "driver/phonebook/record_codec.h"
#include "driver/store/record_store.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// Where a phonebook is.
struct PhonebookPlace {
    std::string path;
    /// The user's own phonebook: while there is none yet it counts as an empty one, and its folders are
    /// made with it, as the component does. It is a plain file of the user's that nobody else may read.
    bool personal = false;
};

/// The personal phonebook of a user. `location` is the folder that holds db/phonebook, as an absolute path.
PhonebookPlace personalPhonebook(const std::string& location, const std::string& user);

/// An open phonebook. Failures are quelm::Errors that name the file. Changes reach the file with `commit`,
/// all of them or none; what was not committed is gone with the object.
class Phonebook {
public:
    /// `create` makes the file when there is none: a personal one for the user alone, another one for all to
    /// read. A phonebook that is to be changed is the user's own file.
    enum class Access { read, write, create };

    Phonebook(const PhonebookPlace& place, Access access);

    /// One record, decoded.
    struct Item {
        std::string key;
        RecordContent content;
    };

    /// All records in the phonebook's order, unreadable ones included.
    std::vector<Item> items() const;

    /// Those that the component's dialogs list: each in the place of its row.
    std::vector<Item> listedItems() const;

    bool hasEntry(std::string_view name) const { return has(entryKey(name)); }
    /// Whether the component finds an entry for a group's member of that name: one that it can read.
    bool reachesMember(std::string_view name) const;
    bool hasGroup(std::string_view name) const { return has(groupKey(name)); }

    /// Puts an acceptable entry or group behind the others, or into the place of the one of that name:
    /// then true.
    bool save(const PhonebookEntry& entry) { return saveRecord(encodeRecord(entry)); }
    bool save(const PhonebookGroup& group) { return saveRecord(encodeRecord(group)); }

    /// Removes the record of that key. False when there is none.
    bool remove(const std::string& key);

    void commit();

    const std::string& path() const { return path_; }

private:
    bool has(const std::string& key) const;
    bool saveRecord(Record record);

    std::string path_;
    std::unique_ptr<RecordStore> store_; ///< null for a personal phonebook that is not there yet
};

} // namespace quelm

#endif
