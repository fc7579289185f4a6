// One open phonebook file: its records in memory, its changes in one transaction.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_RECORD_STORE_H
#define DRIVER_STORE_RECORD_STORE_H

#include "driver/store/record.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quelm {

/// One phonebook file, open. The records are read into memory when the file is opened and by
/// `refresh`, so that the numbers of rows on the screen stay right while other drivers save to the
/// same file. Changes go to the file's end of a transaction, and into the file with `commit`; what was
/// not committed is gone when the object is destroyed. Every failure is a quelm::Error that names the
/// file, the reason and the remedy. Used from one thread.
class RecordStore {
public:
    /// To read anybody's phonebook, or one of the user's own alone, or to change one of his own.
    enum class Access { read, readOwn, readWrite };

    /// Who may read a phonebook that is made: its owner alone, or everybody (as far as the umask leaves it).
    enum class Readers { owner, everybody };

    /// Opens an existing phonebook, a plain file; to one of the user's own no link may lead. A file that is
    /// none (or is damaged, or comes from a newer version) is refused; it stays byte for byte as it is, and
    /// nothing appears next to it. A journal beside it counts only when it is a plain file of the phonebook's
    /// owner, the user or root.
    RecordStore(const std::string& path, Access access);
    ~RecordStore();
    RecordStore(const RecordStore&) = delete;
    RecordStore& operator=(const RecordStore&) = delete;

    /// Creates an empty phonebook. Whatever exists under that name makes it fail.
    static void create(const std::string& path, Readers readers = Readers::owner);

    /// Creates a phonebook with these records. False, and nothing is changed, when something of that name
    /// exists by now.
    [[nodiscard]] static bool createUnlessThere(const std::string& path, Readers readers,
                                                const std::deque<Record>& records = {});

    /// Takes away what others may do with the file, which has to be the user's own.
    void makePrivate();

    /// Reads the file again if it changed; what was not committed is dropped.
    void refresh();

    /// In the order in which the keys were first saved. References stay valid until `refresh`,
    /// `remove` or `clear`; a text until its record is saved again.
    const std::deque<Record>& records() const { return list_; }

    /// Counts how often `records` became others than those that were there and those that were saved since.
    std::size_t readings() const { return readings_; }

    /// The index in `records` of the record with that key.
    std::optional<std::size_t> find(std::string_view key) const;

    /// Adds a record; under a known key it takes that record's place. From the first change to
    /// `commit` no other program can save to the file; this one waits for others, within bounds.
    void save(Record record);

    /// Removes the record with that key. False when there is none.
    bool remove(const std::string& key);

    /// Removes all records.
    void clear();

    /// Writes the changes to the file, durably: it holds all of them or, when this fails, none. After a
    /// failure they are kept and go into the file with the next `commit`.
    void commit();

    const std::string& path() const { return file_; }

private:
    struct Connection;
    struct Change;

    void reconnect();
    void load(Connection& from);
    void indexRecords();
    bool isSameFile() const;
    void requireNoForeignJournal() const;
    void beginChange();
    bool apply(const Change& change);
    bool make(Change change);
    void giveUpTransaction();

    std::string file_;
    Access access_;
    std::unique_ptr<Connection> connection_;
    std::deque<Record> list_;
    std::unordered_map<std::string_view, std::size_t> index_; ///< keys are those of `list`
    std::vector<Change> pending_;                             ///< since the last commit
    bool inTransaction_ = false;
    std::size_t readings_ = 0;
};

/// How long opening and saving wait for another driver that is saving to the same file; 5 s unless
/// set. For files that are opened from now on.
void setDatabasePatience(std::chrono::milliseconds patience);

} // namespace quelm

#endif
